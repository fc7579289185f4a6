// Opening, creating and re-reading phonebooks, and the rows that their records become.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "phonebook/phonebook_listing.h"

#include "directory/search.h"
#include "frame/startup.h"
#include "model/list_refresh.h"
#include "tests/support/phonebook_test.h"

#include <cstdlib>
#include <iostream>
#include <stdexcept>

namespace {

/// A row of the list whose last four cells are empty.
std::vector<std::string> row(const std::string& name, const std::string& faxNumber)
{
    return {name, faxNumber, "", "", "", ""};
}

using Rows = std::vector<std::vector<std::string>>;

const std::string emptyListing = lines({R"(clearRows "Fax PB List")", "firstRecord"});

} // namespace

class PhonebookListingTest : public PhonebookTest {
protected:
    /// The journal of one listing.
    std::string listPersonal()
    {
        host.journal.clear();
        PopulatePersonalPBEntries();
        return host.journal.calls();
    }

    std::string listShared()
    {
        host.journal.clear();
        PopulateSharedPBEntries();
        return host.journal.calls();
    }

    Rows rows() { return host.rows("Fax PB List"); }

    /// Lists these records of the personal phonebook.
    Rows listed(std::vector<fake::Record> records)
    {
        keepPersonal(std::move(records));
        PopulatePersonalPBEntries();
        return rows();
    }
};

// --- The personal phonebook ------------------------------------------------------------------

TEST_F(PhonebookListingTest, ThePersonalPhonebookIsReadAgainAndListed)
{
    keepPersonal({entry("Carla", "3"), entry("Anne", "1")});
    EXPECT_EQ(listPersonal(),
              lines({"reopenDatabase", "new iterator", R"(clearRows "Fax PB List")", "firstRecord",
                     R"(addRow "Fax PB List" "Carla" "3" empty empty empty empty)", "nextRecord",
                     R"(addRow "Fax PB List" "Anne" "1" empty empty empty empty)", "nextRecord"}));
    EXPECT_EQ(currentPBDatabase, personalPBDatabase);
    EXPECT_EQ(currentPBIterator, personalPBIterator);
}

TEST_F(PhonebookListingTest, TheRowsComeThroughOneObjectThatIsKeptForThemAlone)
{
    keepPersonal({entry("Carla", "3"), entry("Anne", "1")});
    host.rowFactories.clear();
    listPersonal();
    listPersonal();
    ASSERT_EQ(host.rowFactories.size(), 1U);
    EXPECT_FALSE(host.rowFactories.contains(listItemFactory));
    EXPECT_FALSE(host.rowFactories.contains(ldapRowFactory));
}

TEST_F(PhonebookListingTest, EveryListingReadsTheFileAgainAndReplacesTheIterator)
{
    listPersonal();
    keepPersonal({entry("Anne", "1")});
    EXPECT_EQ(
        listPersonal(),
        lines({"reopenDatabase", "delete iterator", "new iterator", R"(clearRows "Fax PB List")",
               "firstRecord", R"(addRow "Fax PB List" "Anne" "1" empty empty empty empty)", "nextRecord"}));
    EXPECT_EQ(currentPBIterator, personalPBIterator);
}

TEST_F(PhonebookListingTest, AFileThatCannotBeReadAgainListsWhatTheDatabaseHolds)
{
    listed({entry("Anne", "1")});
    host.disk.phonebooks.erase(personalFile);
    listPersonal();
    EXPECT_EQ(rows(), (Rows{row("Anne", "1")}));
}

TEST_F(PhonebookListingTest, WithoutAPathNothingIsListed)
{
    personalPBPath->clear();
    EXPECT_EQ(listPersonal(), "");
    EXPECT_EQ(currentPBDatabase, nullptr);
}

TEST_F(PhonebookListingTest, AnExistingFileThatWasChosenIsOpenedToReadAndWrite)
{
    host.disk.phonebooks[otherPersonalFile] = {entry("Bernard", "2")};
    choosePersonal(otherPersonalFile);
    EXPECT_EQ(listPersonal(),
              lines({"new database", R"(openDatabase "/opt/quelm/db/phonebook/user/other.xdb" "r+")",
                     "reopenDatabase", "new iterator", R"(clearRows "Fax PB List")", "firstRecord",
                     R"(addRow "Fax PB List" "Bernard" "2" empty empty empty empty)", "nextRecord"}));
}

TEST_F(PhonebookListingTest, AFileThatDoesNotExistIsCreatedEmpty)
{
    choosePersonal(otherPersonalFile);
    EXPECT_EQ(listPersonal(),
              lines({"new database", R"(openDatabase "/opt/quelm/db/phonebook/user/other.xdb" "r+")",
                     R"(exists "/opt/quelm/db/phonebook" -> yes)",
                     R"(exists "/opt/quelm/db/phonebook/user" -> yes)",
                     R"(createDatabase "/opt/quelm/db/phonebook/user/other.xdb" 2)", "reopenDatabase",
                     "new iterator"}) +
                  emptyListing);
    EXPECT_TRUE(host.disk.phonebooks.contains(otherPersonalFile));
    EXPECT_TRUE(rows().empty());
}

