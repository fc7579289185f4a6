// The host's record database as the component uses it.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "host/record_database.h"

#include "driver/boundary/host_state.h"
#include "driver/store/record_store.h"
#include "host/calls.h"
#include "tests/support/log_capture.h"
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <memory>
#include <string>
#include <type_traits>
#include <vector>

namespace {

using Names = std::vector<std::string>;

bool mentions(const std::string& text, const std::string& part)
{
    return text.find(part) != std::string::npos;
}

std::string shown(const LegacyDBRecord* record)
{
    return record == nullptr ? "(none)" : std::string(record->key) + "=" + record->data;
}

class RecordDatabaseTest : public testing::Test {
protected:
    RecordDatabaseTest() { EXPECT_TRUE(host::createDatabase(database, book, 2)); }

    static bool save(QuelmLegacyDatabase& into, const std::string& key, const std::string& data)
    {
        // The texts live no longer than the call.
        std::string ownKey = key;
        std::string ownData = data;
        LegacyDBRecord record{0, 0, 0, ownKey.data(), ownData.data()};
        const bool saved = into.saveRecord(&record);
        ownKey.assign(ownKey.size(), '!');
        ownData.assign(ownData.size(), '!');
        return saved;
    }
    bool save(const std::string& key, const std::string& data) { return save(database, key, data); }

    bool saveDurably(const std::string& key, const std::string& data)
    {
        return save(key, data) && database.serializeDatabase();
    }

    static Names listed(QuelmLegacyDatabase& from)
    {
        Names found;
        QuelmLegacyDatabaseIterator iterator(&from);
        for (auto* record = iterator.getNextRecord(true); record != nullptr;
             record = iterator.getNextRecord(false))
            found.push_back(shown(record));
        return found;
    }

    Names stored()
    {
        QuelmLegacyDatabase other;
        EXPECT_TRUE(host::openDatabase(other, book, "r")) << lastFailure();
        return listed(other);
    }

    static int count(QuelmLegacyDatabase& of)
    {
        int number = -1;
        of.getNumberOfRecords(number);
        return number;
    }

    std::string lastFailure() const { return state.failures.last().database; }

    TemporaryFolder folder;
    quelm::HostState state{folder.path(), "anne"};
    std::string book = folder / "anne.xdb";
    QuelmLegacyDatabase database;
};

} // namespace

TEST_F(RecordDatabaseTest, SavedRecordsAreInTheFileOnceSerialized)
{
    EXPECT_TRUE(save("uAnne", "1"));
    EXPECT_EQ(listed(database), Names{"uAnne=1"});
    EXPECT_EQ(stored(), Names{});
    EXPECT_TRUE(database.serializeDatabase());
    EXPECT_EQ(stored(), Names{"uAnne=1"});
}

TEST_F(RecordDatabaseTest, ClosingAndDestroyingForgetWhatWasNotSerialized)
{
    EXPECT_TRUE(save("uAnne", "1"));
    EXPECT_TRUE(database.closeDatabase());
    EXPECT_EQ(stored(), Names{});
    {
        QuelmLegacyDatabase other;
        EXPECT_TRUE(host::openDatabase(other, book, "r+"));
        EXPECT_TRUE(save(other, "uAnne", "1"));
    }
    EXPECT_EQ(stored(), Names{});
}

TEST_F(RecordDatabaseTest, RepeatedKeyReplacesTheRecordInItsPlace)
{
    for (const char* key : {"uZoe", "uAnne", "gTeam"})
        EXPECT_TRUE(saveDurably(key, "1"));
    EXPECT_TRUE(saveDurably("uZoe", "2"));
    EXPECT_EQ(stored(), (Names{"uZoe=2", "uAnne=1", "gTeam=1"}));
}

TEST_F(RecordDatabaseTest, ReopeningShowsWhatOthersSaved)
{
    QuelmLegacyDatabase shared;
    ASSERT_TRUE(host::openDatabase(shared, book, "r"));
    EXPECT_TRUE(saveDurably("uAnne", "1"));
    EXPECT_EQ(count(shared), 0);
    EXPECT_TRUE(shared.reopenDatabase());
    EXPECT_EQ(count(shared), 1);
}

