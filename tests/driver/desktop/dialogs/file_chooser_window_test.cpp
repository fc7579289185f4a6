// What a file chooser starts with and gives back.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/desktop/dialogs/file_chooser_window.h"

#include "tests/driver/desktop/desktop_fixture.h"

#include <gtkmm/filechooserdialog.h>

#include <cstdlib>
#include <utility>

using quelm::fileStartOf;
using quelm::withEnding;

TEST(FileStart, APatternIsAFolderAndAFilter)
{
    const quelm::FileStart start = fileStartOf("/opt/quelm/db/phonebook/user/*.xdb");
    EXPECT_EQ(start.folder, "/opt/quelm/db/phonebook/user");
    EXPECT_EQ(start.pattern, "*.xdb");
    EXPECT_EQ(start.file, "");
}

TEST(FileStart, APathIsAFileInAFolder)
{
    const quelm::FileStart start = fileStartOf("/opt/quelm/db/phonebook/user/ann.xdb");
    EXPECT_EQ(start.folder, "/opt/quelm/db/phonebook/user");
    EXPECT_EQ(start.pattern, "");
    EXPECT_EQ(start.file, "/opt/quelm/db/phonebook/user/ann.xdb");
}

TEST(FileStart, OfNothingIsNothing)
{
    EXPECT_EQ(fileStartOf("").folder, "");
    EXPECT_EQ(fileStartOf("/opt/").file, "");
    EXPECT_EQ(fileStartOf("*.xdb").pattern, "*.xdb");
}

TEST(FileEnding, IsAddedToANameWithoutOne)
{
    EXPECT_EQ(withEnding("/db/team", "*.xdb"), "/db/team.xdb");
    EXPECT_EQ(withEnding("/d.b/team", "*.xdb"), "/d.b/team.xdb");
    EXPECT_EQ(withEnding("/db/team.old", "*.xdb"), "/db/team.old");
    EXPECT_EQ(withEnding("/db/team", "*"), "/db/team");
    EXPECT_EQ(withEnding("/db/team", "*.x?b"), "/db/team");
    EXPECT_EQ(withEnding("/db/team", ""), "/db/team");
    EXPECT_EQ(withEnding("", "*.xdb"), "");
}

TEST(FileEnding, IsNotAddedToTheNameOfAFileThatExists)
{
    const TemporaryFolder folder;
    EXPECT_EQ(withEnding(folder / "team", "*.xdb"), folder / "team.xdb");
    writeFile(folder / "team", "");
    EXPECT_EQ(withEnding(folder / "team", "*.xdb"), folder / "team");
    writeFile(folder / "J\xF6rg", "");
    EXPECT_EQ(withEnding(folder / "J\xF6rg", "*.xdb"), folder / "J\xF6rg");
}

TEST(FirstFolder, IsThatOfTheSharedPhonebooksWhenThereIsNoOtherOne)
{
    const TemporaryFolder folder;
    const auto first = [&](const std::string& pattern) {
        return quelm::firstFolder(fileStartOf(folder / pattern));
    };
    EXPECT_EQ(first("*.xdb"), folder.path());
    std::filesystem::create_directory(folder / "machine");
    std::filesystem::create_directory_symlink(folder / "machine", folder / "shared");
    EXPECT_EQ(first("*.xdb"), folder / "shared");
    EXPECT_EQ(first("*"), folder / "shared") << "there are folders alone";
    EXPECT_EQ(first("*.x?b"), folder.path());
    writeFile(folder / "letter.ps", "");
    std::filesystem::create_directory(folder / "a.xdb");
    EXPECT_EQ(first("*.xdb"), folder / "shared");
    writeFile(folder / "team.xdb", "");
    EXPECT_EQ(first("*.xdb"), folder.path());
    EXPECT_EQ(quelm::firstFolder(fileStartOf(folder / "none/*.xdb")), folder / "none");
}

namespace {

class FileChooserTest : public DesktopTest {
protected:
    void openChooser(const std::string& button, const std::string& chooser)
    {
        openFaxDialog();
        dialogs->act([this] { driver().choose("Lan Fax TabSet", 2); });
        click(button);
        ASSERT_TRUE(loopUntil([&] {
            const quelm::Widget* widget = driver().widgets().find(chooser);
            return widget != nullptr && isOpen(chooser);
        }));
    }

    Gtk::FileChooserDialog& chooser(const std::string& name) { return screen<Gtk::FileChooserDialog>(name); }

    /// Marks a file that exists in an open chooser.
    void mark(const std::string& name, const std::string& file)
    {
        chooser(name).set_filename(file);
        ASSERT_TRUE(loopUntil([&] { return chooser(name).get_filename() == file; }));
    }

    /// A phonebook without the usual ending, as an existing one may be called.
    std::string phonebookWithoutEnding()
    {
        std::filesystem::copy_file(options.home + "/db/phonebook/user/ann.xdb", folder / "teambook");
        return folder / "teambook";
    }
};

} // namespace

