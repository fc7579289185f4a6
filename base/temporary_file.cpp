// Makes, locks and sweeps temporary files.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/temporary_file.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/random.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <cstring>
#include <memory>
#include <string_view>

namespace quelm {
namespace {

constexpr std::string_view prefix = ".quelm-";
constexpr std::string_view suffix = ".tmp";
constexpr std::string_view digits = "0123456789abcdef";
constexpr std::size_t randomBytes = 8;

constexpr mode_t ownerAlone = S_IRUSR | S_IWUSR;
constexpr mode_t readAndWrite = 0666;
constexpr mode_t permissionBits = 0777;

bool isTemporaryName(std::string_view name)
{
    if (name.size() != prefix.size() + 2 * randomBytes + suffix.size() || !name.starts_with(prefix) ||
        !name.ends_with(suffix))
        return false;
    return name.substr(prefix.size(), 2 * randomBytes).find_first_not_of(digits) == std::string_view::npos;
}

struct CloseFolder {
    void operator()(DIR* folder) const { closedir(folder); }
};

/// True when `name` still is the file that is open.
bool isStillNamed(int folder, const char* name, const struct stat& file)
{
    struct stat named {};
    return fstatat(folder, name, &named, AT_SYMLINK_NOFOLLOW) == 0 && named.st_ino == file.st_ino &&
           named.st_dev == file.st_dev;
}

void sweep(int folder, const char* name)
{
    // Never waits: the name may be a fifo's.
    const FileHandle file(openat(folder, name, O_RDWR | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    struct stat status {};
    if (!file.isOpen() || fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode) ||
        status.st_uid != geteuid())
        return;
    if (flock(file.get(), LOCK_EX | LOCK_NB) == 0 && isStillNamed(folder, name, status))
        unlinkat(folder, name, 0);
}

} // namespace

std::string temporaryName()
{
    std::array<unsigned char, randomBytes> bytes{};
    if (getrandom(bytes.data(), bytes.size(), 0) != static_cast<ssize_t>(bytes.size())) {
        static std::atomic<unsigned> counter{0};
        const unsigned long long mixed = (static_cast<unsigned long long>(getpid()) << 32U) + ++counter;
        std::memcpy(bytes.data(), &mixed, bytes.size());
    }
    std::string name(prefix);
    for (const unsigned char byte : bytes) {
        name += digits[byte >> 4U];
        name += digits[byte & 15U];
    }
    return name.append(suffix);
}

FileHandle makeTemporaryFile(int folder, const std::string& name)
{
    FileHandle file(openat(folder, name.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, ownerAlone));
    if (!file.isOpen())
        return file;
    // File systems without locks cannot be swept either.
    const bool swept = flock(file.get(), LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK;
    struct stat status {};
    if (!swept && fstat(file.get(), &status) == 0 && isStillNamed(folder, name.c_str(), status))
        return file;
    // Someone swept it up between its making and its lock.
    unlinkat(folder, name.c_str(), 0);
    file.close();
    errno = EAGAIN;
    return {};
}

mode_t permissionsOfNewFile(int folder)
{
    struct stat status {};
    FileHandle probe(openat(folder, ".", O_TMPFILE | O_RDWR | O_CLOEXEC, readAndWrite));
    if (!probe.isOpen()) { // not every file system has files without names
        const std::string name = temporaryName();
        probe = FileHandle(openat(folder, name.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, readAndWrite));
        if (probe.isOpen())
            unlinkat(folder, name.c_str(), 0);
    }
    const bool known = probe.isOpen() && fstat(probe.get(), &status) == 0;
    return known ? status.st_mode & permissionBits : ownerAlone;
}

void sweepTemporaryFiles(int folder) noexcept
{
    const int readable = openat(folder, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (readable < 0)
        return;
    const std::unique_ptr<DIR, CloseFolder> entries(fdopendir(readable));
    if (entries == nullptr) {
        ::close(readable);
        return;
    }
    // A folder of a hundred thousand files and more is searched in part: what is left there waits.
    constexpr int mostEntries = 100000;
    for (int count = 0; count < mostEntries; ++count) {
        const dirent* entry = readdir(entries.get());
        if (entry == nullptr)
            return;
        if (isTemporaryName(entry->d_name))
            sweep(folder, entry->d_name);
    }
}

} // namespace quelm
