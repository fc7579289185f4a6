// Makes, checks and sweeps the folder of an outbox.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/outbox/outbox_folder.h"

#include "base/error.h"
#include "base/temporary_file.h"
#include "base/translation.h"
#include "driver/outbox/outbox_failure.h"
#include "driver/outbox/private_files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <charconv>
#include <cstdio>
#include <filesystem>
#include <optional>
#include <utility>

namespace quelm {
namespace {

namespace fs = std::filesystem;

std::optional<int> jobNumber(const std::string& name)
{
    int number = 0;
    const auto [end, error] = std::from_chars(name.data(), name.data() + name.size(), number);
    if (error != std::errc() || end != name.data() + name.size() || number < 1 ||
        std::to_string(number) != name)
        return std::nullopt;
    return number;
}

} // namespace

OutboxFolder::OutboxFolder(const std::string& path)
{
    if (!path.starts_with('/'))
        failOutbox(path, localized("its path must begin with \"/\""));
    const std::string named = path.ends_with('/') ? path.substr(0, path.find_last_not_of('/') + 1) : path;
    const fs::path above = fs::path(named).parent_path();
    fs::path missing;
    std::error_code error;
    for (const auto& part : above) {
        missing /= part;
        if (!fs::exists(missing, error))
            makePrivateFolder(AT_FDCWD, missing, missing);
    }
    const fs::path canonical = fs::canonical(above, error);
    if (error)
        failOnFile(above, error.value());
    path_ = canonical / fs::path(named).filename();
    makePrivateFolder(AT_FDCWD, path_, path_);
    folder_ = openPrivateFolder(AT_FDCWD, path_, path_);
    const auto open = [this](const char* name) {
        const std::string shown = path_ + "/" + name;
        if (makePrivateFolder(folder_.get(), name, shown))
            synchroniseFolder(folder_, path_);
        return openPrivateFolder(folder_.get(), name, shown);
    };
    jobs_ = open("jobs");
    new_ = open("new");
}

FileHandle OutboxFolder::file(const std::string& name) const
{
    return openPrivateFile(folder_.get(), name, Access::write, path_ + "/" + name);
}

void OutboxFolder::requireFile(const std::string& name) const
{
    const std::string path = path_ + "/" + name;
    struct stat status = {};
    if (::fstatat(folder_.get(), name.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0) {
        if (errno != ENOENT)
            failOnFile(path, errno);
        makeClosedFile(name);
        if (::fstatat(folder_.get(), name.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0)
            failOnFile(path, errno);
    }
    requirePrivateFile(status, path);
}

/// Makes an empty file that is closed when it gets its name; another process's may be there first.
void OutboxFolder::makeClosedFile(const std::string& name) const
{
    const std::string path = path_ + "/" + name;
    sweepTemporaryFiles(folder_.get());
    const std::string temporary = temporaryName();
    FileHandle file = makeTemporaryFile(folder_.get(), temporary);
    if (!file.isOpen())
        failOnFile(path, errno);
    closeToOthers(file, path);
    file.close();
    const bool made =
        ::linkat(folder_.get(), temporary.c_str(), folder_.get(), name.c_str(), 0) == 0 ||
        ::renameat2(folder_.get(), temporary.c_str(), folder_.get(), name.c_str(), RENAME_NOREPLACE) == 0;
    const int error = made ? 0 : errno;
    ::unlinkat(folder_.get(), temporary.c_str(), 0);
    if (!made && error != EEXIST && error != ENOENT)
        failOnFile(path, error);
    synchroniseFolder(folder_, path_);
}

OutboxFolder::Entry OutboxFolder::makeEntry() const
{
    constexpr int mostTries = 100;
    const std::string all = path_ + "/new";
    for (int tries = 0; tries < mostTries; ++tries) {
        const std::string name = temporaryName().substr(1);
        const std::string path = all + "/" + name;
        try {
            if (!makePrivateFolder(new_.get(), name, path))
                continue;
            JobFolder folder(openPrivateFolder(new_.get(), name, path), path);
            FileHandle lock = folder.lock();
            if (lock.isOpen())
                return {std::move(folder), std::move(lock), name};
        } catch (const Error&) {
            struct stat status = {};
            const bool isThere = ::fstatat(new_.get(), name.c_str(), &status, AT_SYMLINK_NOFOLLOW) == 0;
            removeFolder(new_.get(), name);
            if (isThere)
                throw;
        }
        // Another process swept it up between its making and its lock.
    }
    failOnFile(all, EAGAIN);
}

void OutboxFolder::publish(Entry& entry, int number) const
{
    const std::string name = std::to_string(number);
    const std::string path = path_ + "/jobs/" + name;
    entry.folder.synchronise();
    removeFolder(jobs_.get(), name);
    if (::renameat2(new_.get(), entry.name.c_str(), jobs_.get(), name.c_str(), RENAME_NOREPLACE) != 0 &&
        (errno != EINVAL || ::renameat(new_.get(), entry.name.c_str(), jobs_.get(), name.c_str()) != 0))
        failOnFile(path, errno);
    entry.folder.moved(path);
    synchroniseFolder(jobs_, path_ + "/jobs");
    synchroniseFolder(new_, path_ + "/new");
}

void OutboxFolder::drop(const Entry& entry) const noexcept
{
    // By its descriptor: the name may be another job's by now.
    entry.folder.empty();
    ::rmdir(entry.folder.path().c_str());
}

JobFolder OutboxFolder::job(int number) const
{
    const std::string name = std::to_string(number);
    const std::string path = path_ + "/jobs/" + name;
    return {openPrivateFolder(jobs_.get(), name, path), path};
}

void OutboxFolder::removeJob(int number) const noexcept { removeFolder(jobs_.get(), std::to_string(number)); }

void OutboxFolder::sweepEntries() const noexcept
{
    try {
        std::error_code ignored;
        for (const auto& entry : fs::directory_iterator(path_ + "/new", ignored)) {
            const std::string name = entry.path().filename().string();
            const std::string path = path_ + "/new/" + name;
            try {
                const JobFolder folder(openPrivateFolder(new_.get(), name, path), path);
                const FileHandle lock = folder.lock();
                if (lock.isOpen())
                    removeFolder(new_.get(), name);
            } catch (const Error&) {
                continue; // not of our making, or gone by now
            }
        }
    } catch (const std::exception&) {
        return;
    }
}

std::set<int> OutboxFolder::jobs() const
{
    std::set<int> numbers;
    std::error_code ignored;
    for (const auto& entry : fs::directory_iterator(path_ + "/jobs", ignored))
        if (const auto number = jobNumber(entry.path().filename().string()))
            numbers.insert(*number);
    return numbers;
}

} // namespace quelm