TEST_F(FileChooserTest, StartsInTheFolderAndWithTheFilterOfItsPattern)
{
    openChooser("Select Personal PB Button", "PersonalPBSelectFileDialog");
    Gtk::FileChooserDialog& dialog = chooser("PersonalPBSelectFileDialog");
    EXPECT_EQ(dialog.get_title(), "Load...");
    EXPECT_TRUE(
        loopUntil([&] { return dialog.get_current_folder() == options.home + "/db/phonebook/user"; }));
    EXPECT_EQ(dialog.get_filter()->get_name(), "Phonebooks (*.xdb)");
    EXPECT_EQ(dialog.get_transient_for(), &screen<Gtk::Window>("Lan Fax Window"));
}

TEST_F(FileChooserTest, TheSharedOneStartsWithTheMachinesPhonebooks)
{
    std::filesystem::create_directory(folder / "machine");
    std::filesystem::create_directory_symlink(folder / "machine", options.home + "/db/phonebook/shared");
    openChooser("Select Shared PB Button", "SharedPBSelectFileDialog");
    Gtk::FileChooserDialog& dialog = chooser("SharedPBSelectFileDialog");
    EXPECT_TRUE(loopUntil([&] {
        return dialog.get_current_folder() == options.home + "/db/phonebook/shared";
    })) << dialog.get_current_folder();
}

TEST_F(FileChooserTest, APersonalPhonebookThatIsNotTheUsersToChangeIsRefused)
{
    openChooser("Select Personal PB Button", "PersonalPBSelectFileDialog");
    std::filesystem::create_symlink(options.home + "/db/phonebook/user/ann.xdb", folder / "link.xdb");
    Gtk::FileChooserDialog& dialog = chooser("PersonalPBSelectFileDialog");
    dialog.set_current_folder(folder.path());
    dialog.set_current_name("link.xdb");
    ASSERT_TRUE(loopUntil([&] { return dialog.get_filename() == folder / "link.xdb"; }));
    dialog.response(Gtk::RESPONSE_ACCEPT);
    ASSERT_TRUE(loopUntil([&] { return !message("PersonalPBSelectFileDialog").empty(); }));
    EXPECT_EQ(
        message("PersonalPBSelectFileDialog"),
        "The phonebook \"" + folder / "link.xdb" +
            "\" cannot be opened: it is a link; put the file itself in its place or choose another file");
    EXPECT_TRUE(isOpen("PersonalPBSelectFileDialog"));
}

TEST_F(FileChooserTest, StandsOverTheMiddleOfTheDialog)
{
    const auto frameOf = [](Gtk::Window& window) {
        Gdk::Rectangle frame;
        window.get_window()->get_frame_extents(frame);
        return frame;
    };
    openChooser("Select Personal PB Button", "PersonalPBSelectFileDialog");
    const auto below = frameOf(screen<Gtk::Window>("Lan Fax Window"));
    Gtk::FileChooserDialog& dialog = chooser("PersonalPBSelectFileDialog");
    // Where the middle of the larger one then is, for which no window leaves the screen.
    const auto isThere = [&] {
        const auto frame = frameOf(dialog);
        const int x = std::max(below.get_x() + (below.get_width() - frame.get_width()) / 2, 0);
        const int y = std::max(below.get_y() + (below.get_height() - frame.get_height()) / 2, 0);
        return std::abs(frame.get_x() - x) <= 20 && std::abs(frame.get_y() - y) <= 20;
    };
    // On its way there it may stand elsewhere.
    const auto stays = [&] {
        if (!isThere())
            return false;
        loopUntilIdle();
        return isThere();
    };
    EXPECT_TRUE(loopUntil(stays)) << frameOf(dialog).get_x() << "," << frameOf(dialog).get_y() << " over "
                                  << below.get_x() << "," << below.get_y();
}

TEST_F(FileChooserTest, TheChosenFileReachesTheComponent)
{
    openChooser("Select Shared PB Button", "SharedPBSelectFileDialog");
    const std::string file = options.home + "/db/phonebook/user/ann.xdb";
    Gtk::FileChooserDialog& dialog = chooser("SharedPBSelectFileDialog");
    dialog.set_filename(file);
    ASSERT_TRUE(loopUntil([&] { return dialog.get_filename() == file; }));
    dialog.response(Gtk::RESPONSE_ACCEPT);
    ASSERT_TRUE(closes("SharedPBSelectFileDialog"));
    EXPECT_EQ(tree("LanFax Shared PB Name").text(), file);
    EXPECT_EQ(screen<Gtk::Entry>("LanFax Shared PB Name").get_text(), file);
}