TEST_F(RecordDatabaseTest, ModeDecidesAboutWriting)
{
    QuelmLegacyDatabase reader;
    ASSERT_TRUE(host::openDatabase(reader, book, "r"));
    EXPECT_FALSE(save(reader, "uAnne", "1"));
    EXPECT_TRUE(mentions(lastFailure(), "reading only"));
    EXPECT_TRUE(reader.serializeDatabase()) << "there is nothing to write";
    QuelmLegacyDatabase other;
    for (const char* mode : {"w", "", "r++", "rb"})
        EXPECT_FALSE(host::openDatabase(other, book, mode)) << mode;
    EXPECT_FALSE(other.openDatabase(host::in(book), nullptr));
    EXPECT_FALSE(other.openDatabase(nullptr, host::in("r")));
}

TEST_F(RecordDatabaseTest, CreatingWithFlag2NeverOverwrites)
{
    EXPECT_TRUE(saveDurably("uAnne", "1"));
    QuelmLegacyDatabase other;
    EXPECT_FALSE(host::createDatabase(other, book, 2));
    EXPECT_TRUE(mentions(lastFailure(), "exists already"));
    EXPECT_EQ(stored(), Names{"uAnne=1"});
}

TEST_F(RecordDatabaseTest, CreatingWithoutItEmptiesAPhonebookButNoOtherFile)
{
    EXPECT_TRUE(saveDurably("uAnne", "1"));
    QuelmLegacyDatabase other;
    EXPECT_TRUE(host::createDatabase(other, book, 0));
    EXPECT_EQ(stored(), Names{});
    writeFile(folder / "letter", "Dear Anne");
    EXPECT_FALSE(host::createDatabase(other, folder / "letter", 0));
    EXPECT_EQ(contentOf(folder / "letter"), "Dear Anne");
    EXPECT_TRUE(host::createDatabase(other, folder / "new.xdb", 0));
    EXPECT_EQ(count(other), 0);
}

TEST_F(RecordDatabaseTest, ErrorOfAFileInTheWaySaysWhatIsWrongWithIt)
{
    // What start-up does with a personal phonebook: open it, and create it when that fails.
    const std::string path = writeFile(folder / "ann.xdb", "no phonebook at all");
    QuelmLegacyDatabase other;
    EXPECT_FALSE(host::openDatabase(other, path, "r+"));
    EXPECT_FALSE(host::createDatabase(other, path, 2));
    const std::string line = lastFailure();
    EXPECT_EQ(line, "the phonebook \"" + path +
                        "\" cannot be opened: the file is no phonebook; move it away or choose another file");
    EXPECT_EQ(contentOf(path), "no phonebook at all");
}

TEST_F(RecordDatabaseTest, WithoutAFileEveryOperationFailsAndNothingBreaks)
{
    QuelmLegacyDatabase none;
    QuelmLegacyDatabaseIterator iterator(&none);
    int number = 7;
    EXPECT_FALSE(none.reopenDatabase());
    EXPECT_FALSE(none.serializeDatabase());
    EXPECT_FALSE(none.closeDatabase());
    EXPECT_FALSE(none.getNumberOfRecords(number));
    EXPECT_EQ(number, 7);
    EXPECT_FALSE(save(none, "uAnne", "1"));
    EXPECT_TRUE(mentions(lastFailure(), "no phonebook is open"));
    EXPECT_EQ(iterator.getNextRecord(true), nullptr);
    EXPECT_EQ(iterator.getNextRecord(false), nullptr);
    EXPECT_EQ(iterator.getRecordN(1), nullptr);
    EXPECT_EQ(iterator.getRecordByKey(host::in("uAnne")), nullptr);
    QuelmLegacyDatabaseIterator nowhere(nullptr);
    EXPECT_EQ(nowhere.getNextRecord(true), nullptr);
}

TEST_F(RecordDatabaseTest, RefusesRecordsWithoutTexts)
{
    std::string text = "x";
    LegacyDBRecord noKey{0, 0, 0, nullptr, text.data()};
    LegacyDBRecord noData{0, 0, 0, text.data(), nullptr};
    EXPECT_FALSE(database.saveRecord(nullptr));
    EXPECT_FALSE(database.saveRecord(&noKey));
    EXPECT_FALSE(database.saveRecord(&noData));
    EXPECT_EQ(count(database), 0);
}

