// Tests of databases that must not lose anything.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/sqlite/database_file.h"

#include "base/error.h"
#include "tests/support/temporary_folder.h"

#include <gmock/gmock.h>
#include <sys/resource.h>

#include <filesystem>

namespace quelm::tests {
namespace {

using sqlite::Failure;
using testing::ElementsAre;
using testing::HasSubstr;

class DatabaseFileTest : public testing::Test {
protected:
    /// What `reasonOf` says of the failure of `action`.
    template <class Action>
    static std::string reason(const Action& action)
    {
        try {
            action();
        } catch (const Failure& failure) {
            return sqlite::reasonOf(failure, "it is damaged");
        }
        return "nothing failed";
    }

    TemporaryFolder folder;
    const std::string path = writeFile(folder / "file.db", "");
};

TEST_F(DatabaseFileTest, AFileIsOpenedThatIsThereAndNoLink)
{
    EXPECT_EQ(sqlite::pragma(sqlite::openDurable(path), "PRAGMA synchronous"), 3);
    EXPECT_EQ(sqlite::pragma(sqlite::openDurable(path), "PRAGMA secure_delete"), 1);
    EXPECT_THAT(reason([&] { (void)sqlite::openDurable(folder / "absent"); }), HasSubstr("No such file"));
    EXPECT_FALSE(std::filesystem::exists(folder / "absent"));
    std::filesystem::create_symlink(path, folder / "link");
    EXPECT_NE(reason([&] { (void)sqlite::openDurable(folder / "link"); }), "nothing failed");
}

TEST_F(DatabaseFileTest, NothingStaysOfATransactionThatThrows)
{
    const auto database = sqlite::openDurable(path);
    sqlite::inTransaction(database, [&] { sqlite::run(database, "CREATE TABLE kept(a)"); });
    EXPECT_THROW(sqlite::inTransaction(database,
                                       [&] {
                                           sqlite::run(database, "CREATE TABLE lost(a)");
                                           throw Error("no");
                                       }),
                 Error);
    EXPECT_THROW(sqlite::inTransaction(database, [&] { sqlite::run(database, "DELETE FROM lost"); }),
                 Failure);
    sqlite::inTransaction(database, [&] { sqlite::run(database, "CREATE INDEX behind ON kept(a)"); });
    EXPECT_THAT(sqlite::schemaOf(database),
                ElementsAre("CREATE TABLE kept(a)", "CREATE INDEX behind ON kept(a)"));
    EXPECT_EQ(sqlite::pragma(database, "PRAGMA user_version"), 0);
}

TEST_F(DatabaseFileTest, ADamagedFileIsWhatItsOwnerCallsIt)
{
    writeFile(path, "Dear Sir or Madam,\n" + std::string(1000, 'x'));
    EXPECT_EQ(reason([&] { (void)sqlite::schemaOf(sqlite::openDurable(path)); }), "it is damaged");
}

TEST_F(DatabaseFileTest, ASizeLimitIsAReasonAndNotTheEnd)
{
    EXPECT_EQ(inProcess([&] {
                  const auto database = sqlite::openDurable(path);
                  const rlimit limit{1000, 1000};
                  ::setrlimit(RLIMIT_FSIZE, &limit);
                  const std::string said = reason([&] { sqlite::run(database, "CREATE TABLE kept(a)"); });
                  return said.find("limit") != std::string::npos || said.find("room") != std::string::npos
                             ? 0
                             : 1;
              }),
              0);
}

TEST_F(DatabaseFileTest, FailuresHaveWordsThatTellWhatToDo)
{
    EXPECT_THAT(sqlite::reasonOf({SQLITE_BUSY, 0, ""}, ""), HasSubstr("try again in a moment"));
    EXPECT_THAT(sqlite::reasonOf({SQLITE_FULL, 0, ""}, ""), HasSubstr("the disk is full"));
    EXPECT_THAT(sqlite::reasonOf({SQLITE_READONLY, 0, ""}, ""), HasSubstr("permission denied"));
    EXPECT_THAT(sqlite::reasonOf({SQLITE_IOERR_WRITE, 0, ""}, ""), HasSubstr("make room"));
    EXPECT_THAT(sqlite::reasonOf({SQLITE_IOERR_WRITE, ENOSPC, ""}, ""), HasSubstr("the disk is full"));
    EXPECT_EQ(sqlite::reasonOf({SQLITE_ERROR, 0, "no such table"}, ""), "no such table");
}

} // namespace
} // namespace quelm::tests
