// Makes, holds and removes the folder, and sweeps those that nobody holds.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/ghostscript/private_folder.h"

#include "base/error.h"
#include "base/file_io.h"
#include "base/ghostscript/supervision.h"
#include "base/system_reason.h"
#include "base/translation.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <string_view>

namespace quelm {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view prefix = supervision::folderPrefix;
constexpr std::string_view placeholders = "XXXXXX";

/// The folder itself, never what a link leads to.
FileHandle openFolder(const std::string& path)
{
    return FileHandle(::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
}

bool isOwn(const FileHandle& folder)
{
    struct stat status = {};
    return ::fstat(folder.get(), &status) == 0 && status.st_uid == ::geteuid();
}

bool removeAll(const std::string& path)
{
    std::error_code failure;
    fs::remove_all(path, failure);
    return !failure;
}

/// Removes the user's own folders that nobody holds. What cannot be removed stays for the next time.
void sweep(const std::string& parent)
{
    std::error_code failure;
    for (const auto& entry : fs::directory_iterator(parent, failure)) {
        const std::string name = entry.path().filename().string();
        if (!name.starts_with(prefix) || name.size() != prefix.size() + placeholders.size())
            continue;
        const FileHandle folder = openFolder(entry.path().string());
        if (folder.isOpen() && isOwn(folder) && ::flock(folder.get(), LOCK_EX | LOCK_NB) == 0)
            removeAll(entry.path().string());
    }
}

} // namespace

PrivateFolder::PrivateFolder()
{
    const std::string parent = temporaryFolder();
    sweep(parent);
    // Between making and holding it, a sweep may take it for one that was left.
    constexpr int attempts = 100;
    for (int attempt = 0; attempt < attempts; ++attempt) {
        std::string path = parent + "/" + std::string(prefix) + std::string(placeholders);
        if (::mkdtemp(path.data()) == nullptr)
            break;
        lock_ = openFolder(path);
        if (!lock_.isOpen() || ::flock(lock_.get(), LOCK_SH) != 0)
            continue;
        if (::access(path.c_str(), F_OK) == 0) {
            path_ = path;
            return;
        }
    }
    throw Error(localized("%s: no temporary folder can be made there: %s; set TMPDIR to a folder with room",
                          parent, systemReason(errno)));
}

PrivateFolder::~PrivateFolder() { removeAll(path_); }

} // namespace quelm