TEST_F(PhonebookListingTest, TheFoldersOfANewPhonebookAreMadeFirst)
{
    host.disk.directories = {"/opt/quelm", "/opt/quelm/db"};
    choosePersonal(otherPersonalFile);
    EXPECT_EQ(listPersonal(),
              lines({"new database", R"(openDatabase "/opt/quelm/db/phonebook/user/other.xdb" "r+")",
                     R"(exists "/opt/quelm/db/phonebook" -> no)",
                     R"(createDirectory "/opt/quelm/db/phonebook" 777)",
                     R"(exists "/opt/quelm/db/phonebook/user" -> no)",
                     R"(createDirectory "/opt/quelm/db/phonebook/user" 777)",
                     R"(createDatabase "/opt/quelm/db/phonebook/user/other.xdb" 2)", "reopenDatabase",
                     "new iterator"}) +
                  emptyListing);
}

TEST_F(PhonebookListingTest, WithoutTheFirstFolderTheUnopenedDatabaseIsKeptAndListedLater)
{
    host.disk.directories = {"/opt/quelm", "/opt/quelm/db"};
    host.faults.fail(fake::Op::createDirectory);
    choosePersonal(otherPersonalFile);
    EXPECT_EQ(listPersonal(),
              lines({"new database", R"(openDatabase "/opt/quelm/db/phonebook/user/other.xdb" "r+")",
                     R"(exists "/opt/quelm/db/phonebook" -> no)",
                     R"(createDirectory "/opt/quelm/db/phonebook" 777)"}));
    EXPECT_NE(personalPBDatabase, nullptr);
    EXPECT_EQ(currentPBDatabase, nullptr);

    host.faults.clear();
    EXPECT_EQ(listPersonal(), lines({"reopenDatabase", "new iterator"}) + emptyListing);
    EXPECT_EQ(currentPBDatabase, personalPBDatabase);
}

TEST_F(PhonebookListingTest, WithoutTheSecondFolderTheDatabaseIsDroppedAndTriedAgain)
{
    host.disk.directories = {"/opt/quelm", "/opt/quelm/db", "/opt/quelm/db/phonebook"};
    host.faults.fail(fake::Op::createDirectory);
    choosePersonal(otherPersonalFile);
    const std::string attempt =
        lines({"new database", R"(openDatabase "/opt/quelm/db/phonebook/user/other.xdb" "r+")",
               R"(exists "/opt/quelm/db/phonebook" -> yes)", R"(exists "/opt/quelm/db/phonebook/user" -> no)",
               R"(createDirectory "/opt/quelm/db/phonebook/user" 777)", "delete database"});
    EXPECT_EQ(listPersonal(), attempt);
    EXPECT_EQ(personalPBDatabase, nullptr);
    EXPECT_EQ(listPersonal(), attempt);
}

TEST_F(PhonebookListingTest, AFileThatCannotBeCreatedDropsTheDatabaseAndIsTriedAgain)
{
    host.faults.fail(fake::Op::createDatabase);
    choosePersonal(otherPersonalFile);
    const std::string attempt = lines(
        {"new database", R"(openDatabase "/opt/quelm/db/phonebook/user/other.xdb" "r+")",
         R"(exists "/opt/quelm/db/phonebook" -> yes)", R"(exists "/opt/quelm/db/phonebook/user" -> yes)",
         R"(createDatabase "/opt/quelm/db/phonebook/user/other.xdb" 2)", "delete database"});
    EXPECT_EQ(listPersonal(), attempt);
    EXPECT_EQ(personalPBDatabase, nullptr);
    EXPECT_EQ(listPersonal(), attempt);
}

TEST_F(PhonebookListingTest, APhonebookThatCannotBeListedLeavesTheRowsAndTheCurrentPhonebook)
{
    listed({entry("Anne", "1")});
    QuelmLegacyDatabase* database = currentPBDatabase;
    QuelmLegacyDatabaseIterator* iterator = currentPBIterator;
    host.faults.fail(fake::Op::createDatabase);
    choosePersonal(otherPersonalFile);
    listPersonal();
    EXPECT_EQ(rows(), (Rows{row("Anne", "1")}));
    EXPECT_EQ(currentPBDatabase, database);
    EXPECT_EQ(currentPBIterator, iterator);
}

class FailedStartTest : public ComponentTest {};

