// Every window of the real definition on the screen: nothing overlaps, nothing is cut off.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/process.h"
#include "base/translation.h"
#include "driver/desktop/dialogs/control.h"
#include "tests/driver/desktop/desktop_fixture.h"

#include <gtkmm/settings.h>

#include <clocale>
#include <cstdlib>
#include <map>

namespace {

using quelm::WidgetKind;

const std::vector<std::string> windowNames{"Lan Fax Window",
                                           "LanFax Add Recipient Window",
                                           "LanFax Recipient Properties Window",
                                           "LanFax Add Recipient Error Window",
                                           "Cover Sheet Setup Window",
                                           "Sender Information Window",
                                           "Add Rcpt From PB Window",
                                           "LDAP Info Dialog",
                                           "LanFax Add Group Window"};

bool isLeaf(const quelm::Widget& widget)
{
    switch (widget.kind()) {
    case WidgetKind::label:
    case WidgetKind::picture:
    case WidgetKind::button:
    case WidgetKind::toolbarItem:
    case WidgetKind::checkBox:
    case WidgetKind::radioButtonItem:
    case WidgetKind::comboBoxMain:
    case WidgetKind::textEntry:
    case WidgetKind::spinBox:
    case WidgetKind::scrolledWindowContainer:
        return true;
    default:
        return false;
    }
}

void collectLeaves(const quelm::Widget& widget, std::vector<const quelm::Widget*>& found)
{
    for (const auto& child : widget.children())
        if (isLeaf(*child))
            found.push_back(child.get());
        else
            collectLeaves(*child, found);
}

class DialogLayout : public DesktopTest {
protected:
    void show(const std::string& window)
    {
        dialogs->act([this, window] { tree(window).setVisible(true); });
        ASSERT_TRUE(opens(window)) << window;
    }

    void hide(const std::string& window)
    {
        dialogs->act([this, window] { tree(window).setVisible(false); });
        ASSERT_TRUE(closes(window)) << window;
    }

    /// Where a leaf stands in its window.
    static Gdk::Rectangle placeOf(Gtk::Widget& widget)
    {
        int x = 0;
        int y = 0;
        widget.translate_coordinates(*widget.get_toplevel(), 0, 0, x, y);
        return {x, y, widget.get_allocated_width(), widget.get_allocated_height()};
    }

    /// Checks what is on the screen of a window, and returns how many widgets that is.
    std::size_t checkLayout(const std::string& name)
    {
        Gtk::Window& window = screen<Gtk::Window>(name);
        std::vector<const quelm::Widget*> leaves;
        collectLeaves(tree(name), leaves);
        std::vector<std::pair<std::string, Gdk::Rectangle>> places;
        for (const quelm::Widget* leaf : leaves) {
            Gtk::Widget* widget = dialogs->onScreen(*leaf);
            if (widget == nullptr || !widget->get_mapped())
                continue;
            const Gdk::Rectangle place = placeOf(*widget);
            Gtk::Requisition least;
            Gtk::Requisition natural;
            widget->get_preferred_size(least, natural);
            EXPECT_GE(place.get_width(), natural.width) << leaf->name() << " is cut off";
            EXPECT_GE(place.get_height(), natural.height) << leaf->name() << " is cut off";
            EXPECT_GE(place.get_width(), quelm::definedNumber(*leaf, "Width")) << leaf->name();
            EXPECT_GE(place.get_height(), quelm::definedNumber(*leaf, "Height")) << leaf->name();
            EXPECT_LE(place.get_x() + place.get_width(), window.get_allocated_width()) << leaf->name();
            EXPECT_LE(place.get_y() + place.get_height(), window.get_allocated_height()) << leaf->name();
            EXPECT_GE(place.get_x(), 0) << leaf->name();
            EXPECT_GE(place.get_y(), 0) << leaf->name();
            for (const auto& [other, otherPlace] : places)
                EXPECT_FALSE(place.intersects(otherPlace)) << leaf->name() << " overlaps " << other;
            places.emplace_back(leaf->name(), place);
        }
        return places.size();
    }