TEST_F(FileChooserTest, APersonalPhonebookMayBeNew)
{
    openChooser("Select Personal PB Button", "PersonalPBSelectFileDialog");
    Gtk::FileChooserDialog& dialog = chooser("PersonalPBSelectFileDialog");
    EXPECT_EQ(dialog.get_action(), Gtk::FILE_CHOOSER_ACTION_SAVE);
    dialog.set_current_folder(folder.path());
    dialog.set_current_name("team");
    ASSERT_TRUE(loopUntil([&] { return dialog.get_filename() == folder / "team"; }));
    dialog.response(Gtk::RESPONSE_ACCEPT);
    ASSERT_TRUE(closes("PersonalPBSelectFileDialog"));
    EXPECT_EQ(tree("LanFax Personal PB Name").text(), folder / "team.xdb");
}

TEST_F(FileChooserTest, AnExistingFileKeepsItsNameWithoutAnEnding)
{
    const std::string file = phonebookWithoutEnding();
    for (const std::string kind : {"Personal", "Shared"}) {
        openChooser("Select " + kind + " PB Button", kind + "PBSelectFileDialog");
        mark(kind + "PBSelectFileDialog", file);
        chooser(kind + "PBSelectFileDialog").response(Gtk::RESPONSE_ACCEPT);
        ASSERT_TRUE(closes(kind + "PBSelectFileDialog"));
        EXPECT_EQ(tree("LanFax " + kind + " PB Name").text(), file);
    }
}

TEST_F(FileChooserTest, ASharedPhonebookThatDoesNotExistIsRefused)
{
    const std::string file = phonebookWithoutEnding();
    openChooser("Select Shared PB Button", "SharedPBSelectFileDialog");
    mark("SharedPBSelectFileDialog", file);
    std::filesystem::remove(file);
    chooser("SharedPBSelectFileDialog").response(Gtk::RESPONSE_ACCEPT);
    ASSERT_TRUE(loopUntil([&] { return !message("SharedPBSelectFileDialog").empty(); }));
    EXPECT_EQ(message("SharedPBSelectFileDialog"),
              "The phonebook \"" + file + "\" cannot be opened: there is no such file; check the name");
    EXPECT_TRUE(isOpen("SharedPBSelectFileDialog"));
    EXPECT_EQ(tree("LanFax Shared PB Name").text(), "");
    mark("SharedPBSelectFileDialog", phonebookWithoutEnding());
    chooser("SharedPBSelectFileDialog").response(Gtk::RESPONSE_ACCEPT);
    ASSERT_TRUE(closes("SharedPBSelectFileDialog"));
    EXPECT_EQ(message("SharedPBSelectFileDialog"), "");
    EXPECT_EQ(tree("LanFax Shared PB Name").text(), file);
}

TEST_F(FileChooserTest, ASharedFileThatIsNoPhonebookIsRefused)
{
    const std::string file = writeFile(folder / "letter.xdb", "Dear Ann,");
    openChooser("Select Shared PB Button", "SharedPBSelectFileDialog");
    mark("SharedPBSelectFileDialog", file);
    chooser("SharedPBSelectFileDialog").response(Gtk::RESPONSE_ACCEPT);
    ASSERT_TRUE(loopUntil([&] { return !message("SharedPBSelectFileDialog").empty(); }));
    EXPECT_NE(message("SharedPBSelectFileDialog").find("the file is no phonebook"), std::string::npos);
    EXPECT_TRUE(isOpen("SharedPBSelectFileDialog"));
    EXPECT_EQ(tree("LanFax Shared PB Name").text(), "");
}

TEST_F(FileChooserTest, AReasonThatIsNoUtf8IsShown)
{
    openChooser("Select Shared PB Button", "SharedPBSelectFileDialog");
    dialogs->act([] { throw quelm::Error("no J\xF6rg"); });
    loopUntilIdle();
    EXPECT_EQ(message("SharedPBSelectFileDialog"), "No J\xEF\xBF\xBDrg");
}

TEST_F(FileChooserTest, CancellingOrClosingItChangesNothing)
{
    const std::string before = tree("LanFax Personal PB Name").text();
    openChooser("Select Personal PB Button", "PersonalPBSelectFileDialog");
    chooser("PersonalPBSelectFileDialog").response(Gtk::RESPONSE_CANCEL);
    ASSERT_TRUE(closes("PersonalPBSelectFileDialog"));
    click("Select Personal PB Button");
    ASSERT_TRUE(loopUntil([&] { return isOpen("PersonalPBSelectFileDialog"); }));
    chooser("PersonalPBSelectFileDialog").close();
    ASSERT_TRUE(closes("PersonalPBSelectFileDialog"));
    EXPECT_EQ(tree("LanFax Personal PB Name").text(), before);
    EXPECT_TRUE(isOpen("Lan Fax Window"));
}

TEST_F(FileChooserTest, ShowsWhyAChoiceIsRefused)
{
    openChooser("Select Personal PB Button", "PersonalPBSelectFileDialog");
    dialogs->act([this] { driver().press("PersonalPBSelectFileDialog"); });
    loopUntilIdle();
    EXPECT_TRUE(isOpen("PersonalPBSelectFileDialog"));
    EXPECT_NE(message("PersonalPBSelectFileDialog").find("No file is chosen"), std::string::npos);
}
