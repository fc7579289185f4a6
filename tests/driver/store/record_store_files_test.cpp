// Phonebook files by any name, with little permission, and files that are none.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "tests/driver/store/record_store_fixture.h"

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

class FileName : public RecordStoreTest, public testing::WithParamInterface<const char*> {};

TEST_P(FileName, MayBeAnyText)
{
    const std::string path = folder / GetParam();
    RecordStore::create(path);
    saveTo(path, "uAnne", "1");
    EXPECT_EQ(listed(RecordStore(path, Access::read)), Names{"uAnne=1"});
    EXPECT_EQ(folder.names().size(), 2U);
}

INSTANTIATE_TEST_SUITE_P(Names, FileName,
                         testing::Values("Zoë 山田.xdb", "a?mode=ro&b#c%41.xdb", "file:a.xdb",
                                         "it's \"x\".xdb", ":memory:", "no extension", "line\nbreak.xdb"));

TEST_F(RecordStoreTest, RelativeNamesAreFilesWhateverTheyLookLike)
{
    const auto before = std::filesystem::current_path();
    std::filesystem::current_path(folder.path());
    for (const char* name : {":memory:", "file:x.xdb?mode=memory", "-x"}) {
        RecordStore::create(name);
        saveTo(name, "uAnne", "1");
        EXPECT_EQ(listed(RecordStore(name, Access::read)), Names{"uAnne=1"}) << name;
    }
    std::filesystem::current_path(before);
}

TEST_F(RecordStoreTest, ReadOnlyAccessSavesNothing)
{
    RecordStore store(book, Access::read);
    EXPECT_TRUE(mentions(problem([&] { store.save({"uAnne", "1"}); }), "opened for reading only"));
    EXPECT_EQ(listed(store), Names{});
}

TEST_F(RecordStoreTest, FileWithoutWritePermissionCanBeReadOnly)
{
    save("uAnne", "1");
    giveToOrdinaryUser(book);
    chmod(book.c_str(), 0444);
    EXPECT_EQ(inProcess([&] {
                  becomeOrdinaryUser();
                  const bool refused = mentions(openingProblem(book), "it may not be written");
                  return refused && stored() == Names{"uAnne=1"} ? 0 : 1;
              }),
              0);
    EXPECT_EQ(folder.names(), Names{"anne.xdb"});
}

TEST_F(RecordStoreTest, FileWithoutReadPermissionIsRefused)
{
    chmod(book.c_str(), 0);
    EXPECT_EQ(inProcess([&] {
                  becomeOrdinaryUser();
                  return mentions(openingProblem(book, Access::read), "permission") ? 0 : 1;
              }),
              0);
}

TEST_F(RecordStoreTest, FolderWithoutWritePermissionMakesSavingFailAndSaysSo)
{
    giveToOrdinaryUser(book);
    std::filesystem::permissions(folder.path(), std::filesystem::perms(0555));
    EXPECT_EQ(inProcess([&] {
                  becomeOrdinaryUser();
                  RecordStore store(book, Access::readWrite);
                  const std::string line = problem([&] {
                      store.save({"uAnne", "1"});
                      store.commit();
                  });
                  return mentions(line, "cannot be saved: its folder may not be written") ? 0 : 1;
              }),
              0);
    EXPECT_EQ(stored(), Names{});
}

TEST_F(RecordStoreTest, TextFileIsRefused)
{
    writeFile(folder / "text.xdb", "Anne 5551234\n");
    expectRefused("text.xdb", "the file is no phonebook");
    writeFile(folder / "long.xdb", std::string(100000, 'x'));
    expectRefused("long.xdb", "the file is no phonebook");
}

TEST_F(RecordStoreTest, EmptyFileIsRefused)
{
    writeFile(folder / "empty.xdb", "");
    expectRefused("empty.xdb", "the file is empty");
}

TEST_F(RecordStoreTest, DatabaseOfAnotherProgramIsRefused)
{
    makeForeignDatabase(folder / "foreign.xdb",
                        "CREATE TABLE record(key, data); INSERT INTO record VALUES('a','b')");
    expectRefused("foreign.xdb", "the file is no phonebook");
    makeForeignDatabase(folder / "wal.xdb",
                        "PRAGMA journal_mode=WAL; CREATE TABLE t(x); INSERT INTO t VALUES(1)");
    expectRefused("wal.xdb", "the file is no phonebook");
}

