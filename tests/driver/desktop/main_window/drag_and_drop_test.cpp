// Tests of documents that are dropped on the main window, by a pointer that drags them there.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "tests/driver/desktop/main_window/main_window_fixture.h"

#include <gdkmm/dragcontext.h>
#include <glibmm/convert.h>
#include <glibmm/spawn.h>
#include <gmock/gmock.h>
#include <gtkmm/selectiondata.h>
#include <gtkmm/windowgroup.h>

#include <string>
#include <vector>

namespace quelm {
namespace {

/// A point of the screen.
struct Point {
    int x = 0;
    int y = 0;
};

Point middleOf(Gtk::Window& window)
{
    Point corner;
    window.get_window()->get_origin(corner.x, corner.y);
    return {corner.x + window.get_allocated_width() / 2, corner.y + window.get_allocated_height() / 2};
}

/// Lets the pointer of the screen act, and waits until it has.
void movePointer(const std::vector<std::string>& actions)
{
    std::vector<std::string> command{"xdotool"};
    command.insert(command.end(), actions.begin(), actions.end());
    int status = -1;
    ASSERT_NO_THROW(Glib::spawn_sync("", command, Glib::SPAWN_SEARCH_PATH, {}, nullptr, nullptr, &status));
    ASSERT_EQ(status, 0);
}

std::vector<std::string> to(Point point)
{
    return {"mousemove", std::to_string(point.x), std::to_string(point.y)};
}

/// A window, as of a file manager, whose content is dragged.
class Source : public Gtk::Window {
public:
    explicit Source(const std::vector<std::string>& uris) : uris_(uris.begin(), uris.end())
    {
        // A question of the main window grabs the pointer in its own group.
        group_->add_window(*this);
        set_default_size(120, 80);
        drag_source_set({Gtk::TargetEntry("text/uri-list")}, Gdk::BUTTON1_MASK,
                        Gdk::ACTION_COPY | Gdk::ACTION_MOVE);
        present();
    }

    bool dragging = false;
    bool moved = false; ///< the dragged files are to be deleted at their old place

protected:
    void on_drag_begin(const Glib::RefPtr<Gdk::DragContext>&) override { dragging = true; }
    void on_drag_data_get(const Glib::RefPtr<Gdk::DragContext>&, Gtk::SelectionData& data, guint,
                          guint) override
    {
        data.set_uris(uris_);
    }
    void on_drag_data_delete(const Glib::RefPtr<Gdk::DragContext>&) override { moved = true; }
    void on_drag_end(const Glib::RefPtr<Gdk::DragContext>&) override { dragging = false; }

private:
    std::vector<Glib::ustring> uris_;
    Glib::RefPtr<Gtk::WindowGroup> group_ = Gtk::WindowGroup::create();
};

class DragAndDropTest : public MainWindowTest {
protected:
    /// Drags URIs from another window, and drops them on the main window.
    void drop(const std::vector<std::string>& uris)
    {
        Source source(uris);
        ASSERT_TRUE(loopUntil([&] { return source.get_mapped(); }));
        // Apart from each other, whatever the window manager thought.
        window->move(0, 0);
        source.move(1240, 880);
        ASSERT_TRUE(loopUntil([&] {
            return middleOf(source).x > window->get_allocated_width() && middleOf(source).y > 500 &&
                   middleOf(*window).x < 1000;
        }));
        const Point start = middleOf(source);
        movePointer(to(start));
        movePointer({"mousedown", "1"});
        // Once the pointer is far enough from where the button was pressed, the drag begins.
        ASSERT_TRUE(loopUntil([&] {
            movePointer({"mousemove_relative", "--", "-3", "0"});
            loopUntilIdle();
            return source.dragging;
        }));
        bool over = false;
        const auto motion = window->signal_drag_motion().connect(
            [&over](const Glib::RefPtr<Gdk::DragContext>&, int, int, guint) {
                over = true;
                return false;
            },
            false);
        movePointer(to(middleOf(*window)));
        ASSERT_TRUE(loopUntil([&] { return over; }));
        movePointer({"mouseup", "1"});
        EXPECT_TRUE(loopUntil([&] { return !source.dragging; }));
        EXPECT_FALSE(source.moved);
    }

    static std::string uriOf(const std::string& path) { return Glib::filename_to_uri(path); }

