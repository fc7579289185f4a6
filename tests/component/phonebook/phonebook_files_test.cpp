// The phonebook file choosers, and opening a phonebook in the phonebook program.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "phonebook/phonebook_files.h"

#include "tests/support/phonebook_test.h"

#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <ostream>
#include <stdexcept>
#include <utility>

namespace {

/// What differs between the two phonebooks.
struct Chooser {
    const char* testName;
    const char* button;
    const char* name;
    const char* pattern;
    const char* nameField;
    std::string*& path;
    QuelmLegacyDatabase*& database;
    const std::string& file;
    const std::string& otherFile;

    std::string hidden() const { return "set " + fake::quoted(name) + " Visibility off"; }
    std::string shown() const { return "set " + fake::quoted(name) + " Visibility on"; }
};

void PrintTo(const Chooser& chooser, std::ostream* out) { *out << chooser.testName; }

const Chooser choosers[] = {
    {"Personal", "Select Personal PB Button", "PersonalPBSelectFileDialog", "/db/phonebook/user/*.xdb",
     "LanFax Personal PB Name", personalPBPath, personalPBDatabase, personalFile, otherPersonalFile},
    {"Shared", "Select Shared PB Button", "SharedPBSelectFileDialog", "/db/phonebook/*.xdb",
     "LanFax Shared PB Name", sharedPBPath, sharedPBDatabase, sharedFile, otherSharedFile},
};

} // namespace

class FileChooserTest : public PhonebookTest, public testing::WithParamInterface<Chooser> {
protected:
    const Chooser& chooser = GetParam();

    void invoke() { host.press(chooser.button); }

    /// The phonebook's file is chosen, exists and was listed, so its database is open.
    void listFile()
    {
        host.disk.phonebooks[chooser.file];
        const bool isPersonal = chooser.file == personalFile;
        if (isPersonal)
            choosePersonal(chooser.file);
        else
            chooseShared(chooser.file);
        host.fire("T40ShowAddRcptFromPBDialog");
        host.choose("Current PB Type", isPersonal ? 0 : 1);
        ASSERT_NE(chooser.database, nullptr);
        host.journal.clear();
    }

    /// OK on a path; the journal of the callback alone.
    std::string choose(const std::string& path)
    {
        invoke();
        host.journal.clear();
        QuelmLegacyDatabase* before = chooser.database;
        host.chooseFile(chooser.name, path);
        if (before != nullptr && chooser.database != before)
            closed.reset(before);
        return host.journal.all();
    }

    std::string read(const std::string& path)
    {
        return "get " + fake::quoted(chooser.name) + " Value -> " + fake::quoted(path);
    }
    std::string named(const std::string& path)
    {
        return "set " + fake::quoted(chooser.nameField) + " Value " + fake::quoted(path);
    }

    std::unique_ptr<QuelmLegacyDatabase> closed;
};

INSTANTIATE_TEST_SUITE_P(Both, FileChooserTest, testing::ValuesIn(choosers),
                         [](const auto& tested) { return std::string(tested.param.testName); });

TEST_P(FileChooserTest, IsMadeOnFirstUseInThisOrder)
{
    invoke();
    const std::string name = fake::quoted(chooser.name);
    EXPECT_EQ(host.journal.calls(),
              lines({R"(find "Lan Fax Window")", R"(translate "Load..." -> none)",
                     R"(createFileChooser "Load..." over "Lan Fax Window" flag)", "nameObject " + name,
                     "registerObject " + name, "connect " + name + R"( FileSelButtonCBFunc "ok_button")",
                     "connect " + name + R"( FileSelButtonCBFunc "cancel_button")",
                     "connect " + name + R"( signal "delete_event")",
                     "set " + name + " Value " + fake::quoted(host.installation + chooser.pattern),
                     chooser.shown()}));
    EXPECT_TRUE(host.visible(chooser.name));
}

TEST_P(FileChooserTest, IsMadeOnceAndOnlyShownAgainLater)
{
    invoke();
    host.cancelFileChooser(chooser.name);
    host.journal.clear();
    invoke();
    EXPECT_EQ(host.journal.all(), lines({R"(find "Lan Fax Window")", chooser.shown()}));
}

TEST_P(FileChooserTest, NothingIsDoneWithoutTheFaxDialog)
{
    host.missingWidgets.insert("Lan Fax Window");
    invoke();
    EXPECT_EQ(host.journal.all(), lines({R"(find "Lan Fax Window" -> none)"}));
}

