// File descriptors of the print path: owned, written whole, and failing with a line instead of a signal.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/file_io.h"

#include "base/error.h"
#include "base/system_reason.h"
#include "base/translation.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>

namespace quelm {
namespace {

void ignore(int signal, struct sigaction& before)
{
    struct sigaction ignored = {};
    ignored.sa_handler = SIG_IGN;
    ::sigaction(signal, &ignored, &before);
}

} // namespace

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

void writeAll(int descriptor, std::string_view bytes, const std::string& target)
{
    while (!bytes.empty()) {
        const auto written = ::write(descriptor, bytes.data(), bytes.size());
        if (written >= 0)
            bytes.remove_prefix(static_cast<std::size_t>(written));
        else if (errno != EINTR)
            throw Error(localized("%s: cannot be written: %s", target, systemReason(errno)));
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
            throw Error(localized("%s: cannot be read: %s", source, systemReason(errno)));
    }
    return total;
}

std::string temporaryFolder()
{
    const char* folder = std::getenv("TMPDIR");
    return folder != nullptr && *folder ? folder : "/tmp";
}

FileHandle makeUnnamedFile()
{
    const std::string folder = temporaryFolder();
    FileHandle unnamed(::open(folder.c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC, S_IRUSR | S_IWUSR));
    if (unnamed.isOpen())
        return unnamed;

    // Not every file system has files without names: make one and take its name away.
    std::string name = folder + "/quelm-XXXXXX";
    FileHandle named(::mkostemp(name.data(), O_CLOEXEC));
    if (!named.isOpen())
        throw Error(localized("%s: no temporary file can be made there: %s; set TMPDIR to a folder with room",
                              folder, systemReason(errno)));
    ::unlink(name.c_str());
    return named;
}

} // namespace quelm
