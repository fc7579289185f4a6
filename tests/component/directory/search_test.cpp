// Searching the directory, its results and status texts, and picking a result.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "directory/search.h"

#include "common/module_state.h"
#include "directory/device_directory.h"
#include "host/directory_client.h"
#include "tests/support/phonebook_test.h"

#include <ostream>
#include <stdexcept>
#include <utility>

namespace {

using Entry = std::map<std::string, std::string>;
using Rows = std::vector<std::vector<std::string>>;

Entry person(const std::string& surname, const std::string& givenName, const std::string& faxNumber,
             const std::string& phone = {}, const std::string& mail = {})
{
    return {{"sn", surname},
            {"givenName", givenName},
            {"facsimileTelephoneNumber", faxNumber},
            {"telephoneNumber", phone},
            {"mail", mail}};
}

const Entry anneSmith = person("Smith", "Anne", "555-1", "777", "anne@example");
const Entry johnSmithers = person("Smithers", "John", "555-2");

/// How every search begins.
std::string requested(const std::string& filter)
{
    return lines({R"(appendAttribute "sn")", R"(appendAttribute "givenName")",
                  R"(appendAttribute "facsimileTelephoneNumber")", R"(appendAttribute "telephonenumber")",
                  R"(appendAttribute "mail")", R"(set "Search Status" WidgetText "Searching...")",
                  "requestSearch " + fake::quoted(filter) + " scope 2"});
}

/// What reading one result asks for.
const std::string resultRead = lines({
    "nextEntry",
    R"(attribute "givenName")",
    R"(attribute "sn")",
    R"(attribute "facsimileTelephoneNumber")",
    R"(attribute "telephoneNumber")",
    R"(attribute "mail")",
    "clearEntry",
});

} // namespace

/// The directory is the current phonebook.
class DirectorySearchTest : public PhonebookTest {
protected:
    DirectorySearchTest()
    {
        host.connectDevice();
        host.device.tables = {{{"ubqSvcMonServiceDetailTableLDAP", 0}, "ldap.example"},
                              {{"ubqSvcMonServiceDetailTableLDAP", 1}, "o=example"}};
        openDialog();
        host.choose("Current PB Type", 2);
        host.journal.clear();
    }

    /// Types a text and presses "_Search"; the journal of that.
    std::string search(const std::string& text)
    {
        host.type("Search String", text);
        host.journal.clear();
        host.press("Search Button");
        return host.journal.all();
    }

    Rows rows() { return host.rows("Fax PB List"); }
    std::string status() { return host.text("Search Status"); }

    /// Selects a result and presses the second "_Add >>"; the journal of that.
    std::string add(int row)
    {
        host.setSelection("Fax PB List", {row});
        host.journal.clear();
        host.press("Add Button2");
        return host.journal.calls();
    }
};

// --- Searching -------------------------------------------------------------------------------

TEST_F(DirectorySearchTest, CallsTheHostInThisOrder)
{
    host.directory.entries = {anneSmith, johnSmithers};
    EXPECT_EQ(
        search("Smi"),
        lines({R"(get "Search String" Value -> "Smi")"}) + requested("(sn=Smi*)") +
            lines({R"(freeze "Fax PB List")", R"(clearRows "Fax PB List")"}) + resultRead +
            lines({R"(addRow "Fax PB List" "Smith, Anne" "555-1" empty "777" "anne@example" empty)"}) +
            resultRead + lines({R"(addRow "Fax PB List" "Smithers, John" "555-2" empty empty empty empty)"}) +
            lines({"nextEntry", "responseItemCount", R"(set "Search Status" WidgetText "2 Records Found")",
                   R"(unfreeze "Fax PB List")"}));
}

TEST_F(DirectorySearchTest, ListsPersonsBySurnameCommaBlankGivenName)
{
    host.directory.entries = {johnSmithers, anneSmith};
    search("Smi");
    EXPECT_EQ(rows(), (Rows{{"Smithers, John", "555-2", "", "", "", ""},
                            {"Smith, Anne", "555-1", "", "777", "anne@example", ""}}));
    EXPECT_EQ(status(), "2 Records Found");
    EXPECT_FALSE(host.widget("Fax PB List").frozen);
}