TEST_F(RecordDatabaseTest, FailedOpeningLeavesTheObjectClosedAndReadyForAnother)
{
    EXPECT_TRUE(saveDurably("uAnne", "1"));
    EXPECT_FALSE(host::openDatabase(database, folder / "none.xdb", "r+"));
    EXPECT_EQ(count(database), -1);
    EXPECT_TRUE(host::openDatabase(database, book, "r+"));
    EXPECT_EQ(count(database), 1);
}

TEST_F(RecordDatabaseTest, IteratorWalksInOrderAndStopsAtTheEnd)
{
    for (const char* key : {"a", "b", "c"})
        EXPECT_TRUE(saveDurably(key, "1"));
    QuelmLegacyDatabaseIterator iterator(&database);
    EXPECT_EQ(shown(iterator.getNextRecord(true)), "a=1");
    EXPECT_EQ(shown(iterator.getNextRecord(false)), "b=1");
    EXPECT_EQ(shown(iterator.getNextRecord(true)), "a=1");
    EXPECT_EQ(shown(iterator.getRecordN(3)), "c=1");
    EXPECT_EQ(iterator.getNextRecord(false), nullptr);
    EXPECT_EQ(iterator.getNextRecord(false), nullptr);
    EXPECT_EQ(shown(iterator.getRecordN(1)), "a=1");
    EXPECT_EQ(shown(iterator.getNextRecord(false)), "b=1") << "the one after the record handed out last";
}

class GroupsTest : public RecordDatabaseTest {
protected:
    static std::string member(const std::string& name)
    {
        return ".susg\r\n0\r\n.eusg\r\n.snam\r\n" + name + "\r\n.enam\r\n.sfxn\r\n5\r\n.efxn\r\n";
    }

    const std::string members = ".sgen\r\n,uAnn,uBob\r\n.egen\r\n";
    const std::string warning =
        "the group \"Team\" sends nothing to its member \"Bob\", of whom the phonebook "
        "\"" +
        book + "\" has no entry; save an entry of that name";
};

TEST_F(GroupsTest, AMemberWithoutAnEntryIsNamedWhenTheGroupIsSaved)
{
    const LogCapture log;
    save("uAnn", member("Ann"));
    EXPECT_EQ(log.messages, Names());
    save("gTeam", members);
    EXPECT_EQ(log.messages, Names{warning});
    save("uBob", member("Bob"));
    save("gTeam", members);
    EXPECT_EQ(log.messages, Names{warning});
}

TEST_F(GroupsTest, AMemberWhoseNameIsCutIsNamedBesideThoseWithoutAnEntry)
{
    save("uAnn", member("Ann"));
    const LogCapture log;
    save("gTeam", ".sgen\r\n,uAnn, Mary,uBob\r\n.egen\r\n");
    ASSERT_EQ(log.messages.size(), 2U);
    EXPECT_TRUE(mentions(log.messages[0], "is cut to \"Ann\"; the fax goes to the entry \"Ann\" instead"));
    EXPECT_EQ(log.messages[1], warning);
}

TEST_F(GroupsTest, AMemberWithoutAnEntryIsNamedOnceForEachPickAndNotWhenTheGroupIsListed)
{
    save("uAnn", member("Ann"));
    save("gTeam", members);
    const LogCapture log;
    QuelmLegacyDatabaseIterator iterator(&database);
    const auto pick = [&iterator] {
        // As the component does: the group is fetched to be tested, again to be added, then each member.
        iterator.getRecordN(2);
        iterator.getRecordN(2);
        std::string ann = "uAnn";
        std::string bob = "uBob";
        EXPECT_NE(iterator.getRecordByKey(ann.data()), nullptr);
        EXPECT_EQ(iterator.getRecordByKey(bob.data()), nullptr);
    };
    listed(database);
    iterator.getRecordN(1);
    iterator.getRecordN(2);
    EXPECT_EQ(log.messages, Names());
    pick();
    EXPECT_EQ(log.messages, Names{warning});
    pick();
    EXPECT_EQ(log.messages, (Names{warning, warning}));
    iterator.getRecordN(1);
    std::string bob = "uBob";
    iterator.getRecordByKey(bob.data());
    EXPECT_EQ(log.messages.size(), 2U) << "of a group alone";
}

