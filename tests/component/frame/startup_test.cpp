// Start-up: the order of its calls to the host, and every way in which it fails.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "frame/startup.h"

#include "common/module_state.h"
#include "phonebook/phonebook_state.h"
#include "tests/support/component_test.h"

namespace {

constexpr const char* phonebookFile = "/opt/quelm/db/phonebook/user/ann.xdb";

const std::string dialogsBuilt = lines({
    "parseXMLBuffer",
    R"(set "LanFax Details Button" Sensitivity off)",
    R"(set "LanFax Save Group Button" Sensitivity off)",
    R"(set "LanFax Save Entry Button" Sensitivity off)",
    R"(set "LanFax Remove Button" Sensitivity off)",
});

const std::string widgetsFound = lines({
    R"(find "LanFax Recipient List")",
    R"(find "Fax PB List")",
    R"(find "Fax Cur Recipient List")",
    R"(find "LanFaxAddGroup Group List")",
    R"(find "Search Status")",
});

const std::string jobPublished = lines({R"(registerResource "FaxSession")"});

const std::string directoriesThere = lines({
    R"(exists "/opt/quelm/db/phonebook" -> yes)",
    R"(exists "/opt/quelm/db/phonebook/user" -> yes)",
});

const std::string pathShown = lines({
    R"(set "LanFax Personal PB Name" Value "/opt/quelm/db/phonebook/user/ann.xdb")",
});

const std::string phonebookOpened = lines({
    "new database",
    R"(openDatabase "/opt/quelm/db/phonebook/user/ann.xdb" "r+")",
});

} // namespace

class StartupTest : public ComponentTest {
protected:
    /// A second start in the same process, with a journal of its own.
    int startAgain()
    {
        earlierJob.reset(std::exchange(pFaxSession, nullptr));
        host.journal.clear();
        return InitializeFaxComponent();
    }

    std::unique_ptr<Tarvik40Fax> earlierJob;
};

TEST_F(StartupTest, NothingIsSetBeforeIt)
{
    EXPECT_EQ(host.journal.all(), "");
    EXPECT_EQ(pFaxSession, nullptr);
    for (GTKObject* widget :
         {recipientListWidget, pbListWidget, curRecipientListWidget, groupListWidget, searchStatusWidget})
        EXPECT_EQ(widget, nullptr);
    EXPECT_EQ(personalPBPath, nullptr);
    EXPECT_EQ(sharedPBPath, nullptr);
    EXPECT_EQ(personalPBDatabase, nullptr);
}

TEST_F(StartupTest, CallsTheHostInThisOrder)
{
    EXPECT_NE(InitializeFaxComponent(), 0);
    EXPECT_EQ(host.journal.calls(),
              dialogsBuilt + widgetsFound + jobPublished + directoriesThere + pathShown + phonebookOpened);
}

TEST_F(StartupTest, KeepsTheListWidgets)
{
    InitializeFaxComponent();
    EXPECT_EQ(recipientListWidget, host.handleOf("LanFax Recipient List"));
    EXPECT_EQ(pbListWidget, host.handleOf("Fax PB List"));
    EXPECT_EQ(curRecipientListWidget, host.handleOf("Fax Cur Recipient List"));
    EXPECT_EQ(groupListWidget, host.handleOf("LanFaxAddGroup Group List"));
    EXPECT_EQ(searchStatusWidget, host.handleOf("Search Status"));
}

TEST_F(StartupTest, PublishesTheFaxJob)
{
    InitializeFaxComponent();
    ASSERT_NE(pFaxSession, nullptr);
    EXPECT_EQ(host.resources["FaxSession"], pFaxSession);
    EXPECT_EQ(pFaxSession->getRecipientListCount(RECIPIENT_LIST), 0);
}

TEST_F(StartupTest, ThePersonalPhonebookIsNamedAfterTheUser)
{
    host.installation = "/usr/local/driver";
    host.user = "j\xC3\xBCrgen";
    host.disk.directories = {"/usr/local/driver", "/usr/local/driver/db"};
    EXPECT_NE(InitializeFaxComponent(), 0);
    EXPECT_EQ(*personalPBPath, "/usr/local/driver/db/phonebook/user/j\xC3\xBCrgen.xdb");
    EXPECT_EQ(host.text("LanFax Personal PB Name"), *personalPBPath);
    EXPECT_EQ(*sharedPBPath, "");
}

TEST_F(StartupTest, CreatesNoDirectoryThatIsThere)
{
    EXPECT_NE(InitializeFaxComponent(), 0);
    EXPECT_EQ(host.journal.count("createDirectory"), 0);
    EXPECT_EQ(*personalPBPath, phonebookFile);
}

