// What the databases have in common in which programs keep what must not be lost.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef BASE_SQLITE_DATABASE_FILE_H
#define BASE_SQLITE_DATABASE_FILE_H

#include "base/sqlite/sqlite.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace quelm::sqlite {

/// Opens a file that is there, and no link. Others that write to it are waited for up to five seconds; what
/// is committed lasts through a power cut; what is removed is overwritten; what stands in its schema is not
/// trusted. The process ignores SIGXFSZ from then on, so that a size limit is reported like a full disk.
[[nodiscard]] Database openDurable(const std::string& path);

/// Runs `change` in a transaction that alone writes. When it throws, nothing of it stays.
void inTransaction(const Database& database, const std::function<void()>& change);

/// The number that a pragma answers; 0 when it answers nothing.
[[nodiscard]] std::int64_t pragma(const Database& database, const char* text);

/// The statements of all tables, indices, views and triggers that are not SQLite's own, in the order in which
/// they were made.
[[nodiscard]] std::vector<std::string> schemaOf(const Database& database);

/// Why an operation failed, as the end of a line for the user; `damaged` is what to say of a damaged file.
[[nodiscard]] std::string reasonOf(const Failure& failure, const std::string& damaged);

} // namespace quelm::sqlite

#endif