TEST_P(FileChooserTest, ATranslatedTitleLosesItsMarkup)
{
    host.translations["Load..."] = "<b>Ouvrir &amp; lire</b>";
    invoke();
    EXPECT_EQ(host.title(chooser.name), "Ouvrir & lire");
}

TEST_P(FileChooserTest, TheEnglishTitleStandsAsItIs)
{
    host.copiesUntranslated = true;
    invoke();
    EXPECT_EQ(host.title(chooser.name), "Load...");
    EXPECT_EQ(host.journal.count("plainText"), 0);
}

TEST_P(FileChooserTest, TheFirstChosenFileIsTakenAndShown)
{
    chooser.path->clear();
    delete std::exchange(chooser.database, nullptr);
    EXPECT_EQ(choose(chooser.file), lines({read(chooser.file), named(chooser.file), chooser.hidden()}));
    EXPECT_EQ(*chooser.path, chooser.file);
    EXPECT_EQ(host.text(chooser.nameField), chooser.file);
    EXPECT_FALSE(host.visible(chooser.name));
}

TEST_P(FileChooserTest, AnotherFileClosesTheDatabaseWithoutDeletingIt)
{
    listFile();
    EXPECT_EQ(choose(chooser.otherFile),
              lines({read(chooser.otherFile), named(chooser.otherFile), "closeDatabase", chooser.hidden()}));
    EXPECT_EQ(chooser.database, nullptr);
    EXPECT_EQ(currentPBDatabase, closed.get());
    EXPECT_EQ(*chooser.path, chooser.otherFile);
}

TEST_P(FileChooserTest, TheFileThatIsInUseChangesNothing)
{
    listFile();
    QuelmLegacyDatabase* database = chooser.database;
    EXPECT_EQ(choose(chooser.file), lines({read(chooser.file), named(chooser.file), chooser.hidden()}));
    EXPECT_EQ(chooser.database, database);
    EXPECT_EQ(*chooser.path, chooser.file);
}

TEST_P(FileChooserTest, ADatabaseThatCannotBeClosedIsForgottenAllTheSame)
{
    listFile();
    host.faults.fail(fake::Op::closeDatabase);
    choose(chooser.otherFile);
    EXPECT_EQ(chooser.database, nullptr);
}

TEST_P(FileChooserTest, TheRowsStayUntilTheNextListing)
{
    host.disk.phonebooks[chooser.file] = {entry("Anne", "1")};
    host.disk.phonebooks[chooser.otherFile] = {entry("Bernard", "2")};
    listFile();
    choose(chooser.otherFile);
    EXPECT_EQ(rowNames(), std::vector<std::string>{"Anne"});
    host.fire("T40ShowAddRcptFromPBDialog");
    EXPECT_EQ(rowNames(), std::vector<std::string>{"Bernard"});
}

TEST_P(FileChooserTest, CancelOnlyHidesIt)
{
    invoke();
    host.widget(chooser.name).state.text = chooser.otherFile;
    host.journal.clear();
    host.cancelFileChooser(chooser.name);
    EXPECT_EQ(host.journal.all(), lines({chooser.hidden()}));
    EXPECT_NE(*chooser.path, chooser.otherFile);
}

TEST_P(FileChooserTest, ClosingItIsCancelling)
{
    invoke();
    host.journal.clear();
    host.closeFileChooser(chooser.name);
    EXPECT_EQ(host.journal.all(), lines({chooser.hidden()}));
}

TEST_P(FileChooserTest, OkFindsItByItsNameAndCancelByTheStoredObject)
{
    delete std::exchange(chooser.database, nullptr);
    invoke();
    host.missingWidgets.insert(chooser.name);
    host.chooseFile(chooser.name, chooser.file);
    EXPECT_TRUE(host.visible(chooser.name));
    host.cancelFileChooser(chooser.name);
    EXPECT_FALSE(host.visible(chooser.name));
}

TEST_P(FileChooserTest, AChosenPathThatCannotBeReadIsEmpty)
{
    chooser.path->assign("/somewhere.xdb");
    delete std::exchange(chooser.database, nullptr);
    host.faults.failOn(fake::Op::readProperty, chooser.name);
    choose(chooser.file);
    EXPECT_EQ(*chooser.path, "");
    EXPECT_EQ(host.text(chooser.nameField), "");
}