TEST_F(StartupTest, CreatesBothDirectoriesWithTheDecimalNumber777)
{
    host.disk.directories = {"/opt/quelm", "/opt/quelm/db"};
    host.disk.phonebooks.clear();
    EXPECT_NE(InitializeFaxComponent(), 0);
    EXPECT_EQ(host.journal.calls(),
              dialogsBuilt + widgetsFound + jobPublished +
                  lines({
                      R"(exists "/opt/quelm/db/phonebook" -> no)",
                      R"(createDirectory "/opt/quelm/db/phonebook" 777)",
                      R"(exists "/opt/quelm/db/phonebook/user" -> no)",
                      R"(createDirectory "/opt/quelm/db/phonebook/user" 777)",
                  }) +
                  pathShown + phonebookOpened +
                  lines({R"(createDatabase "/opt/quelm/db/phonebook/user/ann.xdb" 2)"}));
}

TEST_F(StartupTest, CreatesOnlyTheDirectoryThatIsMissing)
{
    host.disk.directories.erase("/opt/quelm/db/phonebook/user");
    EXPECT_NE(InitializeFaxComponent(), 0);
    EXPECT_EQ(host.journal.count("createDirectory"), 1);
    EXPECT_EQ(host.journal.count(R"(createDirectory "/opt/quelm/db/phonebook/user" 777)"), 1);
}

TEST_F(StartupTest, CreatesAMissingPhonebook)
{
    host.disk.phonebooks.clear();
    EXPECT_NE(InitializeFaxComponent(), 0);
    EXPECT_EQ(host.journal.calls(),
              dialogsBuilt + widgetsFound + jobPublished + directoriesThere + pathShown + phonebookOpened +
                  lines({R"(createDatabase "/opt/quelm/db/phonebook/user/ann.xdb" 2)"}));
    EXPECT_NE(personalPBDatabase, nullptr);
    EXPECT_TRUE(host.disk.phonebooks.contains(phonebookFile));
}

TEST_F(StartupTest, FailsAtOnceWhenTheDefinitionDoesNotParse)
{
    host.faults.fail(fake::Op::parse);
    EXPECT_EQ(InitializeFaxComponent(), 0);
    EXPECT_EQ(host.journal.calls(), lines({"parseXMLBuffer"}));
    EXPECT_EQ(pFaxSession, nullptr);
    EXPECT_EQ(personalPBPath, nullptr);
}

class MissingWidgetTest : public StartupTest, public testing::WithParamInterface<int> {};

TEST_P(MissingWidgetTest, EndsStartUpWithoutAFaxJobAndKeepsTheHandlesFoundBefore)
{
    const char* const names[] = {"LanFax Recipient List", "Fax PB List", "Fax Cur Recipient List",
                                 "LanFaxAddGroup Group List", "Search Status"};
    GTKObject** const handles[] = {&recipientListWidget, &pbListWidget, &curRecipientListWidget,
                                   &groupListWidget, &searchStatusWidget};
    host.missingWidgets.insert(names[GetParam()]);

    EXPECT_EQ(InitializeFaxComponent(), 0);

    std::string lookups;
    for (int i = 0; i < GetParam(); ++i) {
        lookups += "find " + fake::quoted(names[i]) + "\n";
        EXPECT_EQ(*handles[i], host.handleOf(names[i])) << names[i];
    }
    lookups += "find " + fake::quoted(names[GetParam()]) + " -> none\n";
    for (int i = GetParam(); i < 5; ++i)
        EXPECT_EQ(*handles[i], nullptr) << names[i];
    EXPECT_EQ(host.journal.calls(), dialogsBuilt + lookups);
    EXPECT_EQ(pFaxSession, nullptr);
    EXPECT_TRUE(host.resources.empty());
}

TEST_P(MissingWidgetTest, LeavesTheHandleThatAnEarlierStartStored)
{
    const char* const names[] = {"LanFax Recipient List", "Fax PB List", "Fax Cur Recipient List",
                                 "LanFaxAddGroup Group List", "Search Status"};
    GTKObject** const handles[] = {&recipientListWidget, &pbListWidget, &curRecipientListWidget,
                                   &groupListWidget, &searchStatusWidget};
    ASSERT_NE(InitializeFaxComponent(), 0);
    Tarvik40Fax* const job = pFaxSession;
    std::vector<GTKObject*> earlier;
    for (GTKObject** handle : handles)
        earlier.push_back(*handle);

    host.missingWidgets.insert(names[GetParam()]);
    EXPECT_EQ(InitializeFaxComponent(), 0);

    for (int i = 0; i < 5; ++i)
        EXPECT_EQ(*handles[i],
                  i < GetParam() ? host.handleOf(names[i]) : earlier[static_cast<std::size_t>(i)])
            << names[i];
    EXPECT_EQ(pFaxSession, job);
}