TEST_F(DirectorySearchTest, BothKindsOfHostSeeTheSameRows)
{
    host.directory.entries = {person("Smith", "Anne", "", "", "anne@example"), person("Smithers", "", "1")};
    const Rows expected = {{"Smith, Anne", "", "", "", "anne@example", ""},
                           {"Smithers, ", "1", "", "", "", ""}};
    search("Smi");
    EXPECT_EQ(rows(), expected);
    host.readsRowsByColumnCount = false;
    search("Smi");
    EXPECT_EQ(rows(), expected);
}

TEST_F(DirectorySearchTest, APersonWithoutAGivenNameEndsInACommaAndABlank)
{
    host.directory.entries = {{{"sn", "Smith"}, {"facsimileTelephoneNumber", "1"}}};
    search("Smi");
    EXPECT_EQ(rowNames(), std::vector<std::string>{"Smith, "});
}

TEST_F(DirectorySearchTest, ResultsWithoutAFaxNumberAreListedToo)
{
    host.directory.entries = {{{"sn", "Smith"}, {"givenName", "Anne"}}};
    search("Smi");
    EXPECT_EQ(rows(), (Rows{{"Smith, Anne", "", "", "", "", ""}}));
}

TEST_F(DirectorySearchTest, AHostThatLeavesTheTextOfAMissingAttributeRepeatsTheResultBefore)
{
    host.directory.missingAttributeEmptiesText = false;
    host.directory.entries = {anneSmith, {{"sn", "Smithers"}}, {{"mail", "x@y"}}};
    search("Smi");
    EXPECT_EQ(rows(), (Rows{{"Smith, Anne", "555-1", "", "777", "anne@example", ""},
                            {"Smithers, Anne", "555-1", "", "777", "anne@example", ""},
                            {"Smithers, Anne", "555-1", "", "777", "x@y", ""}}));
}

TEST_F(DirectorySearchTest, NothingIsRepeatedFromAnEarlierSearch)
{
    host.directory.missingAttributeEmptiesText = false;
    host.directory.entries = {anneSmith};
    search("Smi");
    host.directory.entries = {{{"sn", "Jones"}}};
    search("Jon");
    EXPECT_EQ(rows(), (Rows{{"Jones, ", "", "", "", "", ""}}));
}

TEST_F(DirectorySearchTest, ASearchReplacesTheRowsOfTheOneBefore)
{
    host.directory.entries = {anneSmith, johnSmithers};
    search("Smi");
    host.directory.entries = {person("Jones", "Bo", "1")};
    search("Jon");
    EXPECT_EQ(rowNames(), std::vector<std::string>{"Jones, Bo"});
}

TEST_F(DirectorySearchTest, OneObjectIsMadeForTheRowsAndKept)
{
    host.directory.entries = {anneSmith, johnSmithers};
    host.rowFactories.clear();
    search("Smi");
    search("Smi");
    EXPECT_EQ(host.rowFactories, std::set<const GTKObject*>{ldapRowFactory});
}

TEST_F(DirectorySearchTest, TheAttributesAreAppendedAtEverySearch)
{
    for (int time = 0; time < 3; ++time)
        EXPECT_TRUE(search("Smi").starts_with(lines({R"(get "Search String" Value -> "Smi")"}) +
                                              requested("(sn=Smi*)")));
}

TEST_F(DirectorySearchTest, TheTextGoesIntoTheFilterUnescaped)
{
    for (const char* text : {"", "*", ")", "Smi*th)(mail=", "\\2a", "M\xC3\xBCller", "%s%n", "a b"}) {
        search(text);
        EXPECT_EQ(host.journal.count("requestSearch " + fake::quoted(std::string("(sn=") + text + "*)") +
                                     " scope 2"),
                  1)
            << text;
    }
}