TEST_F(RecordDatabaseTest, ASharedPhonebookThatCannotBeOpenedIsToldOnceUntilItCan)
{
    const LogCapture log;
    const std::string shared = folder / "shared.xdb";
    QuelmLegacyDatabase other;
    EXPECT_FALSE(host::openDatabase(other, shared, "r"));
    EXPECT_FALSE(host::openDatabase(other, shared, "r"));
    ASSERT_EQ(log.messages.size(), 1U);
    EXPECT_TRUE(mentions(log.messages[0], "the shared phonebook is not listed: "));
    EXPECT_TRUE(mentions(log.messages[0], shared));
    quelm::RecordStore::create(shared);
    EXPECT_TRUE(host::openDatabase(other, shared, "r"));
    std::filesystem::remove(shared);
    EXPECT_FALSE(host::openDatabase(other, shared, "r"));
    EXPECT_EQ(log.messages.size(), 2U);
    EXPECT_FALSE(host::openDatabase(other, shared, "r+"));
    EXPECT_EQ(log.messages.size(), 2U) << "the component makes a personal one then";
}

TEST_F(RecordDatabaseTest, NumbersCountFromOne)
{
    EXPECT_TRUE(saveDurably("a", "1"));
    QuelmLegacyDatabaseIterator iterator(&database);
    EXPECT_EQ(shown(iterator.getRecordN(1)), "a=1");
    for (const int outside : {0, -1, 2, 2147483647, -2147483647 - 1})
        EXPECT_EQ(iterator.getRecordN(outside), nullptr) << outside;
}

TEST_F(RecordDatabaseTest, RecordsAreFoundByKey)
{
    EXPECT_TRUE(saveDurably("uAnne", "1"));
    EXPECT_TRUE(saveDurably("gAnne", "2"));
    QuelmLegacyDatabaseIterator iterator(&database);
    EXPECT_EQ(shown(iterator.getRecordByKey(host::in("gAnne"))), "gAnne=2");
    EXPECT_EQ(iterator.getRecordByKey(host::in("Anne")), nullptr);
    EXPECT_EQ(iterator.getRecordByKey(nullptr), nullptr);
}

TEST_F(RecordDatabaseTest, LengthsAreCountedIn16BitsAndTextsKeptWhole)
{
    const std::string data(70000, 'd');
    EXPECT_TRUE(saveDurably("uLong", data));
    EXPECT_TRUE(host::openDatabase(database, book, "r"));
    QuelmLegacyDatabaseIterator iterator(&database);
    const LegacyDBRecord* record = iterator.getNextRecord(true);
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(record->keyLength, 5);
    EXPECT_EQ(record->dataLength, 70000 - 65536);
    EXPECT_EQ(record->recordLength, 70005 - 65536);
    EXPECT_EQ(record->data, data);
}

TEST_F(RecordDatabaseTest, RecordStaysValidUntilTheNextCall)
{
    EXPECT_TRUE(saveDurably("a", "1"));
    EXPECT_TRUE(saveDurably("b", "2"));
    QuelmLegacyDatabaseIterator one(&database);
    QuelmLegacyDatabaseIterator two(&database);
    const LegacyDBRecord* first = one.getRecordN(1);
    two.getRecordN(2);
    EXPECT_TRUE(database.reopenDatabase()) << "nothing changed";
    EXPECT_EQ(shown(first), "a=1");
}

TEST_F(RecordDatabaseTest, IteratorNoticesThatItsDatabaseIsGone)
{
    auto closed = std::make_unique<QuelmLegacyDatabase>();
    ASSERT_TRUE(saveDurably("a", "1"));
    ASSERT_TRUE(host::openDatabase(*closed, book, "r"));
    QuelmLegacyDatabaseIterator iterator(closed.get());
    EXPECT_EQ(shown(iterator.getNextRecord(true)), "a=1");
    closed->closeDatabase();
    EXPECT_EQ(iterator.getNextRecord(true), nullptr);
    closed.reset();
    EXPECT_EQ(iterator.getNextRecord(true), nullptr);
}

