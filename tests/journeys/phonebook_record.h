// Records of phonebooks that no dialog would write.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef TESTS_JOURNEYS_PHONEBOOK_RECORD_H
#define TESTS_JOURNEYS_PHONEBOOK_RECORD_H

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <string>

namespace journeys {

/// Puts a record into the phonebook, a file that exists.
inline void addRecord(const std::string& book, const std::string& key, const std::string& data)
{
    sqlite3* database = nullptr;
    EXPECT_EQ(sqlite3_open(book.c_str(), &database), SQLITE_OK);
    sqlite3_stmt* insertion = nullptr;
    sqlite3_prepare_v2(database, "INSERT INTO record(key, data) VALUES(?1, ?2)", -1, &insertion, nullptr);
    sqlite3_bind_blob(insertion, 1, key.data(), static_cast<int>(key.size()), SQLITE_STATIC);
    sqlite3_bind_blob(insertion, 2, data.data(), static_cast<int>(data.size()), SQLITE_STATIC);
    EXPECT_EQ(sqlite3_step(insertion), SQLITE_DONE);
    sqlite3_finalize(insertion);
    sqlite3_close(database);
}

} // namespace journeys

#endif