TEST_F(DirectorySearchTest, ALongTextIsTakenAsTheHostHandsItOver)
{
    host.setText("Search String", longText(6000));
    host.journal.clear();
    host.press("Search Button");
    EXPECT_EQ(host.journal.count("requestSearch " + fake::quoted("(sn=" + longText(4095) + "*)") + " "), 1);
}

TEST_F(DirectorySearchTest, ATextThatCannotBeReadSearchesForEverybody)
{
    host.faults.failOn(fake::Op::readProperty, "Search String");
    search("Smi");
    EXPECT_EQ(host.journal.count("requestSearch \"(sn=*)\""), 1);
}

TEST_F(DirectorySearchTest, OnlySearchesWhileTheDirectoryIsTheCurrentPhonebook)
{
    for (int kind : {0, 1, 3}) {
        currentPBType = kind;
        host.journal.clear();
        host.press("Search Button");
        EXPECT_EQ(host.journal.all(), "") << kind;
    }
}

TEST_F(DirectorySearchTest, ResultsOfAnyLengthAreListedWhole)
{
    host.directory.entries = {person(longText(5000), longText(6000), longText(7000))};
    search("a");
    EXPECT_EQ(rows(), (Rows{{longText(5000) + ", " + longText(6000), longText(7000), "", "", "", ""}}));
}

TEST_F(DirectorySearchTest, ARowThatTheHostRefusesDoesNotEndTheListing)
{
    host.faults.failNth(fake::Op::createRow, 1);
    host.directory.entries = {anneSmith, johnSmithers};
    search("Smi");
    EXPECT_EQ(rowNames(), std::vector<std::string>{"Smithers, John"});
    EXPECT_FALSE(host.widget("Fax PB List").frozen);
}

TEST_F(DirectorySearchTest, TellsItsCallerWhetherTheRequestFailed)
{
    char text[] = "Smi";
    EXPECT_NE(PerformLDAPSearch(text), 0);
    host.faults.fail(fake::Op::requestSearch);
    EXPECT_EQ(PerformLDAPSearch(text), 0);
}

TEST_F(DirectorySearchTest, AFailedRequestKeepsTheRowsAndSaysTimeout)
{
    host.directory.entries = {anneSmith};
    search("Smi");
    host.faults.fail(fake::Op::requestSearch);
    EXPECT_EQ(search("Jon"), lines({R"(get "Search String" Value -> "Jon")"}) + requested("(sn=Jon*)") +
                                 lines({R"(set "Search Status" WidgetText "Timeout Exceeded!")"}));
    EXPECT_EQ(rowNames(), std::vector<std::string>{"Smith, Anne"});
    EXPECT_EQ(status(), "Timeout Exceeded!");
}

TEST_F(DirectorySearchTest, WithoutASessionASearchFailsQuietly)
{
    delete std::exchange(ldapSession, nullptr);
    char text[] = "Smi";
    host.journal.clear();
    EXPECT_EQ(PerformLDAPSearch(text), 0);
    EXPECT_EQ(host.journal.count("requestSearch"), 0);
}

// --- Status texts ----------------------------------------------------------------------------

struct Found {
    int count;
    int code;
    const char* status;
};

static void PrintTo(const Found& found, std::ostream* out) { *out << found.count << ", code " << found.code; }

class SearchStatusTest : public DirectorySearchTest, public testing::WithParamInterface<Found> {};

INSTANTIATE_TEST_SUITE_P(
    ByCountAndCode, SearchStatusTest,
    testing::Values(Found{0, 0, "No Records Found"}, Found{0, 4, "No Records Found"},
                    Found{1, 0, "1 Record Found"}, Found{1, 4, "1 Record Found"},
                    Found{2, 0, "2 Records Found"}, Found{2, 4, "2 Records Found"},
                    Found{10, 0, "10 Records Found"}, Found{999, 0, "999 Records Found"},
                    Found{999, 4, "999 Records Found"}, Found{1000, 4, "1000+ Records Found"},
                    Found{5000, 4, "1000+ Records Found"}, Found{1000, 0, "Searching..."},
                    Found{1000, 3, "Searching..."}, Found{5000, 0, "Searching..."}),
    [](const auto& tested) {
        return std::to_string(tested.param.count) + "WithCode" + std::to_string(tested.param.code);
    });