TEST_F(FailedStartTest, TheProvisionalPathIsWhatLaterListingsTry)
{
    host.disk.directories = {"/opt/quelm", "/opt/quelm/db"};
    host.faults.fail(fake::Op::createDirectory);
    ASSERT_EQ(InitializeFaxComponent(), 0);
    EXPECT_EQ(*personalPBPath, "/opt/quelm/db/phonebook/user/");
    host.faults.clear();
    host.journal.clear();
    PopulatePersonalPBEntries();
    EXPECT_EQ(host.journal.calls(),
              lines({"new database", R"(openDatabase "/opt/quelm/db/phonebook/user/" "r+")",
                     R"(exists "/opt/quelm/db/phonebook" -> no)",
                     R"(createDirectory "/opt/quelm/db/phonebook" 777)",
                     R"(exists "/opt/quelm/db/phonebook/user" -> no)",
                     R"(createDirectory "/opt/quelm/db/phonebook/user" 777)",
                     R"(createDatabase "/opt/quelm/db/phonebook/user/" 2)", "delete database"}));
    EXPECT_EQ(personalPBDatabase, nullptr);
}

TEST_F(FailedStartTest, BeforeTheStartNothingIsListed)
{
    PopulatePersonalPBEntries();
    PopulateSharedPBEntries();
    EXPECT_EQ(host.journal.all(), "");
}

// --- The shared phonebook --------------------------------------------------------------------

TEST_F(PhonebookListingTest, UntilASharedPhonebookIsChosenNothingIsListed)
{
    EXPECT_EQ(listShared(), "");
    EXPECT_EQ(currentPBDatabase, nullptr);
}

TEST_F(PhonebookListingTest, TheSharedPhonebookIsOpenedToReadOnly)
{
    keepShared({entry("Anne", "1")});
    EXPECT_EQ(listShared(),
              lines({"new database", R"(openDatabase "/opt/quelm/db/phonebook/office.xdb" "r")",
                     "reopenDatabase", "new iterator", R"(clearRows "Fax PB List")", "firstRecord",
                     R"(addRow "Fax PB List" "Anne" "1" empty empty empty empty)", "nextRecord"}));
    EXPECT_EQ(currentPBDatabase, sharedPBDatabase);
    EXPECT_EQ(currentPBIterator, sharedPBIterator);
}

TEST_F(PhonebookListingTest, AnOpenSharedPhonebookIsOnlyReadAgain)
{
    keepShared({});
    listShared();
    EXPECT_EQ(listShared(), lines({"reopenDatabase", "delete iterator", "new iterator"}) + emptyListing);
}

TEST_F(PhonebookListingTest, ASharedPhonebookIsNeverCreatedAndTriedAgainAtEveryListing)
{
    chooseShared(sharedFile);
    const std::string attempt = lines(
        {"new database", R"(openDatabase "/opt/quelm/db/phonebook/office.xdb" "r")", "delete database"});
    EXPECT_EQ(listShared(), attempt);
    EXPECT_EQ(sharedPBDatabase, nullptr);
    EXPECT_EQ(listShared(), attempt);
    EXPECT_FALSE(host.disk.phonebooks.contains(sharedFile));

    host.disk.phonebooks[sharedFile] = {entry("Anne", "1")};
    listShared();
    EXPECT_EQ(rows(), (Rows{row("Anne", "1")}));
}

TEST_F(PhonebookListingTest, ASharedPhonebookThatCannotBeOpenedLeavesTheRowsAndTheCurrentPhonebook)
{
    listed({entry("Anne", "1")});
    chooseShared(sharedFile);
    listShared();
    EXPECT_EQ(rows(), (Rows{row("Anne", "1")}));
    EXPECT_EQ(currentPBDatabase, personalPBDatabase);
    EXPECT_EQ(currentPBIterator, personalPBIterator);
}

// --- Rows ------------------------------------------------------------------------------------

TEST_F(PhonebookListingTest, AnEntryShowsItsNameAndFaxNumberOnly)
{
    EXPECT_EQ(listed({entry("Anne", "555-1",
                            tagged("cmp", "Acme") + tagged("von", "777") + tagged("eml", "a@b") +
                                tagged("fxm", "12"))}),
              (Rows{row("Anne", "555-1")}));
}

TEST_F(PhonebookListingTest, AGroupShowsItsNameInBracketsWithoutANumber)
{
    EXPECT_EQ(listed({entry("Anne", "1"), group("Team", ",uAnne")}),
              (Rows{row("Anne", "1"), row("[Team]", "")}));
}

TEST_F(PhonebookListingTest, RowsKeepTheOrderOfTheRecords)
{
    listed({entry("Zoe", "1"), group("Team", ",uZoe"), entry("Anne", "2"), entry("anne", "3")});
    EXPECT_EQ(rowNames(), (std::vector<std::string>{"Zoe", "[Team]", "Anne", "anne"}));
}