    /// All windows, and all pages of the fax dialog.
    void checkAllWindows()
    {
        for (const std::string& name : windowNames) {
            show(name);
            EXPECT_GE(screen<Gtk::Window>(name).get_allocated_width(),
                      quelm::definedNumber(tree(name), "Width"));
            EXPECT_GE(screen<Gtk::Window>(name).get_allocated_height(),
                      quelm::definedNumber(tree(name), "Height"));
            EXPECT_GE(checkLayout(name), 2U) << name;
            if (name == "Lan Fax Window") {
                for (const int page : {1, 2}) {
                    dialogs->act([this, page] { driver().choose("Lan Fax TabSet", page); });
                    const char* onPage = page == 1 ? "SendAtAmPm" : "LanFax Default PB";
                    ASSERT_TRUE(loopUntil([&] {
                        return screen(onPage).get_mapped() && screen(onPage).get_allocated_width() > 1;
                    }));
                    EXPECT_GE(checkLayout(name), 20U) << page;
                }
            }
            hide(name);
        }
    }
};

/// All texts of the dialogs more than half as long again.
class TranslatedLayout : public DialogLayout {
protected:
    TranslatedLayout()
    {
        for (const auto& window : driver().widgets().windows())
            collectTexts(*window);
        std::string catalogue = "msgid \"\"\nmsgstr \"Content-Type: text/plain; charset=UTF-8\\n\"\n\n";
        for (const auto& [english, longer] : texts)
            catalogue += "msgid " + quoted(english) + "\nmsgstr " + quoted(longer) + "\n\n";
        const std::string target = folder / "locale/xx/LC_MESSAGES";
        std::filesystem::create_directories(target);
        quelm::ProcessRequest request;
        request.arguments = {"msgfmt", "-o", target + "/" + quelm::textDomain + ".mo",
                             writeFile(folder / "xx.po", catalogue)};
        EXPECT_EQ(quelm::runProcess(request).exitStatus, 0);
        setenv("LC_ALL", "C.UTF-8", 1);
        setenv("LANGUAGE", "xx", 1);
        quelm::useTranslations(folder / "locale");
    }

    ~TranslatedLayout() override
    {
        unsetenv("LC_ALL");
        unsetenv("LANGUAGE");
        std::setlocale(LC_ALL, "C");
    }

    std::map<std::string, std::string> texts;

private:
    void collectTexts(const quelm::Widget& widget)
    {
        std::vector<std::string> keys{"Text", "Title"};
        for (int column = 1; column <= 6; ++column)
            keys.push_back("AddListColumn" + std::to_string(column));
        for (const std::string& key : keys) {
            const std::string* text = widget.attribute(key);
            if (text != nullptr && !text->empty()) {
                const std::size_t more = text->size() * 6 / 10 + 2;
                std::string& longer = texts[*text] = *text + " ";
                for (std::size_t letter = 1; letter < more; ++letter)
                    longer += letter % 7 == 0 ? " " : "ö";
            }
        }
        for (const auto& child : widget.children())
            collectTexts(*child);
    }

    static std::string quoted(const std::string& text)
    {
        std::string result = "\"";
        for (const char character : text)
            result += character == '\n' ? "\\n" : std::string(1, character);
        return result + "\"";
    }
};

} // namespace

TEST_F(DialogLayout, NothingOverlapsAndNothingIsCutOff) { checkAllWindows(); }

TEST_F(DialogLayout, EveryWindowHasTheSizeOfItsDefinition)
{
    for (const std::string& name : windowNames) {
        show(name);
        EXPECT_EQ(screen<Gtk::Window>(name).get_allocated_width(), quelm::definedNumber(tree(name), "Width"))
            << name;
        EXPECT_EQ(screen<Gtk::Window>(name).get_allocated_height(),
                  quelm::definedNumber(tree(name), "Height"))
            << name;
        hide(name);
    }
}

TEST_F(DialogLayout, WidgetsStandAtTheirPlaces)
{
    show("LanFax Add Recipient Window");
    const Gdk::Rectangle field = placeOf(screen("RecipientNumber"));
    EXPECT_EQ(field.get_x(), 65);
    EXPECT_EQ(field.get_y(), 95);
    EXPECT_EQ(field.get_width(), 200);
    EXPECT_EQ(placeOf(screen("LanFaxAddRcpt Cancel Button")).get_x(), 120);
    EXPECT_EQ(placeOf(screen("LanFaxAddRcpt Cancel Button")).get_y(), 405);
}

