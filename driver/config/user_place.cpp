// Makes and checks a user's own folder.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/config/user_place.h"

#include "base/error.h"
#include "base/file_handle.h"
#include "base/log.h"
#include "base/system_reason.h"
#include "base/translation.h"
#include "driver/config/installation.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>

namespace quelm {

namespace fs = std::filesystem;

namespace {

constexpr mode_t forUserAlone = S_IRWXU;

/// The build keeps its settings beside the stage folder that programs are tried in. A file that somebody else
/// made there says nothing.
bool isInBuildTree(const fs::path& installation)
{
    struct stat folder {};
    struct stat settings {};
    return stat(installation.c_str(), &folder) == 0 &&
           lstat((installation.parent_path() / "CMakeCache.txt").c_str(), &settings) == 0 &&
           S_ISREG(settings.st_mode) && settings.st_uid == folder.st_uid;
}

fs::path dataFolder()
{
    const std::string folder = xdgFolder("XDG_DATA_HOME", ".local/share");
    if (folder.empty())
        throw Error(localized("no folder for your phonebooks is known; set HOME or XDG_DATA_HOME"));
    return folder;
}

[[noreturn]] void failForOwner(const fs::path& folder)
{
    throw Error(
        localized("the folder %s belongs to another user, and your phonebooks cannot be kept in it; set "
                  "XDG_DATA_HOME to a folder of your own",
                  folder.string()));
}

[[noreturn]] void failForWriters(const fs::path& folder)
{
    throw Error(localized("others can write into the folder %s, and could change the numbers in your "
                          "phonebooks; run chmod 700 %s",
                          folder.string(), folder.string()));
}

/// Makes a folder for the user alone, unless there is something of that name.
void makeFolder(const fs::path& folder)
{
    if (mkdir(folder.c_str(), forUserAlone) != 0 && errno != EEXIST)
        throw Error(localized("the folder %s cannot be made: %s", folder.string(), systemReason(errno)));
}

/// Makes those of the folders above that are missing. Not in another user's: he could take away or replace
/// what is made there, and a user who lends somebody his HOME would find folders that he may not enter.
void makeParents(const fs::path& folder)
{
    fs::path made;
    for (const auto& part : folder) {
        const fs::path above = made;
        made /= part;
        struct stat status {};
        if (stat(made.c_str(), &status) == 0)
            continue;
        if (stat(above.c_str(), &status) == 0 && status.st_uid != geteuid() && status.st_uid != 0)
            failForOwner(above);
        makeFolder(made);
    }
}

/// Refuses a folder in which somebody else could put his own in the place of the user's. (One that a group
/// may write to does: many users' folders are made so, for a group of their own.)
void requireSafeParent(const fs::path& folder)
{
    struct stat status {};
    if (stat(folder.c_str(), &status) != 0)
        return;
    if (status.st_uid != geteuid() && status.st_uid != 0)
        failForOwner(folder);
    if ((status.st_mode & S_IWOTH) != 0 && (status.st_mode & S_ISVTX) == 0)
        failForWriters(folder);
}

/// Refuses a folder that is not the user's, and closes his own to others.
void requireOwnFolder(const fs::path& folder)
{
    struct stat link {};
    const FileHandle opened(open(folder.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    struct stat status {};
    if (!opened.isOpen() || lstat(folder.c_str(), &link) != 0 || fstat(opened.get(), &status) != 0)
        throw Error(
            localized("%s is no folder that your phonebooks can be kept in; move it away", folder.string()));
    if (status.st_uid != geteuid() || link.st_uid != geteuid())
        failForOwner(folder);
    if ((status.st_mode & (S_IWGRP | S_IWOTH)) != 0)
        failForWriters(folder);
    const std::string name = "/proc/self/fd/" + std::to_string(opened.get());
    if ((status.st_mode & (S_IRWXG | S_IRWXO)) != 0 && chmod(name.c_str(), forUserAlone) != 0)
        throw Error(
            localized("the folder %s cannot be closed to others: %s", folder.string(), systemReason(errno)));
}

/// Lets `link` lead to `target`, in one step: another driver finds the old link or the new one. What the user
/// put there himself stays.
void lead(const fs::path& link, const fs::path& target)
{
    std::error_code failure;
    if (fs::read_symlink(link, failure) == target)
        return;
    const auto present = fs::symlink_status(link, failure).type();
    if (present != fs::file_type::not_found && present != fs::file_type::symlink)
        return;
    const std::string made = link.string() + "." + std::to_string(getpid()) + ".new";
    unlink(made.c_str()); // of a process that had this number and was killed
    if (symlink(target.c_str(), made.c_str()) == 0 && rename(made.c_str(), link.c_str()) == 0)
        return;
    const int reason = errno;
    unlink(made.c_str());
    log(Severity::warning, localized("the link %s to %s cannot be made: %s", link.string(), target.string(),
                                     systemReason(reason)));
}

} // namespace

UserPlace prepareUserPlace(const std::string& givenHome, const std::string& installation,
                           const std::string& user)
{
    if (!givenHome.empty() || isInBuildTree(installation))
        return {installation, ""};
    const fs::path data = dataFolder().lexically_normal();
    const fs::path own = data / "quelm";
    makeParents(own);
    requireSafeParent(data);
    requireOwnFolder(own);
    const fs::path phonebooks = own / "db/phonebook";
    for (const fs::path& folder : {own / "db", phonebooks, phonebooks / "user"})
        makeFolder(folder);
    const fs::path machine = fs::path(installation) / "db/phonebook";
    lead(phonebooks / "shared", machine);
    lead(own / "fennodial", fs::path(installation) / "fennodial");
    return {own.string(), (machine / "user" / (user + ".xdb")).string()};
}

} // namespace quelm