TEST_P(SearchStatusTest, ReportsTheCount)
{
    host.directory.itemCount = GetParam().count;
    host.directory.responseCode = GetParam().code;
    host.directory.entries = {anneSmith};
    search("Smi");
    EXPECT_EQ(status(), GetParam().status);
    EXPECT_EQ(rowNames(), std::vector<std::string>{"Smith, Anne"});
    EXPECT_FALSE(host.widget("Fax PB List").frozen);
}

TEST_F(DirectorySearchTest, StatusTextsAreNotTranslated)
{
    for (const char* text :
         {"Searching...", "No Records Found", "1 Record Found", " Records Found", "Timeout Exceeded!"})
        host.translations[text] = "?";
    search("Smi");
    EXPECT_EQ(host.journal.count("translate"), 0);
    EXPECT_EQ(status(), "No Records Found");
}

TEST_F(DirectorySearchTest, EmptyCellsAreTheHostsOwnEmptyText)
{
    host.directory.entries = {person("", "", "")};
    host.directory.entries.front()["mail"] = "a@b";
    search("");
    EXPECT_EQ(host.journal.count(R"(addRow "Fax PB List" ", " empty empty empty "a@b" empty)"), 1);
}

TEST_F(DirectorySearchTest, NobodyFoundIsAnEmptyList)
{
    host.directory.entries = {anneSmith};
    search("Smi");
    host.directory.entries = {};
    search("Jon");
    EXPECT_EQ(status(), "No Records Found");
    EXPECT_TRUE(rows().empty());
}

// --- Picking a result ------------------------------------------------------------------------

class DirectoryPickTest : public DirectorySearchTest {
protected:
    DirectoryPickTest()
    {
        host.directory.entries = {anneSmith, person("Smithers", "John", "(0) 5-6"), person("Jones", "", "")};
        search("");
    }
};

TEST_F(DirectoryPickTest, CallsTheHostInThisOrder)
{
    EXPECT_EQ(
        add(0),
        lines({R"(get "Fax PB List" Value -> 0)", R"(find "Fax PB List")", R"(cell "Fax PB List" 0 of row 0)",
               R"(cell "Fax PB List" 1 of row 0)", R"(cell "Fax PB List" 3 of row 0)",
               R"(cell "Fax PB List" 4 of row 0)", R"(clearRows "Fax Cur Recipient List")",
               R"(addRow "Fax Cur Recipient List" "Smith, Anne" "555-1" empty "777" "anne@example" empty)"}));
}

TEST_F(DirectoryPickTest, ARecipientIsMadeOfTheRowOnBothKindsOfHost)
{
    for (bool points : {false, true}) {
        host.pointsAtCells = points;
        add(0);
        Tarvik40FaxRecipient* anne = pick(job().getRecipientListCount(CUR_RECIPIENT_LIST) - 1);
        EXPECT_EQ(anne->getRecipientType(), 1);
        EXPECT_EQ(field(anne, "RecipientName"), "Smith, Anne");
        EXPECT_EQ(field(anne, "RecipientFaxNumber"), "555-1");
        EXPECT_EQ(dialledNumber(anne), "5551");
        EXPECT_EQ(field(anne, "RecipientPhone"), "777");
        EXPECT_EQ(field(anne, "RecipientEmail"), "anne@example");
        EXPECT_EQ(anne->getRecipientData("RecipientOrganization"), nullptr);
        EXPECT_EQ(anne->getRecipientData("RecipientMailbox"), nullptr);
    }
    EXPECT_EQ(host.names("Fax Cur Recipient List"), (std::vector<std::string>{"Smith, Anne", "Smith, Anne"}));
}