TEST_F(RecordDatabaseTest, HundredThousandRecordsAreListedPickedAndFound)
{
    constexpr int many = 100000;
    for (int i = 0; i < many; ++i)
        ASSERT_TRUE(save("u" + std::to_string(i),
                         ".susg\r\n0\r\n.eusg\r\n.snam\r\n" + std::to_string(i) + "\r\n.enam"));
    ASSERT_TRUE(database.serializeDatabase());
    QuelmLegacyDatabase other;
    ASSERT_TRUE(host::openDatabase(other, book, "r+"));
    ASSERT_TRUE(other.reopenDatabase());
    QuelmLegacyDatabaseIterator iterator(&other);
    int walked = 0;
    for (auto* record = iterator.getNextRecord(true); record != nullptr;
         record = iterator.getNextRecord(false))
        ++walked;
    for (int n = many; n > 0; --n)
        ASSERT_NE(iterator.getRecordN(n), nullptr);
    for (int i = 0; i < many; ++i)
        ASSERT_NE(iterator.getRecordByKey(host::in("u" + std::to_string(i))), nullptr);
    EXPECT_EQ(walked, many);
}

TEST_F(RecordDatabaseTest, TwoThatMissTheSamePhonebookBothGetTheOneThatIsMadeFirst)
{
    const std::string path = folder / "late.xdb";
    QuelmLegacyDatabase slow;
    QuelmLegacyDatabase fast;
    EXPECT_FALSE(host::openDatabase(slow, path, "r+"));
    EXPECT_FALSE(host::openDatabase(fast, path, "r+"));
    EXPECT_TRUE(host::createDatabase(fast, path, 2));
    EXPECT_TRUE(host::createDatabase(slow, path, 2));
    EXPECT_EQ(count(slow), 0);
}

namespace {

/// A phonebook into which another program put records that the component cannot read: the second and the
/// fourth of five.
class DamagedPhonebook : public RecordDatabaseTest {
protected:
    DamagedPhonebook()
    {
        quelm::RecordStore store(book, quelm::RecordStore::Access::readWrite);
        store.save({"uAnne", anne});
        store.save({"uBlank", blank});
        store.save({"uBernard", anne});
        store.save({"uCut", ".snam\r\nCut"});
        store.save({"xOdd", "neither an entry nor a group"});
        store.commit();
    }

    const std::string anne = ".susg\r\n0\r\n.eusg\r\n.snam\r\nAnne\r\n.enam\r\n";
    const std::string blank = ".susg\r\n0\r\n.eusg\r\n.scmp\r\n \r\n.ecmp\r\n";
    LogCapture log;
};

} // namespace

TEST_F(DamagedPhonebook, LeavesOutWhatCannotBeReadInEveryWayOfReading)
{
    ASSERT_TRUE(host::openDatabase(database, book, "r+"));
    EXPECT_EQ(listed(database),
              (Names{"uAnne=" + anne, "uBernard=" + anne, "xOdd=neither an entry nor a group"}));
    EXPECT_EQ(count(database), 3);
    QuelmLegacyDatabaseIterator iterator(&database);
    EXPECT_EQ(shown(iterator.getRecordN(2)), "uBernard=" + anne);
    EXPECT_EQ(shown(iterator.getNextRecord(false)), "xOdd=neither an entry nor a group");
    EXPECT_EQ(iterator.getRecordN(4), nullptr);
    EXPECT_EQ(iterator.getRecordByKey(host::in("uBlank")), nullptr);
    EXPECT_EQ(iterator.getRecordByKey(host::in("uCut")), nullptr);
    EXPECT_EQ(shown(iterator.getRecordByKey(host::in("uBernard"))), "uBernard=" + anne);
    EXPECT_EQ(shown(iterator.getNextRecord(false)), "xOdd=neither an entry nor a group");
}

