// What makes a file a phonebook, and how its failures are worded.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_STORE_PHONEBOOK_FILE_H
#define DRIVER_STORE_PHONEBOOK_FILE_H

#include "base/sqlite/sqlite.h"

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

/// Refuses, with an Error, what is no phonebook by the first bytes of the file: before SQLite looks
/// at it, which might take a foreign file's journal for a reason to write. Returns the absolute
/// path without links.
std::string requirePhonebook(const std::string& path);

/// True when the open file holds the one table that a phonebook has, and no page is damaged.
[[nodiscard]] bool holdsPhonebook(const sqlite::Database& database);

/// An empty phonebook as the bytes of its file.
std::string empty();

} // namespace quelm::phonebook_file

#endif