TEST_F(DirectoryPickTest, EmptyCellsDoNotRepeatTheOneBefore)
{
    for (bool points : {false, true}) {
        host.pointsAtCells = points;
        add(1);
        Tarvik40FaxRecipient* john = pick(job().getRecipientListCount(CUR_RECIPIENT_LIST) - 1);
        EXPECT_EQ(field(john, "RecipientName"), "Smithers, John");
        EXPECT_EQ(john->getRecipientData("RecipientPhone"), nullptr);
        EXPECT_EQ(john->getRecipientData("RecipientEmail"), nullptr);
    }
}

TEST_F(DirectoryPickTest, ACellThatCannotBeReadIsEmptyAndDoesNotRepeatTheOneBefore)
{
    host.faults.failNth(fake::Op::readCell, 2);
    add(0);
    ASSERT_EQ(pickNames(), std::vector<std::string>{"Smith, Anne"});
    EXPECT_EQ(pick(0)->getRecipientData("RecipientFaxNumber"), nullptr);
    EXPECT_EQ(field(pick(0), "RecipientPhone"), "777");
}

TEST_F(DirectoryPickTest, ARowWhoseNameCannotBeReadAddsNobody)
{
    host.faults.failNth(fake::Op::readCell, 1);
    add(0);
    EXPECT_EQ(host.journal.effects(), "");
    EXPECT_EQ(job().getRecipientListCount(CUR_RECIPIENT_LIST), 0);
}

TEST_F(DirectoryPickTest, ARowThatIsNoLongerThereAddsNobody)
{
    for (bool points : {false, true}) {
        host.pointsAtCells = points;
        host.widget("Fax PB List").rows.clear();
        host.widget("Fax PB List").selection = {0}; // which the host still names
        T40AddFaxRecLDAP();
        EXPECT_EQ(job().getRecipientListCount(CUR_RECIPIENT_LIST), 0);
    }
}

TEST_F(DirectoryPickTest, AResultWithoutAFaxNumberIsPicked)
{
    add(2);
    EXPECT_EQ(pickNames(), std::vector<std::string>{"Jones, "});
    EXPECT_EQ(pick(0)->getRecipientData("RecipientFaxNumber"), nullptr);
}

TEST_F(DirectoryPickTest, TheSamePersonTwiceIsPickedTwiceWithoutAQuestion)
{
    add(0);
    add(0);
    EXPECT_EQ(pickNames(), (std::vector<std::string>{"Smith, Anne", "Smith, Anne"}));
    EXPECT_TRUE(host.openQuestions().empty());
}

TEST_F(DirectoryPickTest, WithoutASelectionNothingIsPicked)
{
    host.journal.clear();
    host.press("Add Button2");
    EXPECT_TRUE(pickNames().empty());
    EXPECT_EQ(host.journal.effects(), "");
}

TEST_F(DirectoryPickTest, ASelectionThatCannotBeReadPicksNothing)
{
    host.faults.failOn(fake::Op::readProperty, "Fax PB List");
    add(0);
    EXPECT_TRUE(pickNames().empty());
}

TEST_F(DirectoryPickTest, WithoutTheListNothingIsPicked)
{
    host.setSelection("Fax PB List", {0});
    host.missingWidgets.insert("Fax PB List");
    T40AddFaxRecLDAP();
    EXPECT_TRUE(pickNames().empty());
}

TEST_F(DirectoryPickTest, LongCellsAreTakenAsTheHostHandsThemOver)
{
    host.directory.entries = {person(longText(5000), "", longText(5000))};
    search("");
    add(0);
    EXPECT_EQ(field(pick(0), "RecipientName"), longText(4095));
    EXPECT_EQ(field(pick(0), "RecipientFaxNumber"), longText(4095));

    host.pointsAtCells = true;
    add(0);
    EXPECT_EQ(field(pick(1), "RecipientName"), longText(5000) + ", ");
}

TEST_F(DirectoryPickTest, JoinsTheJobOnOk)
{
    add(1);
    host.press("LanFaxRcptPB OK Button");
    EXPECT_EQ(jobNames(), std::vector<std::string>{"Smithers, John"});
}