TEST_F(RecordStoreTest, DatabaseWithOurNumberButAnotherSchemaIsRefused)
{
    makeForeignDatabase(folder / "other.xdb", "PRAGMA application_id=0x51584442; PRAGMA user_version=1; "
                                              "CREATE TABLE record(key, data)");
    expectRefused("other.xdb", "it is damaged");
    std::filesystem::copy(book, folder / "trigger.xdb");
    makeForeignDatabase(folder / "trigger.xdb",
                        "CREATE TRIGGER t AFTER INSERT ON record BEGIN DELETE FROM record; END");
    expectRefused("trigger.xdb", "it is damaged");
}

TEST_F(RecordStoreTest, ForeignJournalIsLeftAlone)
{
    // A crashed foreign database: its own program must find file and journal as they are.
    makeForeignDatabase(folder / "foreign.xdb", "CREATE TABLE t(x)");
    EXPECT_EQ(inProcess([&] {
                  const auto database = quelm::sqlite::open(folder / "foreign.xdb", SQLITE_OPEN_READWRITE);
                  quelm::sqlite::run(database,
                                     "PRAGMA cache_size=1; BEGIN; "
                                     "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i+1 FROM n LIMIT "
                                     "2000) INSERT INTO t SELECT randomblob(500) FROM n");
                  raise(SIGKILL);
                  return 0;
              }),
              128 + SIGKILL);
    const std::string journal = contentOf(folder / "foreign.xdb-journal");
    ASSERT_NE(journal, "");
    expectRefused("foreign.xdb", "the file is no phonebook");
    EXPECT_EQ(contentOf(folder / "foreign.xdb-journal"), journal);
}

TEST_F(RecordStoreTest, PhonebookOfANewerVersionIsRefused)
{
    std::filesystem::copy(book, folder / "newer.xdb");
    makeForeignDatabase(folder / "newer.xdb", "PRAGMA user_version=2");
    expectRefused("newer.xdb", "newer version");
}

TEST_F(RecordStoreTest, TruncatedPhonebookIsRefusedAtEveryLength)
{
    RecordStore store(book, Access::readWrite);
    for (int i = 0; i < 500; ++i)
        store.save({"u" + std::to_string(i), std::string(100, 'x')});
    store.commit();
    const std::string whole = contentOf(book);
    for (const std::size_t length :
         {std::size_t{1}, std::size_t{16}, std::size_t{99}, std::size_t{100}, std::size_t{512},
          std::size_t{4096}, std::size_t{8192}, whole.size() - 4096, whole.size() - 1}) {
        writeFile(folder / "cut.xdb", whole.substr(0, length));
        SCOPED_TRACE(length);
        expectRefused("cut.xdb", "");
    }
}

TEST_F(RecordStoreTest, DamagedPhonebookIsRefused)
{
    RecordStore store(book, Access::readWrite);
    for (int i = 0; i < 500; ++i)
        store.save({"u" + std::to_string(i), std::string(100, 'x')});
    store.commit();
    std::string damaged = contentOf(book);
    damaged.replace(3 * 4096, 4096, std::string(4096, '\xA5'));
    writeFile(folder / "damaged.xdb", damaged);
    expectRefused("damaged.xdb", "it is damaged; restore it from a copy");
}

TEST_F(RecordStoreTest, FolderAndDeviceAreRefused)
{
    std::filesystem::create_directory(folder / "folder.xdb");
    expectRefused("folder.xdb", "it is a folder; choose a file in it or another file");
    ASSERT_EQ(mkfifo((folder / "fifo.xdb").c_str(), 0600), 0);
    for (const Access access : {Access::read, Access::readWrite}) {
        EXPECT_TRUE(mentions(openingProblem(folder / "fifo.xdb", access), "it is a pipe and no file"));
        EXPECT_TRUE(mentions(openingProblem("/dev/null", access), "it is a device or socket"));
    }
}

TEST_F(RecordStoreTest, MissingFileIsNotCreatedByOpening)
{
    EXPECT_TRUE(mentions(openingProblem(folder / "none.xdb"), "there is no such file"));
    EXPECT_TRUE(mentions(openingProblem(""), "there is no such file"));
    EXPECT_EQ(folder.names(), Names{"anne.xdb"});
}

TEST_F(RecordStoreTest, CreatingNeverOverwrites)
{
    save("uAnne", "1");
    EXPECT_TRUE(mentions(problem([&] { RecordStore::create(book); }), "it exists already"));
    EXPECT_EQ(stored(), Names{"uAnne=1"});
    EXPECT_TRUE(mentions(problem([&] { RecordStore::create(folder / "no/x.xdb"); }), "does not exist"));
}