INSTANTIATE_TEST_SUITE_P(EveryListWidget, MissingWidgetTest, testing::Range(0, 5));

TEST_F(StartupTest, ANameThatTheHostDoesNotKnowStopsNothingElse)
{
    host.faults.fail(fake::Op::setProperty);
    EXPECT_NE(InitializeFaxComponent(), 0);
}

TEST_F(StartupTest, GoesOnWhenTheJobCannotBeRegistered)
{
    host.faults.fail(fake::Op::registerResource);
    EXPECT_NE(InitializeFaxComponent(), 0);
    EXPECT_NE(pFaxSession, nullptr);
}

class FailingDirectoryTest : public StartupTest, public testing::WithParamInterface<const char*> {};

TEST_P(FailingDirectoryTest, EndsStartUpAndKeepsTheProvisionalPathSoThatALaterStartDoesNotTryAgain)
{
    host.disk.directories = {"/opt/quelm", "/opt/quelm/db"};
    host.faults.failOn(fake::Op::createDirectory, GetParam());

    EXPECT_EQ(InitializeFaxComponent(), 0);

    ASSERT_NE(personalPBPath, nullptr);
    EXPECT_EQ(*personalPBPath, "/opt/quelm/db/phonebook/user/");
    EXPECT_NE(pFaxSession, nullptr);
    EXPECT_EQ(personalPBDatabase, nullptr);
    EXPECT_EQ(host.journal.count("new database"), 0);
    EXPECT_EQ(host.journal.count(R"(set "LanFax Personal PB Name")"), 0);

    host.faults.clear();
    EXPECT_EQ(startAgain(), 0);
    EXPECT_EQ(host.journal.calls(),
              dialogsBuilt + widgetsFound + jobPublished +
                  lines({"new database", R"(openDatabase "/opt/quelm/db/phonebook/user/" "r+")",
                         R"(createDatabase "/opt/quelm/db/phonebook/user/" 2)", "delete database"}));
}

INSTANTIATE_TEST_SUITE_P(Either, FailingDirectoryTest,
                         testing::Values("/opt/quelm/db/phonebook", "/opt/quelm/db/phonebook/user"));

TEST_F(StartupTest, FailsWhenThePhonebookCanNeitherBeOpenedNorCreated)
{
    host.faults.fail(fake::Op::openDatabase);
    host.faults.fail(fake::Op::createDatabase);
    EXPECT_EQ(InitializeFaxComponent(), 0);
    EXPECT_EQ(host.journal.calls(),
              dialogsBuilt + widgetsFound + jobPublished + directoriesThere + pathShown + phonebookOpened +
                  lines({R"(createDatabase "/opt/quelm/db/phonebook/user/ann.xdb" 2)", "delete database"}));
    EXPECT_EQ(personalPBDatabase, nullptr);
    EXPECT_NE(pFaxSession, nullptr);
    EXPECT_EQ(*personalPBPath, phonebookFile);
}

TEST_F(StartupTest, ALaterStartOpensThePhonebookThatCouldNotBeOpened)
{
    host.faults.fail(fake::Op::openDatabase);
    host.faults.fail(fake::Op::createDatabase);
    ASSERT_EQ(InitializeFaxComponent(), 0);
    host.faults.clear();
    EXPECT_NE(startAgain(), 0);
    EXPECT_EQ(host.journal.calls(), dialogsBuilt + widgetsFound + jobPublished + phonebookOpened);
}

TEST_F(StartupTest, ASecondStartMakesANewJobAndLeavesThePhonebookAlone)
{
    ASSERT_NE(InitializeFaxComponent(), 0);
    QuelmLegacyDatabase* const database = personalPBDatabase;
    const std::string* const path = personalPBPath;
    Tarvik40Fax* const first = pFaxSession;

    EXPECT_NE(startAgain(), 0);

    EXPECT_NE(pFaxSession, first);
    EXPECT_EQ(host.resources["FaxSession"], pFaxSession);
    EXPECT_EQ(personalPBDatabase, database);
    EXPECT_EQ(personalPBPath, path);
    EXPECT_EQ(host.journal.calls(), dialogsBuilt + widgetsFound + jobPublished);
}

TEST_F(StartupTest, ShowsNoMessageWhateverFails)
{
    for (fake::Op op : {fake::Op::parse, fake::Op::createDirectory, fake::Op::createDatabase}) {
        host.reset();
        host.disk.directories = {"/opt/quelm", "/opt/quelm/db"};
        host.disk.phonebooks.clear();
        host.faults.fail(op);
        EXPECT_EQ(InitializeFaxComponent(), 0);
        EXPECT_TRUE(host.openQuestions().empty());
        EXPECT_EQ(host.journal.count("translate"), 0);
        unloadComponent();
    }
}
