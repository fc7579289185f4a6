// Makes, opens and removes the files of a job.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/outbox/job_folder.h"

#include "driver/outbox/job_file_copy.h"
#include "driver/outbox/private_files.h"
#include "driver/outbox/process_lock.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace quelm {
namespace {

constexpr const char* documentFolder = "document";

} // namespace

FileHandle JobFolder::make(const std::string& name) const
{
    return makePrivateFile(folder_.get(), name, path_ + "/" + name);
}

FileHandle JobFolder::open(const std::string& name) const
{
    return openPrivateFile(folder_.get(), name, Access::read, path_ + "/" + name);
}

JobFolder JobFolder::makeDocumentFolder() const
{
    const std::string path = path_ + "/" + documentFolder;
    makePrivateFolder(folder_.get(), documentFolder, path);
    return {openPrivateFolder(folder_.get(), documentFolder, path), path};
}

void JobFolder::take(const JobFolder& other, const std::string& name) const
{
    const FileHandle source = other.open(name);
    if (::linkat(other.folder_.get(), name.c_str(), folder_.get(), name.c_str(), 0) == 0)
        return;
    // Not every file system has two names for a file.
    copyJobFile(source, make(name), path_ + "/" + name);
}

void JobFolder::takeDocument(const JobFolder& other, const std::string& name) const
{
    const std::string path = other.path_ + "/" + documentFolder;
    const JobFolder theirs(openPrivateFolder(other.folder_.get(), documentFolder, path), path);
    const JobFolder ours = makeDocumentFolder();
    ours.take(theirs, name);
    ours.synchronise();
}

void JobFolder::synchronise() const { synchroniseFolder(folder_, path_); }

void JobFolder::remove(const std::string& name) const
{
    if (::unlinkat(folder_.get(), name.c_str(), 0) != 0) {
        if (errno == ENOENT)
            return;
        failOnFile(path_ + "/" + name, errno);
    }
    synchronise();
}

void JobFolder::empty() const noexcept { emptyFolder(folder_); }

FileHandle JobFolder::lock() const
{
    FileHandle file = openPrivateFile(folder_.get(), "lock", Access::write, path_ + "/lock");
    struct stat status = {};
    if (!lockByte(file, 0)) {
        if (errno != EAGAIN && errno != EACCES)
            failOnFile(path_ + "/lock", errno);
        return {};
    }
    // A job that is removed loses this file while its lock is held.
    if (::fstat(file.get(), &status) != 0 || status.st_nlink == 0)
        return {};
    return file;
}

} // namespace quelm