TEST_F(DialogLayout, TheListKeepsTheSizeOfItsFrame)
{
    show("Lan Fax Window");
    const Gdk::Rectangle frame = placeOf(screen("LanFax Recipient Scroll"));
    EXPECT_NEAR(frame.get_width(), 550, 4);
    EXPECT_NEAR(frame.get_height(), 175, 4);
}

TEST_F(DialogLayout, AListGrowsWithItsWindowAndTheButtonsFollow)
{
    show("Lan Fax Window");
    Gtk::Window& window = screen<Gtk::Window>("Lan Fax Window");
    const Gdk::Rectangle before = placeOf(screen("LanFax Recipient Scroll"));
    window.resize(820, 575);
    ASSERT_TRUE(loopUntil([&] { return window.get_allocated_width() == 820; }));
    const Gdk::Rectangle after = placeOf(screen("LanFax Recipient Scroll"));
    EXPECT_EQ(after.get_width(), before.get_width() + 200);
    EXPECT_EQ(after.get_height(), before.get_height() + 100);
    checkLayout("Lan Fax Window");
    EXPECT_FALSE((show("LanFax Add Recipient Window"),
                  screen<Gtk::Window>("LanFax Add Recipient Window").get_resizable()));
}

TEST_F(DialogLayout, HiddenSearchWidgetsFindRoomWhenTheyAreShown)
{
    show("Add Rcpt From PB Window");
    const std::size_t before = checkLayout("Add Rcpt From PB Window");
    dialogs->act([this] {
        for (const char* name : {"Search Label", "Search Status", "Search String", "Search Button"})
            tree(name).setVisible(true);
        tree("Search Status").setText("Found 37 entries, of which the first 30 are shown in the list below");
    });
    ASSERT_TRUE(loopUntil([&] {
        return screen("Search Status").get_mapped() && screen("Search Status").get_allocated_width() > 1;
    }));
    EXPECT_EQ(checkLayout("Add Rcpt From PB Window"), before + 4);
}

TEST_F(DialogLayout, TheSenderOnTheCoverSheetIsShownInFull)
{
    show("Cover Sheet Setup Window");
    const int width = screen<Gtk::Window>("Cover Sheet Setup Window").get_allocated_width();
    dialogs->act([this] {
        tree("Sender Info")
            .setText("Ann Example of the Department of Long Names\nExample Corporation\n"
                     "+49 30 5551234\nann.example@department-of-long-names.example.org\n"
                     "+49 30 5551235\nand a line more");
    });
    ASSERT_TRUE(loopUntil(
        [&] { return screen<Gtk::Window>("Cover Sheet Setup Window").get_allocated_width() > width; }));
    checkLayout("Cover Sheet Setup Window");
}

TEST_F(TranslatedLayout, NothingOverlapsAndNothingIsCutOff)
{
    EXPECT_GT(texts.size(), 80U);
    checkAllWindows();
    EXPECT_EQ(screen<Gtk::Button>("LanFaxSender OK Button").get_label(), texts.at("_Ok"));
}

TEST_F(DialogLayout, LargerLettersHaveRoomAsWell)
{
    Gtk::Settings::get_default()->property_gtk_xft_dpi() = 96 * 1024 * 3 / 2;
    checkAllWindows();
    show("LDAP Info Dialog");
    EXPECT_GT(screen<Gtk::Window>("LDAP Info Dialog").get_allocated_width(), 540);
    Gtk::Settings::get_default()->property_gtk_xft_dpi() = 96 * 1024;
}

TEST_F(DialogLayout, StandsMirroredInALanguageWrittenFromTheRight)
{
    Gtk::Widget::set_default_direction(Gtk::TEXT_DIR_RTL);
    show("LanFax Add Recipient Window");
    checkLayout("LanFax Add Recipient Window");
    const Gdk::Rectangle picture = placeOf(screen("RecipientName"));
    EXPECT_EQ(picture.get_x(), 320 - 65 - 200);
    Gtk::Widget::set_default_direction(Gtk::TEXT_DIR_LTR);
}
