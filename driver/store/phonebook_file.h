// What makes a file a phonebook, and how its failures are worded.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_STORE_PHONEBOOK_FILE_H
#define DRIVER_STORE_PHONEBOOK_FILE_H

#include "base/sqlite/sqlite.h"
#include "driver/store/record.h"

#include <sys/stat.h>

#include <deque>
#include <string>

namespace quelm::phonebook_file {

/// What was being done when something failed.
enum class Action { open, save, create };

/// Throws Error: the phonebook at `path` cannot be opened, saved or created, because of `reason`.
[[noreturn]] void fail(const std::string& path, Action action, const std::string& reason);

/// What SQLite reports, as a reason and a remedy.
std::string reason(const sqlite::Failure& failure);

/// Runs `step` and words what SQLite reports.
template <typename Step>
auto wording(const std::string& path, Action action, Step step)
{
    try {
        return step();
    } catch (const sqlite::Failure& failure) {
        fail(path, action, reason(failure));
    }
}

/// Whether there is something of that name, a link that leads nowhere included.
[[nodiscard]] bool isTaken(const std::string& path);

/// Whose file a phonebook has to be: to be read anybody's, to be changed the user's own.
enum class Whose { anybodys, own };

/// A plain file as it was looked at.
struct Looked {
    std::string path; ///< absolute and without links
    struct stat status {};
};

/// Refuses, with an Error, what is no phonebook by the first bytes of the file: before SQLite looks
/// at it, which might take a foreign file's journal for a reason to write. Only a plain file is opened, so
/// that no fifo holds us up; one of the user's own must not be reached by a link, whose maker would say which
/// it is.
[[nodiscard]] Looked requirePhonebook(const std::string& path, Whose whose);

/// True when the open file holds the one table that a phonebook has, and no page is damaged.
[[nodiscard]] bool holdsPhonebook(const sqlite::Database& database);

/// A phonebook with these records, as the bytes of its file.
std::string bytesOf(const std::deque<Record>& records);

} // namespace quelm::phonebook_file

#endif
