// Phonebook files against crashes, other writers, full disks and files that are none.
#include "driver/core/record_store.h"

#include <array>
#include <chrono>
#include <csignal>
#include <memory>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include "driver/core/error.h"
#include "driver/core/sqlite.h"
#include "tests/driver/core/temporary_folder.h"

namespace {

using quelm::RecordStore;
using Access = RecordStore::Access;
using Names = std::vector<std::string>;

bool mentions(const std::string& text, const std::string& part)
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
void makeForeignDatabase(const std::string& path, const char* statements)
{
    const auto database = quelm::sqlite::open(path, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
    quelm::sqlite::run(database, statements);
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

} // namespace

TEST_F(RecordStoreTest, RecordsKeepTheirOrderAndARepeatedKeyItsPlace)
{
    for (const char* key : {"uZoe", "uAnne", "gTeam"})
        save(key, "1");
    save("uAnne", "2");
    EXPECT_EQ(stored(), (Names{"uZoe=1", "uAnne=2", "gTeam=1"}));
}

TEST_F(RecordStoreTest, SavedRecordIsSeenAtOnceAndInTheFileAfterTheCommit)
{
    RecordStore store(book, Access::readWrite);
    store.save({"uAnne", "1"});
    EXPECT_EQ(listed(store), Names{"uAnne=1"});
    EXPECT_EQ(stored(), Names{});
    store.commit();
    EXPECT_EQ(stored(), Names{"uAnne=1"});
}

TEST_F(RecordStoreTest, WhatWasNotCommittedIsGone)
{
    save("uAnne", "1");
    {
        RecordStore store(book, Access::readWrite);
        store.save({"uAnne", "2"});
        store.save({"uBernard", "1"});
    }
    EXPECT_EQ(stored(), Names{"uAnne=1"});
    EXPECT_EQ(folder.names(), Names{"anne.xdb"}) << "no journal is left";
}

TEST_F(RecordStoreTest, RefreshDropsWhatWasNotCommitted)
{
    save("uAnne", "1");
    RecordStore store(book, Access::readWrite);
    store.save({"uAnne", "2"});
    store.refresh();
    EXPECT_EQ(listed(store), Names{"uAnne=1"});
    store.commit();
    EXPECT_EQ(stored(), Names{"uAnne=1"});
}

TEST_F(RecordStoreTest, RowsStayWhereTheyAreUntilTheFileIsReadAgain)
{
    save("uAnne", "1");
    save("uBernard", "1");
    RecordStore shown(book, Access::read);
    {
        RecordStore other(book, Access::readWrite);
        EXPECT_TRUE(other.remove("uAnne"));
        other.save({"uClaire", "1"});
        other.commit();
    }
    EXPECT_EQ(listed(shown), (Names{"uAnne=1", "uBernard=1"}));
    shown.refresh();
    EXPECT_EQ(listed(shown), (Names{"uBernard=1", "uClaire=1"}));
}

TEST_F(RecordStoreTest, RefreshOfAnUnchangedFileKeepsTheTexts)
{
    save("uAnne", "1");
    RecordStore store(book, Access::readWrite);
    const char* text = store.records()[0].data.c_str();
    store.refresh();
    EXPECT_EQ(store.records()[0].data.c_str(), text);
}

TEST_F(RecordStoreTest, TextsStayValidWhileRecordsAreAdded)
{
    RecordStore store(book, Access::readWrite);
    store.save({"uAnne", "short"});
    const char* text = store.records()[0].data.c_str();
    for (int i = 0; i < 1000; ++i)
        store.save({"u" + std::to_string(i), ""});
    EXPECT_EQ(store.records()[0].data.c_str(), text);
    EXPECT_STREQ(text, "short");
}

TEST_F(RecordStoreTest, FindsByWholeKey)
{
    save("uAnne", "1");
    save("uAnne Marie", "2");
    const RecordStore store(book, Access::read);
    EXPECT_EQ(store.find("uAnne"), 0U);
    EXPECT_EQ(store.find("uAnne Marie"), 1U);
    EXPECT_EQ(store.find("uanne"), std::nullopt);
    EXPECT_EQ(store.find(""), std::nullopt);
}

TEST_F(RecordStoreTest, RemovesRecords)
{
    for (const char* key : {"a", "b", "c"})
        save(key, "1");
    RecordStore store(book, Access::readWrite);
    EXPECT_TRUE(store.remove("b"));
    EXPECT_FALSE(store.remove("b"));
    EXPECT_EQ(store.find("c"), 1U);
    store.commit();
    EXPECT_EQ(stored(), (Names{"a=1", "c=1"}));
    store.clear();
    store.save({"d", "1"});
    store.commit();
    EXPECT_EQ(stored(), Names{"d=1"});
}

TEST_F(RecordStoreTest, KeepsEveryByteAndEveryLength)
{
    std::string everyByte;
    for (int byte = 1; byte < 256; ++byte)
        everyByte += static_cast<char>(byte);
    const std::string longData(200000, 'x');
    save("u" + everyByte, everyByte);
    save("ulong", longData);
    save("uempty", "");
    const RecordStore store(book, Access::read);
    EXPECT_EQ(store.records()[0].key, "u" + everyByte);
    EXPECT_EQ(store.records()[0].data, everyByte);
    EXPECT_EQ(store.records()[1].data, longData);
    EXPECT_EQ(store.records()[2].data, "");
}

TEST_F(RecordStoreTest, RefusesARecordWithoutAKey)
{
    RecordStore store(book, Access::readWrite);
    EXPECT_TRUE(mentions(problem([&] { store.save({"", "x"}); }), "no key"));
}

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
    chmod(book.c_str(), 0666);
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

// --- Files that are no phonebook -----------------------------------------------------------

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
    expectRefused("folder.xdb", "no file but a folder or device");
    ASSERT_EQ(mkfifo((folder / "fifo.xdb").c_str(), 0600), 0);
    EXPECT_TRUE(mentions(openingProblem(folder / "fifo.xdb"), "no file but a folder or device"));
    EXPECT_TRUE(mentions(openingProblem("/dev/null"), "no file but a folder or device"));
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

// --- Other writers -------------------------------------------------------------------------

TEST_F(RecordStoreTest, TwoDriversThatSaveAtOnceLoseNothing)
{
    constexpr int each = 40;
    std::vector<pid_t> drivers;
    for (const char* name : {"a", "b", "c"}) {
        const pid_t driver = fork();
        if (driver == 0) {
            const std::string line = problem([&] {
                quelm::setDatabasePatience(std::chrono::seconds(60));
                RecordStore store(book, Access::readWrite);
                for (int i = 0; i < each; ++i) {
                    store.save({name + std::to_string(i), "own"});
                    store.save({"shared" + std::to_string(i), name});
                    store.commit();
                }
            });
            _exit(line.empty() ? 0 : 1);
        }
        drivers.push_back(driver);
    }
    for (const pid_t driver : drivers) {
        int status = 0;
        waitpid(driver, &status, 0);
        EXPECT_EQ(status, 0);
    }
    const RecordStore store(book, Access::read);
    EXPECT_EQ(store.records().size(), 4U * each);
    for (const char* name : {"a", "b", "c"}) {
        std::size_t last = 0;
        for (int i = 0; i < each; ++i) {
            const auto at = store.find(name + std::to_string(i));
            ASSERT_TRUE(at);
            EXPECT_TRUE(i == 0 || *at > last) << "in the order in which it was saved";
            last = *at;
        }
    }
}

TEST_F(RecordStoreTest, WaitForAnotherDriverIsBounded)
{
    quelm::setDatabasePatience(std::chrono::milliseconds(100));
    RecordStore holder(book, Access::readWrite);
    RecordStore other(book, Access::readWrite);
    holder.save({"uAnne", "held"});
    const auto start = std::chrono::steady_clock::now();
    EXPECT_TRUE(mentions(problem([&] { other.save({"uBernard", "1"}); }), "another program is saving to it"));
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(4));
    EXPECT_EQ(listed(other), Names{});
    holder.commit();
    other.save({"uBernard", "1"});
    other.commit();
    EXPECT_EQ(stored(), (Names{"uAnne=held", "uBernard=1"}));
}

TEST_F(RecordStoreTest, ReadersDoNotDisturbAWriterNorItThem)
{
    save("uAnne", "1");
    RecordStore writer(book, Access::readWrite);
    writer.save({"uBernard", "1"});
    RecordStore reader(book, Access::read);
    EXPECT_EQ(listed(reader), Names{"uAnne=1"});
    reader.refresh();
    writer.commit();
    reader.refresh();
    EXPECT_EQ(reader.records().size(), 2U);
}

TEST_F(RecordStoreTest, LookingAtTheFileDoesNotLoseTheLocksOfThisProcess)
{
    RecordStore writer(book, Access::readWrite);
    writer.save({"uAnne", "1"});
    EXPECT_EQ(stored(), Names{});
    EXPECT_EQ(inProcess([&] {
                  quelm::setDatabasePatience(std::chrono::milliseconds(50));
                  const std::string line = problem([&] { saveTo(book, "uBernard", "1"); });
                  return mentions(line, "another program is saving to it") ? 0 : 1;
              }),
              0);
}

TEST_F(RecordStoreTest, ReplacedFileIsNoticed)
{
    save("uAnne", "1");
    RecordStore store(book, Access::readWrite);
    std::filesystem::rename(book, folder / "moved.xdb");
    EXPECT_TRUE(mentions(problem([&] { store.save({"uBernard", "1"}); }), "removed or replaced"));
    EXPECT_TRUE(mentions(problem([&] { store.refresh(); }), "no such file"));
    EXPECT_EQ(listed(store), Names{});
    RecordStore::create(book);
    save("uClaire", "1");
    store.refresh();
    EXPECT_EQ(listed(store), Names{"uClaire=1"});
    store.save({"uBernard", "1"});
    store.commit();
    EXPECT_EQ(stored(), (Names{"uClaire=1", "uBernard=1"}));
}

// --- Crashes and full disks ----------------------------------------------------------------

TEST_F(RecordStoreTest, KilledWriterLeavesWhatItHadCommitted)
{
    // Each round a driver saves records in pairs, one pair a commit, tells what it committed,
    // and is killed at a random moment.
    std::mt19937 random(20240305);
    constexpr int rounds = 50;
    int next = 0;
    for (int round = 0; round < rounds; ++round) {
        std::array<int, 2> told{};
        ASSERT_EQ(pipe(told.data()), 0);
        const pid_t driver = fork();
        if (driver == 0) {
            RecordStore store(book, Access::readWrite);
            for (int i = next;; i += 2) {
                for (const int number : {i, i + 1})
                    store.save({"u" + std::to_string(number), std::string(3000, 'x')});
                store.commit();
                [[maybe_unused]] const ssize_t said = write(told[1], &i, sizeof i);
            }
        }
        close(told[1]);
        int committed = next - 2;
        // The first commit is waited for, so that the kill falls among the later ones.
        ASSERT_EQ(read(told[0], &committed, sizeof committed), static_cast<ssize_t>(sizeof committed));
        const auto until = std::chrono::steady_clock::now() + std::chrono::microseconds(random() % 20000);
        while (std::chrono::steady_clock::now() < until) {
        }
        kill(driver, SIGKILL);
        waitpid(driver, nullptr, 0);
        while (read(told[0], &committed, sizeof committed) > 0) {
        }
        close(told[0]);

        const RecordStore store(book, round % 2 == 0 ? Access::read : Access::readWrite);
        const auto count = static_cast<int>(store.records().size());
        ASSERT_EQ(count % 2, 0) << "round " << round << ": half a commit";
        ASSERT_GE(count, committed + 2) << "round " << round << ": a commit was lost";
        ASSERT_LE(count, committed + 4) << "round " << round;
        for (int i = 0; i < count; ++i) {
            ASSERT_EQ(store.records()[static_cast<std::size_t>(i)].key, "u" + std::to_string(i));
            ASSERT_EQ(store.records()[static_cast<std::size_t>(i)].data.size(), 3000U);
        }
        next = count;
    }
    save("u" + std::to_string(next), "1");
    EXPECT_EQ(folder.names(), Names{"anne.xdb"}) << "no journal is left";
}

/// Leaves a file as a writer does that is killed while its pages are half in the file.
class HotJournal : public RecordStoreTest {
protected:
    HotJournal()
    {
        save("uAnne", "before");
        EXPECT_EQ(inProcess([&] {
                      const auto database = quelm::sqlite::open(book, SQLITE_OPEN_READWRITE);
                      quelm::sqlite::run(
                          database,
                          "PRAGMA cache_size=1; BEGIN; UPDATE record SET data = x'41'; "
                          "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i+1 FROM n LIMIT 2000) "
                          "INSERT INTO record(key, data) SELECT randomblob(20), randomblob(500) FROM n");
                      raise(SIGKILL);
                      return 0;
                  }),
                  128 + SIGKILL);
        EXPECT_EQ(folder.names(), (Names{"anne.xdb", "anne.xdb-journal"}));
    }
};

TEST_F(HotJournal, IsUndoneByAReader)
{
    EXPECT_EQ(stored(), Names{"uAnne=before"});
    EXPECT_EQ(folder.names(), Names{"anne.xdb"});
}

TEST_F(HotJournal, IsUndoneByAWriter)
{
    save("uBernard", "1");
    EXPECT_EQ(stored(), (Names{"uAnne=before", "uBernard=1"}));
}

TEST_F(RecordStoreTest, ReaderThatIsOpenMeanwhileSurvivesAKilledWriter)
{
    save("uAnne", "before");
    RecordStore reader(book, Access::read);
    EXPECT_EQ(inProcess([&] {
                  const auto database = quelm::sqlite::open(book, SQLITE_OPEN_READWRITE);
                  quelm::sqlite::run(
                      database,
                      "PRAGMA cache_size=1; BEGIN; "
                      "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i+1 FROM n LIMIT 2000) "
                      "INSERT INTO record(key, data) SELECT randomblob(20), randomblob(500) FROM n");
                  raise(SIGKILL);
                  return 0;
              }),
              128 + SIGKILL);
    reader.refresh();
    EXPECT_EQ(listed(reader), Names{"uAnne=before"});
}

TEST_F(RecordStoreTest, FullDiskFailsTheCommitAndLeavesTheFileAsItWas)
{
    save("uAnne", "1");
    const std::string before = contentOf(book);
    const int status = inProcess([&] {
        const rlimit limit{before.size() + 8192, before.size() + 8192};
        setrlimit(RLIMIT_FSIZE, &limit);
        RecordStore store(book, Access::readWrite);
        const std::string line = problem([&] {
            for (int i = 0; i < 20; ++i)
                store.save({"u" + std::to_string(i), std::string(4000, 'x')});
            store.commit();
        });
        return mentions(line, "cannot be saved: its file could not be extended") ? 0 : 1;
    });
    EXPECT_EQ(status, 0);
    EXPECT_EQ(contentOf(book), before);
    EXPECT_EQ(folder.names(), Names{"anne.xdb"});
}

TEST_F(RecordStoreTest, WhatCouldNotBeCommittedGoesIntoTheFileWithTheNextCommit)
{
    const int status = inProcess([&] {
        RecordStore store(book, Access::readWrite);
        rlimit limit{};
        getrlimit(RLIMIT_FSIZE, &limit);
        const rlimit none{contentOf(book).size() + 4096, limit.rlim_max};
        setrlimit(RLIMIT_FSIZE, &none);
        store.save({"uAnne", std::string(20000, 'x')});
        const bool failed = !problem([&] { store.commit(); }).empty();
        const bool remembered = store.records().size() == 1;
        setrlimit(RLIMIT_FSIZE, &limit);
        store.save({"uBernard", "1"});
        store.commit();
        return failed && remembered ? 0 : 1;
    });
    EXPECT_EQ(status, 0);
    const RecordStore store(book, Access::read);
    ASSERT_EQ(store.records().size(), 2U);
    EXPECT_EQ(store.records()[0].data, std::string(20000, 'x'));
    EXPECT_EQ(store.records()[1].key, "uBernard");
}

TEST_F(RecordStoreTest, FailedCommitLetsOthersSave)
{
    quelm::setDatabasePatience(std::chrono::milliseconds(100));
    RecordStore store(book, Access::readWrite);
    const auto reader = quelm::sqlite::open(book, SQLITE_OPEN_READONLY);
    quelm::sqlite::Statement reading(reader, "SELECT count(*), 1 FROM record UNION ALL SELECT 1, 2");
    store.save({"uAnne", "1"});
    reading.step(); // a foreign reader that does not let go
    EXPECT_TRUE(mentions(problem([&] { store.commit(); }), "another program"));
    reading.reset();
    save("uBernard", "1");
    store.commit();
    EXPECT_EQ(stored(), (Names{"uBernard=1", "uAnne=1"}));
}
