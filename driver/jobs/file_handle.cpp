// File descriptors of the print path: owned, written whole, and failing with a line instead of a signal.
#include "driver/jobs/file_handle.h"

#include "driver/core/error.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <utility>

namespace quelm {
namespace {

void ignore(int signal, struct sigaction& before)
{
    struct sigaction ignored = {};
    ignored.sa_handler = SIG_IGN;
    ::sigaction(signal, &ignored, &before);
}

std::string temporaryFolder()
{
    const char* folder = std::getenv("TMPDIR");
    return folder && *folder ? folder : "/tmp";
}

} // namespace

FileHandle& FileHandle::operator=(FileHandle&& other) noexcept
{
    if (this != &other) {
        close();
        descriptor_ = other.release();
    }
    return *this;
}

int FileHandle::release() { return std::exchange(descriptor_, -1); }

void FileHandle::close()
{
    if (const int descriptor = release(); descriptor >= 0)
        ::close(descriptor);
}

WriteSignalsIgnored::WriteSignalsIgnored()
{
    ignore(SIGPIPE, pipe_);
    ignore(SIGXFSZ, fileSize_);
}

WriteSignalsIgnored::~WriteSignalsIgnored()
{
    ::sigaction(SIGPIPE, &pipe_, nullptr);
    ::sigaction(SIGXFSZ, &fileSize_, nullptr);
}

std::string systemReason(int error)
{
    switch (error) {
    case ENOSPC:
    case EDQUOT:
        return "the disk is full; make room and try again";
    case EFBIG:
        return "the file became larger than is allowed here";
    case EPIPE:
        return "the program that reads it has ended";
    case EACCES:
    case EPERM:
        return "permission denied";
    default:
        return std::strerror(error);
    }
}

void writeAll(int descriptor, std::string_view bytes, const std::string& target)
{
    while (!bytes.empty()) {
        const auto written = ::write(descriptor, bytes.data(), bytes.size());
        if (written >= 0)
            bytes.remove_prefix(static_cast<std::size_t>(written));
        else if (errno != EINTR)
            throw Error(target + ": cannot be written: " + systemReason(errno));
    }
}

std::size_t readFully(int descriptor, char* bytes, std::size_t size, long long offset,
                      const std::string& source)
{
    std::size_t total = 0;
    while (total < size) {
        const auto position = offset + static_cast<long long>(total);
        const auto count = offset < 0 ? ::read(descriptor, bytes + total, size - total)
                                      : ::pread(descriptor, bytes + total, size - total, position);
        if (count == 0)
            break;
        if (count > 0)
            total += static_cast<std::size_t>(count);
        else if (errno != EINTR)
            throw Error(source + ": cannot be read: " + systemReason(errno));
    }
    return total;
}

FileHandle makeUnnamedFile()
{
    const std::string folder = temporaryFolder();
    const int unnamed = ::open(folder.c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC, S_IRUSR | S_IWUSR);
    if (unnamed >= 0)
        return FileHandle(unnamed);

    // Not every file system has files without names: make one and take its name away.
    std::string name = folder + "/quelm-XXXXXX";
    FileHandle named(::mkostemp(name.data(), O_CLOEXEC));
    if (!named.isOpen())
        throw Error(folder + ": no temporary file can be made there: " + systemReason(errno) +
                    "; set TMPDIR to a folder with room");
    ::unlink(name.c_str());
    return named;
}

} // namespace quelm
