// Makes, opens and removes what this user alone can read.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/outbox/private_files.h"

#include "base/system_reason.h"
#include "base/translation.h"
#include "driver/outbox/outbox_failure.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <exception>
#include <filesystem>

namespace quelm {
namespace {

namespace fs = std::filesystem;

constexpr mode_t folderMode = S_IRWXU;
constexpr mode_t fileMode = S_IRUSR | S_IWUSR;
constexpr mode_t forOthers = S_IRWXG | S_IRWXO;

constexpr int folderFlags = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;
constexpr int fileFlags = O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC;

/// By descriptors, and not without end.
void empty(const FileHandle& folder, int depth) noexcept
{
    try {
        const std::string way = "/proc/self/fd/" + std::to_string(folder.get());
        std::error_code ignored;
        for (const auto& entry : fs::directory_iterator(way, ignored)) {
            const std::string name = entry.path().filename().string();
            if (::unlinkat(folder.get(), name.c_str(), 0) == 0 || depth == 0)
                continue;
            if (const FileHandle inner(::openat(folder.get(), name.c_str(), folderFlags)); inner.isOpen())
                empty(inner, depth - 1);
            ::unlinkat(folder.get(), name.c_str(), AT_REMOVEDIR);
        }
    } catch (const std::exception&) {
        return; // what is left is looked for the next time
    }
}

} // namespace

void failOnFile(const std::string& path, int error) { failOutbox(path, systemReason(error)); }

FileHandle openPrivateFolder(int parent, const std::string& name, const std::string& path)
{
    FileHandle folder(::openat(parent, name.c_str(), folderFlags));
    const int error = errno;
    struct stat status = {};
    if (!folder.isOpen()) {
        if (::fstatat(parent, name.c_str(), &status, AT_SYMLINK_NOFOLLOW) == 0 && S_ISLNK(status.st_mode))
            failOutbox(path, localized("it is a link; put the folder itself in its place"));
        failOnFile(path, error);
    }
    if (::fstat(folder.get(), &status) != 0)
        failOnFile(path, errno);
    if (status.st_uid != ::geteuid())
        failOutbox(path, localized("it belongs to another user; move it away"));
    if ((status.st_mode & forOthers) != 0)
        failOutbox(path, localized("others may enter it; close it to them with chmod 700"));
    return folder;
}

bool makePrivateFolder(int parent, const std::string& name, const std::string& path)
{
    if (::mkdirat(parent, name.c_str(), folderMode) == 0) {
        if (::fchmodat(parent, name.c_str(), folderMode, 0) != 0)
            failOnFile(path, errno);
        return true;
    }
    if (errno != EEXIST)
        failOnFile(path, errno);
    return false;
}

FileHandle makePrivateFile(int parent, const std::string& name, const std::string& path)
{
    FileHandle file(::openat(parent, name.c_str(), fileFlags | O_RDWR | O_CREAT | O_EXCL, fileMode));
    if (!file.isOpen())
        failOnFile(path, errno);
    closeToOthers(file, path);
    return file;
}

FileHandle openPrivateFile(int parent, const std::string& name, Access access, const std::string& path)
{
    const int flags = fileFlags | (access == Access::write ? O_RDWR : O_RDONLY);
    FileHandle file(::openat(parent, name.c_str(), flags));
    if (!file.isOpen() && errno == ENOENT && access == Access::write) {
        file = FileHandle(::openat(parent, name.c_str(), flags | O_CREAT | O_EXCL, fileMode));
        if (file.isOpen())
            closeToOthers(file, path);
        else if (errno == EEXIST)
            file = FileHandle(::openat(parent, name.c_str(), flags));
    }
    if (!file.isOpen() && errno == ELOOP)
        failOutbox(path, localized("it is no plain file; move it away"));
    struct stat status = {};
    if (!file.isOpen() || ::fstat(file.get(), &status) != 0)
        failOnFile(path, errno);
    requirePrivateFile(status, path);
    return file;
}

void requirePrivateFile(const struct stat& status, const std::string& path)
{
    if (!S_ISREG(status.st_mode))
        failOutbox(path, localized("it is no plain file; move it away"));
    if (status.st_uid != ::geteuid())
        failOutbox(path, localized("it belongs to another user; move it away"));
    if ((status.st_mode & forOthers) != 0)
        failOutbox(path, localized("others may read it; close it to them with chmod 600"));
}

void closeToOthers(const FileHandle& file, const std::string& path)
{
    if (::fchmod(file.get(), fileMode) != 0)
        failOnFile(path, errno);
}

void synchroniseFolder(const FileHandle& folder, const std::string& path)
{
    if (::fsync(folder.get()) != 0 && errno != EINVAL && errno != ENOTSUP)
        failOnFile(path, errno);
}

void emptyFolder(const FileHandle& folder) noexcept
{
    constexpr int deepest = 3;
    empty(folder, deepest);
}

void removeFolder(int parent, const std::string& name) noexcept
{
    if (::unlinkat(parent, name.c_str(), 0) == 0)
        return; // it was none
    if (const FileHandle folder(::openat(parent, name.c_str(), folderFlags)); folder.isOpen())
        emptyFolder(folder);
    ::unlinkat(parent, name.c_str(), AT_REMOVEDIR);
}

} // namespace quelm