TEST_F(PhonebookListingTest, BothKindsOfHostSeeTheSameRows)
{
    const std::vector<fake::Record> records = {
        entry("Anne", "1"), group("Team", ",uAnne"),
        fake::record("uBob", tagged("usg", "0") + tagged("nam", "Bob"))};
    const Rows expected = {row("Anne", "1"), row("[Team]", ""), row("Bob", "")};
    EXPECT_EQ(listed(records), expected);
    host.readsRowsByColumnCount = false;
    EXPECT_EQ(listed(records), expected);
}

TEST_F(PhonebookListingTest, EmptyCellsAreTheHostsOwnEmptyText)
{
    listed({group("Team", ",uAnne"), fake::record("uBob", tagged("usg", "0") + tagged("nam", "Bob")),
            fake::record("u", tagged("usg", "0") + tagged("fxn", "1")),
            fake::record("u2", tagged("usg", "0")), recordOfNeitherKind("Carla")});
    std::string added;
    for (const char* cells :
         {R"("[Team]" empty)", R"("Bob" empty)", R"(empty "1")", "empty empty", "empty empty"})
        added += std::string("addRow \"Fax PB List\" ") + cells + " empty empty empty empty\n";
    std::string rowsOnly = host.journal.effects();
    rowsOnly.erase(0, rowsOnly.find("addRow"));
    EXPECT_EQ(rowsOnly, added);
}

TEST_F(PhonebookListingTest, ARecordThatDoesNotDecodeAddsNoRow)
{
    EXPECT_EQ(listed({entry("Anne", "1"), brokenEntry("Bernard"), entry("Carla", "3")}),
              (Rows{row("Anne", "1"), row("Carla", "3")}));
}

TEST_F(PhonebookListingTest, ARecordOfNeitherKindRepeatsTheRowBeforeIt)
{
    EXPECT_EQ(
        listed({entry("Anne", "1"), recordOfNeitherKind("Bernard"), group("Team", ",uAnne"),
                recordOfNeitherKind("Carla"), fake::record("uDora", "nothing at all")}),
        (Rows{row("Anne", "1"), row("Anne", "1"), row("[Team]", ""), row("[Team]", ""), row("[Team]", "")}));
}

TEST_F(PhonebookListingTest, TheRepeatedTextsAreKeptAndNotThoseOfARecordThatWasDecodedSince)
{
    EXPECT_EQ(listed({entry("Anne", "1"), brokenEntry("Bernard"), recordOfNeitherKind("Carla")}),
              (Rows{row("Anne", "1"), row("Anne", "1")}));
}

TEST_F(PhonebookListingTest, TheRowBeforeMayBeThatOfAnEarlierListing)
{
    listed({entry("Anne", "1")});
    EXPECT_EQ(listed({recordOfNeitherKind("Bernard"), entry("Carla", "3")}),
              (Rows{row("Anne", "1"), row("Carla", "3")}));
}

// The texts are kept until the process ends, so the very first row needs a process of its own.
TEST_F(PhonebookListingTest, ARecordOfNeitherKindOnTheVeryFirstRowHasNoValues)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        {
            keepPersonal({recordOfNeitherKind("Anne"), entry("Bernard", "2")});
            PopulatePersonalPBEntries();
            std::cerr << host.journal.effects();
            std::_Exit(rows() == (Rows{row("", ""), row("Bernard", "2")}) ? 0 : 1);
        },
        testing::ExitedWithCode(0), "addRow \"Fax PB List\"\naddRow \"Fax PB List\" \"Bernard\" \"2\"");
}

TEST_F(PhonebookListingTest, ARowThatTheHostRefusesDoesNotEndTheListing)
{
    host.faults.failNth(fake::Op::createRow, 1);
    EXPECT_EQ(listed({entry("Anne", "1"), entry("Bernard", "2")}), (Rows{row("Bernard", "2")}));
}

TEST_F(PhonebookListingTest, LongTextsAreShownWhole)
{
    EXPECT_EQ(listed({entry(longText(9000), longText(5000)), group(longText(9000), ",uAnne")}),
              (Rows{row(longText(9000), longText(5000)), row("[" + longText(9000) + "]", "")}));
}

TEST_F(PhonebookListingTest, AValueOfNothingButWhiteSpaceLetsAnExceptionLeaveTheCallback)
{
    keepPersonal({entry("Anne", "1"), entry("", "2"), entry("Carla", "3")});
    EXPECT_THROW(openDialog(), std::out_of_range);
    EXPECT_EQ(rows(), (Rows{row("Anne", "1")}));

    keepPersonal({group("Nobody", "")});
    EXPECT_THROW(openDialog(), std::out_of_range);

    keepPersonal({entry("Anne", "1")});
    openDialog();
    EXPECT_EQ(rows(), (Rows{row("Anne", "1")}));
}
