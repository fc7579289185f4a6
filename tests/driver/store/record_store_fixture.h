// Phonebook files as record stores, in a folder of the test's own.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef TESTS_DRIVER_STORE_RECORD_STORE_FIXTURE_H
#define TESTS_DRIVER_STORE_RECORD_STORE_FIXTURE_H

#include "base/error.h"
#include "base/sqlite/sqlite.h"
#include "driver/store/record_store.h"
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <string>
#include <vector>

using quelm::RecordStore;
using Access = RecordStore::Access;
using Names = std::vector<std::string>;

inline bool mentions(const std::string& text, const std::string& part)
{
    return text.find(part) != std::string::npos;
}

/// The error's line, or an empty text.
template <typename Action>
std::string problem(Action action)
{
    try {
        action();
    } catch (const quelm::Error& error) {
        return error.what();
    }
    return "";
}

/// What `make` leaves in a SQLite file of another program.
inline void makeForeignDatabase(const std::string& path, const char* statements)
{
    const auto database = quelm::sqlite::open(path, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
    quelm::sqlite::run(database, statements);
}

/// Ends this process as one that is killed while it saves: pages of the phonebook are half in the file, and
/// what they were before is in the journal beside it. First it makes the change that nobody has finished.
[[noreturn]] inline void dieWhileSaving(const std::string& path, const std::string& change = "")
{
    const auto database = quelm::sqlite::open(path, SQLITE_OPEN_READWRITE);
    quelm::sqlite::run(database,
                       ("PRAGMA cache_size=1; BEGIN; " + change +
                        "; WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i+1 FROM n LIMIT 2000) "
                        "INSERT INTO record(key, data) SELECT randomblob(20), randomblob(500) FROM n")
                           .c_str());
    raise(SIGKILL);
    std::abort();
}

class RecordStoreTest : public testing::Test {
protected:
    RecordStoreTest() { RecordStore::create(book); }
    ~RecordStoreTest() override { quelm::setDatabasePatience(std::chrono::seconds(5)); }

    static void saveTo(const std::string& path, const std::string& key, const std::string& data)
    {
        RecordStore store(path, Access::readWrite);
        store.save({key, data});
        store.commit();
    }
    void save(const std::string& key, const std::string& data) { saveTo(book, key, data); }

    /// "key=data" of every record, in order.
    static Names listed(const RecordStore& store)
    {
        Names found;
        for (const quelm::Record& record : store.records())
            found.push_back(record.key + "=" + record.data);
        return found;
    }
    Names stored() { return listed(RecordStore(book, Access::read)); }

    std::string openingProblem(const std::string& path, Access access = Access::readWrite)
    {
        return problem([&] { RecordStore store(path, access); });
    }

    /// Opening `path` in every way fails for `reason` and leaves the folder's files byte for byte.
    void expectRefused(const std::string& name, const std::string& reason)
    {
        const std::string path = folder / name;
        const std::string before = contentOf(path);
        const Names namesBefore = folder.names();
        for (const Access access : {Access::read, Access::readWrite}) {
            const std::string line = openingProblem(path, access);
            EXPECT_TRUE(mentions(line, "\"" + path + "\" cannot be opened: ")) << line;
            EXPECT_TRUE(mentions(line, reason)) << line;
        }
        EXPECT_NE(problem([&] { RecordStore::create(path); }), "");
        EXPECT_EQ(contentOf(path), before);
        EXPECT_EQ(folder.names(), namesBefore);
    }

    TemporaryFolder folder;
    std::string book = folder / "anne.xdb";
};

#endif