TEST_F(DamagedPhonebook, IsNamedOnceInOneBoundedLine)
{
    {
        quelm::RecordStore store(book, quelm::RecordStore::Access::readWrite);
        store.remove("uBlank");
        store.save({"u" + std::string(100000, 'x') + "\n", blank});
        store.commit();
    }
    for (const char* mode : {"r", "r+", "r"}) {
        ASSERT_TRUE(host::openDatabase(database, book, mode));
        ASSERT_TRUE(database.reopenDatabase());
    }
    EXPECT_EQ(log.messages,
              Names{"the phonebook \"" + book +
                    "\" has 2 records that cannot be read and are left out, the first is \"Cut\": its field "
                    "\"name\" has no end; replace or remove them with quelm-driver phonebook"});
    QuelmLegacyDatabase other;
    const std::string second = folder / "second.xdb";
    quelm::RecordStore::create(second);
    {
        quelm::RecordStore store(second, quelm::RecordStore::Access::readWrite);
        store.save({"u" + std::string(100000, 'x') + "\n", blank});
        store.commit();
    }
    ASSERT_TRUE(host::openDatabase(other, second, "r"));
    ASSERT_EQ(log.messages.size(), 2U);
    EXPECT_TRUE(mentions(log.messages[1], "its field \"organization\" is blank"));
    EXPECT_LT(log.messages[1].size(), 400U + second.size());
}

TEST_F(DamagedPhonebook, AGoodRecordUnderTheKeyOfABadOneIsBackInItsPlace)
{
    ASSERT_TRUE(host::openDatabase(database, book, "r+"));
    EXPECT_TRUE(saveDurably("uBlank", anne));
    EXPECT_TRUE(saveDurably("uDora", anne));
    QuelmLegacyDatabaseIterator iterator(&database);
    EXPECT_EQ(shown(iterator.getRecordN(2)), "uBlank=" + anne);
    EXPECT_EQ(shown(iterator.getRecordN(5)), "uDora=" + anne);
    EXPECT_EQ(count(database), 5);
}

TEST_F(DamagedPhonebook, WhatAnotherProgramRepairsAppearsWithTheNextReading)
{
    ASSERT_TRUE(host::openDatabase(database, book, "r"));
    {
        quelm::RecordStore store(book, quelm::RecordStore::Access::readWrite);
        store.save({"uCut", anne});
        store.save({"uAnne", blank});
        store.commit();
    }
    EXPECT_EQ(count(database), 3) << "rows stay where they are until then";
    ASSERT_TRUE(database.reopenDatabase());
    EXPECT_EQ(listed(database),
              (Names{"uBernard=" + anne, "uCut=" + anne, "xOdd=neither an entry nor a group"}));
}

TEST_F(DamagedPhonebook, ARecordThatCouldNotBeReadAgainIsRefusedAndTheUserTold)
{
    ASSERT_TRUE(host::openDatabase(database, book, "r+"));
    log.messages.clear();
    EXPECT_FALSE(save("uAnne", blank));
    const std::string line =
        "\"Anne\" was not saved to the phonebook \"" + book +
        "\": its field \"organization\" is blank; fill it in or leave it empty, and save "
        "again";
    EXPECT_EQ(log.messages, Names{line});
    EXPECT_EQ(lastFailure(), line);
    EXPECT_TRUE(database.serializeDatabase());
    QuelmLegacyDatabaseIterator iterator(&database);
    EXPECT_EQ(shown(iterator.getRecordByKey(host::in("uAnne"))), "uAnne=" + anne) << "the good one stays";
}

TEST_F(RecordDatabaseTest, APhonebookOfTheUsersFolderIsForHimAlone)
{
    const auto mode = [](const std::string& path) {
        struct stat status {};
        stat(path.c_str(), &status);
        return status.st_mode & 0777;
    };
    std::filesystem::create_directories(folder / "db/phonebook/user");
    const std::string own = folder / "db/phonebook/user/anne.xdb";
    QuelmLegacyDatabase personal;
    ASSERT_TRUE(host::createDatabase(personal, own, 2));
    EXPECT_EQ(mode(own), 0600U);
    chmod(own.c_str(), 0664);
    ASSERT_TRUE(host::openDatabase(personal, own, "r"));
    EXPECT_EQ(mode(own), 0664U) << "only read";
    ASSERT_TRUE(host::openDatabase(personal, own, "r+"));
    EXPECT_EQ(mode(own), 0600U);
    chmod(book.c_str(), 0644);
    ASSERT_TRUE(host::openDatabase(personal, book, "r+"));
    EXPECT_EQ(mode(book), 0644U) << "kept elsewhere, for others to read";
}