TEST_P(FileChooserTest, ALongPathIsTakenAsTheHostHandsItOver)
{
    choose("/" + longText(6000));
    EXPECT_EQ(*chooser.path, "/" + longText(4094));
    EXPECT_EQ(host.text(chooser.nameField), "/" + longText(4094));
}

class PersonalFileChooserTest : public PhonebookTest {};

TEST_F(PersonalFileChooserTest, AnyChoiceReplacesAnEmptyPath)
{
    personalPBPath->clear();
    choosePersonal("");
    EXPECT_EQ(personalPBDatabase, nullptr);
}

TEST_F(PersonalFileChooserTest, StandsBesideTheSharedOne)
{
    choosePersonal(otherPersonalFile);
    chooseShared(sharedFile);
    EXPECT_EQ(*personalPBPath, otherPersonalFile);
    EXPECT_EQ(*sharedPBPath, sharedFile);
    EXPECT_NE(personalPBFileDialog, sharedPBFileDialog);
}

TEST_F(PersonalFileChooserTest, CancellingBeforeItWasMadeDoesNothing)
{
    host.fire("PersonalSelectFileDialogCancel");
    host.fire("SharedSelectFileDialogCancel");
    EXPECT_EQ(host.journal.all(), "");
}

// --- The phonebook program -------------------------------------------------------------------

namespace {

/// An installation with a phonebook program that writes its arguments down, a line each, and fails.
class Installation {
public:
    Installation()
    {
        std::string pattern = std::filesystem::temp_directory_path() / "quelm-test-XXXXXX";
        if (mkdtemp(pattern.data()) == nullptr)
            throw std::runtime_error("no temporary folder");
        folder_ = pattern;
        std::ofstream(folder_ / "fennodial")
            << "#!/bin/sh\nprintf '%s\\n' \"$@\" > \"" << argumentFile().string() << "\"\nexit 3\n";
        std::filesystem::permissions(folder_ / "fennodial", std::filesystem::perms::owner_all);
    }
    ~Installation() { std::filesystem::remove_all(folder_); }
    Installation(const Installation&) = delete;
    Installation& operator=(const Installation&) = delete;

    std::string path() const { return folder_; }

    /// What the program was called with; "not called" when it was not.
    std::string arguments() const
    {
        std::ifstream file(argumentFile());
        return file ? std::string(std::istreambuf_iterator<char>(file), {}) : "not called";
    }

private:
    std::filesystem::path argumentFile() const { return folder_ / "arguments"; }

    std::filesystem::path folder_;
};

} // namespace

class PhonebookProgramTest : public PhonebookTest {
protected:
    PhonebookProgramTest() { host.installation = installation.path(); }

    Installation installation;
};

TEST_F(PhonebookProgramTest, IsGivenThePersonalPhonebookAndWaitedFor)
{
    host.press("Open Personal PB Button");
    EXPECT_EQ(installation.arguments(), "-FP\n" + personalFile + "\n");
}

TEST_F(PhonebookProgramTest, IsGivenTheSharedPhonebookAndWaitedFor)
{
    *sharedPBPath = sharedFile;
    host.press("Open Shared PB Button");
    EXPECT_EQ(installation.arguments(), "-FP\n" + sharedFile + "\n");
}

TEST_F(PhonebookProgramTest, IsGivenNoPathUntilASharedPhonebookIsChosen)
{
    host.press("Open Shared PB Button");
    EXPECT_EQ(installation.arguments(), "-FP\n");
}

TEST_F(PhonebookProgramTest, ThePathIsNotQuoted)
{
    *personalPBPath = "/a/two words.xdb";
    host.press("Open Personal PB Button");
    EXPECT_EQ(installation.arguments(), "-FP\n/a/two\nwords.xdb\n");
}

TEST_F(PhonebookProgramTest, ItsFailureIsIgnoredAndNothingIsListed)
{
    host.press("Open Personal PB Button");
    host.press("Open Shared PB Button");
    EXPECT_EQ(host.journal.all(), "");
}

TEST_F(PhonebookProgramTest, AMissingProgramIsIgnored)
{
    host.installation = installation.path() + "/elsewhere";
    host.press("Open Personal PB Button");
    EXPECT_EQ(installation.arguments(), "not called");
    EXPECT_EQ(host.journal.all(), "");
}