    static std::string waitForMessage()
    {
        EXPECT_TRUE(loopUntil([] { return shownText("Main Message") != ""; }));
        return shownText("Main Message");
    }

    static bool shows(const std::string& name)
    {
        return loopUntil([&] { return shownText("Main Document Pages") != ""; }) &&
               shownText("Main Document Name") == name;
    }
};

TEST_F(DragAndDropTest, ADroppedDocumentIsOpened)
{
    const std::string name = "Brief an Zoë – 2. Fassung.ps";
    drop({uriOf(writeFile(folder / name, contentOf(sampleLetter())))});
    EXPECT_TRUE(shows(name));
    EXPECT_EQ(shownText("Main Message"), "");
    EXPECT_TRUE(isUsable("Main Send Button"));
}

TEST_F(DragAndDropTest, OfTwoDocumentsTheFirstIsOpenedAndThatIsTold)
{
    drop({uriOf(sampleLetter()), uriOf(writeFile(folder / "second.ps", contentOf(sampleLetter())))});
    EXPECT_TRUE(shows("letter.ps"));
    EXPECT_EQ(shownText("Main Message"), "Only the first of the documents was opened.");
}

TEST_F(DragAndDropTest, AnAddressOfTheWebIsNoFileHere)
{
    openDocument();
    drop({"https://fax.example/letter.ps"});
    EXPECT_EQ(waitForMessage(), "What was dropped here is no file of this computer.");
    EXPECT_EQ(shownText("Main Document Name"), "letter.ps");
    EXPECT_TRUE(isUsable("Main Send Button"));
}

TEST_F(DragAndDropTest, AFileOfAnotherComputerIsNoneOfThisOne)
{
    drop({"file://fax.example" + sampleLetter()});
    EXPECT_EQ(waitForMessage(), "What was dropped here is no file of this computer.");
    EXPECT_EQ(shownText("Main Document Name"), "No document");
}

TEST_F(DragAndDropTest, AFileMayNameThisComputer)
{
    drop({"file://" + std::string(g_get_host_name()) + sampleLetter()});
    EXPECT_TRUE(shows("letter.ps"));
}

TEST_F(DragAndDropTest, AFolderIsNoDocument)
{
    std::filesystem::create_directory(folder / "letters");
    drop({uriOf(folder / "letters")});
    EXPECT_EQ(waitForMessage(),
              (folder / "letters") + ": is a folder; name a PostScript or PDF document in it");
    EXPECT_EQ(shownText("Main Document Name"), "No document");
}

TEST_F(DragAndDropTest, WhileAQuestionStandsNothingElseIsOpened)
{
    openDocument();
    fillFax({"Ann"});
    enterText("Main Destination File", writeFile(folder / "fax.job", "precious"));
    press("Main Send Button");
    GtkWidget* question = nullptr;
    ASSERT_TRUE(loopUntil([&] { return (question = onScreen("Main Replace Question")) != nullptr; }));
    // Away from the window, and from where the document comes from.
    gtk_window_move(GTK_WINDOW(question), 900, 600);
    ASSERT_TRUE(loopUntil([&] {
        Point corner;
        gtk_window_get_position(GTK_WINDOW(question), &corner.x, &corner.y);
        return corner.x > 800 && corner.y > 500;
    }));
    drop({uriOf(writeFile(folder / "second.ps", contentOf(sampleLetter())))});
    EXPECT_EQ(waitForMessage(), "Answer the question first.");
    EXPECT_EQ(shownText("Main Document Name"), "letter.ps");

    press("Main Replace Question No");
    EXPECT_EQ(shownText("Main Message"), "");
    EXPECT_EQ(job(), "precious");
    EXPECT_TRUE(isUsable("Main Send Button"));
}

TEST_F(DragAndDropTest, WhileAJobIsSentNothingElseIsOpened)
{
    servers::PrintListener device(servers::Manner::neverCloses);
    openDocument();
    fillFax({"Ann"});
    sendTo(device);
    ASSERT_TRUE(loopUntil([] { return onScreen("Main Progress") != nullptr; }));
    drop({uriOf(writeFile(folder / "second.ps", contentOf(sampleLetter())))});
    EXPECT_EQ(waitForMessage(), "A fax job is being sent.");
    EXPECT_EQ(shownText("Main Document Name"), "letter.ps");
    EXPECT_NE(onScreen("Main Progress"), nullptr);
}

} // namespace
} // namespace quelm
