// Makes, checks and moves the device's files.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/jobs/state_files.h"

#include "base/error.h"
#include "base/file_handle.h"
#include "base/system_reason.h"
#include "base/texts.h"
#include "base/translation.h"
#include "device/jobs/device_steps.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <charconv>
#include <cstdio>
#include <system_error>

namespace quelm::device {
namespace {

namespace fs = std::filesystem;

constexpr mode_t folderMode = S_IRWXU;
constexpr mode_t fileMode = S_IRUSR | S_IWUSR;
constexpr mode_t allModes = S_IRWXU | S_IRWXG | S_IRWXO;
constexpr int folderFlags = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;
constexpr int fileFlags = O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC;

void requireOwn(const struct stat& status, const fs::path& path)
{
    if (status.st_uid != ::geteuid())
        failState(path, localized("it belongs to another user; move it away"));
}

void giveMode(const FileHandle& opened, mode_t mode, const fs::path& path)
{
    struct stat status = {};
    if (::fstat(opened.get(), &status) != 0)
        failState(path, errno);
    requireOwn(status, path);
    if ((status.st_mode & allModes) != mode && ::fchmod(opened.get(), mode) != 0)
        failState(path, errno);
}

bool isTaken(const fs::path& path)
{
    struct stat status = {};
    return ::lstat(path.c_str(), &status) == 0;
}

/// What is there is not replaced.
void renameToFree(const fs::path& from, const fs::path& to)
{
    int error = 0;
    if (::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) != 0)
        error = errno;
    // Some file systems cannot promise it; the device alone works in this folder.
    if (error == EINVAL || error == ENOSYS) {
        error = EEXIST;
        if (!isTaken(to))
            error = std::rename(from.c_str(), to.c_str()) == 0 ? 0 : errno;
    }
    if (error == EEXIST)
        failState(to, localized("there is one already; move it away"));
    if (error != 0)
        failState(to, error);
}

FileHandle openFile(const fs::path& path)
{
    FileHandle file(::open(path.c_str(), O_RDONLY | fileFlags));
    if (!file.isOpen() && errno != ELOOP)
        failState(path, errno);
    struct stat status = {};
    if (!file.isOpen() || ::fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode))
        failState(path, localized("it is no plain file; move it away"));
    return file;
}

} // namespace

void failState(const fs::path& path, const std::string& reason)
{
    // Translators: a file or folder, and why.
    throw Error(localized("the device's state cannot be used: %s: %s", oneLine(path), reason));
}

void failState(const fs::path& path, int error) { failState(path, systemReason(error)); }

void makeStateFolder(const fs::path& path)
{
    const bool isNew = ::mkdir(path.c_str(), folderMode) == 0;
    if (!isNew && errno != EEXIST)
        failState(path, errno);
    const FileHandle folder(::open(path.c_str(), folderFlags));
    const int error = errno;
    if (!folder.isOpen()) {
        struct stat status = {};
        if (::lstat(path.c_str(), &status) == 0 && S_ISLNK(status.st_mode))
            failState(path, localized("it is a link; name the folder itself"));
        failState(path, error);
    }
    giveMode(folder, folderMode, path);
    if (isNew)
        synchroniseFolder(path.parent_path());
}

void requireStateFile(const fs::path& path) { giveMode(openFile(path), fileMode, path); }

void makeStateFile(const fs::path& path)
{
    const FileHandle file(::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | fileFlags, fileMode));
    if (file.isOpen()) {
        giveMode(file, fileMode, path);
        synchroniseFolder(path.parent_path());
    } else if (errno == EEXIST) {
        requireStateFile(path);
    } else {
        failState(path, errno);
    }
}

void synchroniseFile(const fs::path& path)
{
    beforeDeviceStep("make a file durable");
    const FileHandle file = openFile(path);
    giveMode(file, fileMode, path);
    if (::fsync(file.get()) != 0)
        failState(path, errno);
}

void synchroniseFolder(const fs::path& path)
{
    beforeDeviceStep("make a folder durable");
    const FileHandle folder(::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    // Some file systems have nothing to make durable there.
    if (!folder.isOpen() || (::fsync(folder.get()) != 0 && errno != EINVAL && errno != ENOTSUP))
        failState(path, errno);
}

void moveDurably(const fs::path& from, const fs::path& to)
{
    makeStateFolder(to.parent_path());
    beforeDeviceStep("give a file its name");
    renameToFree(from, to);
    synchroniseFolder(to.parent_path());
    synchroniseFolder(from.parent_path());
}

fs::path setAside(const fs::path& from, const fs::path& folder)
{
    const fs::path named = folder / from.filename();
    fs::path to = named;
    for (int copy = 2; isTaken(to); ++copy)
        to = folder / (named.stem().string() + "-" + std::to_string(copy) + named.extension().string());
    moveDurably(from, to);
    return to;
}

int numberIn(std::string_view name, std::string_view head, std::string_view tail)
{
    constexpr int most = 1'000'000'000;
    if (name.size() <= head.size() + tail.size() || !name.starts_with(head) || !name.ends_with(tail))
        return 0;
    name.remove_prefix(head.size());
    name.remove_suffix(tail.size());
    int number = 0;
    std::from_chars(name.data(), name.data() + name.size(), number);
    return number > 0 && number <= most && name == std::to_string(number) ? number : 0;
}

bool isFile(const fs::path& path)
{
    struct stat status = {};
    return ::lstat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode);
}

void removeQuietly(const fs::path& path) noexcept
{
    std::error_code ignored; // what is left is looked for the next time
    fs::remove_all(path, ignored);
}

} // namespace quelm::device
