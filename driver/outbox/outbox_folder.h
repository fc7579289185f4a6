// The folder of an outbox, and what is in it.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_OUTBOX_OUTBOX_FOLDER_H
#define DRIVER_OUTBOX_OUTBOX_FOLDER_H

#include "base/file_handle.h"
#include "driver/outbox/job_folder.h"

#include <set>
#include <string>

namespace quelm {

/// An outbox's folder: "log.db", "worker", "jobs/NUMBER", and "new/..." for jobs that are being put in.
class OutboxFolder {
public:
    /// Makes the folder when it is missing. Throws quelm::Error when that fails, or it is a link, somebody
    /// else's or open to others.
    explicit OutboxFolder(const std::string& path);

    /// Without links.
    const std::string& path() const { return path_; }

    /// Opens a file of the folder itself, and makes it when it is missing.
    [[nodiscard]] FileHandle file(const std::string& name) const;

    /// Sees to it that there is a file, and that it is a plain one that this user alone can read. It is never
    /// opened: to close it would drop the locks that SQLite holds on it elsewhere in this process.
    void requireFile(const std::string& name) const;

    /// A new folder for a job that is being put in, and its lock.
    struct Entry {
        JobFolder folder;
        FileHandle lock;
        std::string name;
    };
    [[nodiscard]] Entry makeEntry() const;

    /// Makes an entry the folder of a job, durably. Whatever has that number's name is removed: the caller
    /// holds the log, in which there is no such job.
    void publish(Entry& entry, int number) const;

    /// Removes an entry that was not published.
    void drop(const Entry& entry) const noexcept;

    /// The folder of a job. Throws quelm::Error when it is missing, or not what it was made as.
    [[nodiscard]] JobFolder job(int number) const;

    /// Removes a job's folder.
    void removeJob(int number) const noexcept;

    /// Removes the entries that no process works on any more.
    void sweepEntries() const noexcept;

    /// The numbers of all jobs that have a folder.
    [[nodiscard]] std::set<int> jobs() const;

private:
    void makeClosedFile(const std::string& name) const;

    std::string path_;
    FileHandle folder_;
    FileHandle jobs_;
    FileHandle new_;
};

} // namespace quelm

#endif
