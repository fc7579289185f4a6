// Where a finished fax job goes.
#include "driver/jobs/output.h"

#include "driver/core/atomic_file.h"
#include "driver/core/error.h"
#include "driver/core/translation.h"

#include <sys/stat.h>
#include <unistd.h>

#include <string_view>
#include <utility>

namespace quelm {
namespace {

std::string spoolName() { return localized("the temporary copy of the job"); }

/// Hands the content of an open file to `take`, from its start on, piece by piece.
template <typename Take>
void forEachBlock(int file, Take take)
{
    std::string block(std::size_t{256} * 1024, '\0');
    long long offset = 0;
    while (const auto count = readFully(file, block.data(), block.size(), offset, spoolName())) {
        take(std::string_view(block).substr(0, count));
        offset += static_cast<long long>(count);
    }
}

class StandardOutput final : public SpooledDestination {
private:
    Receipt send(int spool, std::uint64_t, const Transfer&) override
    {
        const WriteSignalsIgnored failuresOnly;
        const std::string name = localized("standard output");
        forEachBlock(spool, [&name](std::string_view bytes) { writeAll(STDOUT_FILENO, bytes, name); });
        return {name, {}, 0};
    }
};

/// A device or fifo in the file system.
class SpecialFile final : public SpooledDestination {
public:
    explicit SpecialFile(std::string path) : path_(std::move(path)) {}

private:
    Receipt send(int spool, std::uint64_t, const Transfer&) override
    {
        const WriteSignalsIgnored failuresOnly;
        AtomicFile file(path_);
        forEachBlock(spool, [&file](std::string_view bytes) { file.write(bytes); });
        file.commit();
        return {path_, {}, 0};
    }

    std::string path_;
};

class OrdinaryFile final : public JobDestination {
public:
    explicit OrdinaryFile(const std::string& path) : path_(path), sink_(path) {}

    JobSink& sink() override { return sink_; }
    Receipt deliver(const Transfer&) override
    {
        sink_.file.commit();
        return {path_, {}, 0};
    }

private:
    class Sink final : public JobSink {
    public:
        explicit Sink(const std::string& path) : file(path) {}
        void write(std::string_view bytes) override { file.write(bytes); }

        AtomicFile file;
    };

    std::string path_;
    Sink sink_;
};

} // namespace

SpooledDestination::SpooledDestination() = default;

SpooledDestination::Spool::Spool() : file(makeUnnamedFile()) {}

void SpooledDestination::Spool::write(std::string_view bytes)
{
    const WriteSignalsIgnored failuresOnly;
    writeAll(file.get(), bytes, spoolName());
    size += bytes.size();
}

Receipt SpooledDestination::deliver(const Transfer& transfer)
{
    return send(spool_.file.get(), spool_.size, transfer);
}

std::size_t readSpool(int spool, std::string& block, std::uint64_t offset)
{
    const auto count =
        readFully(spool, block.data(), block.size(), static_cast<long long>(offset), spoolName());
    if (count == 0)
        throw Error(
            localized("the temporary copy of the job became shorter while it was sent; send it again"));
    return count;
}

std::unique_ptr<JobDestination> openOutput(const std::string& output, const Document& document)
{
    if (output == "-")
        return std::make_unique<StandardOutput>();
    if (document.isSameFile(output))
        throw Error(localized("%s: is the document itself; name another file for the fax job", output));
    struct stat status = {};
    const bool exists = ::stat(output.c_str(), &status) == 0;
    if (exists && S_ISDIR(status.st_mode))
        throw Error(localized("%s: is a folder; name a file in it for the fax job", output));
    if (exists && !S_ISREG(status.st_mode))
        return std::make_unique<SpecialFile>(output);
    return std::make_unique<OrdinaryFile>(output);
}

} // namespace quelm
