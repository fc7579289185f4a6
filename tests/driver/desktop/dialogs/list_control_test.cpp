// Lists on the screen: rows, selection, columns, keys.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/desktop/dialogs/list_control.h"

#include "tests/driver/desktop/desktop_fixture.h"

#include <gdk/gdkkeysyms.h>
#include <gtkmm/treeselection.h>
#include <gtkmm/treeviewcolumn.h>

#include <numeric>

namespace {

using Names = std::vector<std::string>;
using Rows = std::vector<int>;

class ListTest : public DesktopTest {
protected:
    void SetUp() override { openFaxDialog(); }

    Gtk::TreeView& view() { return screen<Gtk::TreeView>(list); }

    void add(quelm::Widget& to, const std::string& name, const std::string& number)
    {
        const char* cells[] = {name.c_str(), number.c_str(), nullptr};
        to.addRow(cells);
    }

    /// Recipients of the job, as many as `count`.
    void addRecipients(int count)
    {
        dialogs->act([this, count] {
            for (int number = 0; number < count; ++number) {
                driver().press("AddFaxRcpt");
                driver().type("RecipientName", "Recipient " + std::to_string(number));
                driver().type("RecipientNumber", "555" + std::to_string(number));
                driver().press("LanFaxAddRcpt OK Button");
            }
        });
        loopUntilIdle();
    }

    void select(const Rows& rows)
    {
        view().get_selection()->unselect_all();
        for (const int row : rows) {
            Gtk::TreePath path;
            path.push_back(row);
            view().get_selection()->select(path);
        }
        loopUntilIdle();
    }

    Rows shownSelection()
    {
        Rows rows;
        for (const Gtk::TreePath& path : view().get_selection()->get_selected_rows())
            rows.push_back(path[0]);
        return rows;
    }

    const std::string list = "LanFax Recipient List";
};

} // namespace

TEST(ColumnWidths, ShareTheFrameWhenThatIsEnough)
{
    EXPECT_EQ(quelm::columnWidths({40, 75, 50}, 300), (Rows{100, 100, 100}));
    EXPECT_EQ(quelm::columnWidths({40, 150, 50}, 300), (Rows{75, 150, 75}));
}

TEST(ColumnWidths, AreScrolledToWhenTheFrameIsTooNarrow)
{
    EXPECT_EQ(quelm::columnWidths({40, 120, 90, 200}, 250), (Rows{80, 120, 90, 200}));
}

TEST(ColumnWidths, OfNoColumnsAreNone) { EXPECT_TRUE(quelm::columnWidths({}, 250).empty()); }

TEST_F(ListTest, ShowsItsRowsAndColumnTitles)
{
    dialogs->act([this] { add(tree(list), "Ann", "555"); });
    loopUntilIdle();
    EXPECT_EQ(shownNames(list), (Names{"Ann"}));
    ASSERT_EQ(view().get_n_columns(), 6U);
    EXPECT_EQ(view().get_column(0)->get_title(), "Name");
    EXPECT_EQ(view().get_column(5)->get_title(), "Mailbox");
    for (const Gtk::TreeViewColumn* column : view().get_columns())
        EXPECT_TRUE(column->get_resizable());
}

TEST_F(ListTest, OnlyTheJobsRecipientsAreSelectedManyAtATime)
{
    EXPECT_EQ(view().get_selection()->get_mode(), Gtk::SELECTION_MULTIPLE);
    click("AddPBFaxRcpt");
    ASSERT_TRUE(opens("Add Rcpt From PB Window"));
    EXPECT_EQ(screen<Gtk::TreeView>("Fax PB List").get_selection()->get_mode(), Gtk::SELECTION_SINGLE);
    EXPECT_EQ(screen<Gtk::TreeView>("Fax Cur Recipient List").get_selection()->get_mode(),
              Gtk::SELECTION_SINGLE);
}

TEST_F(ListTest, TheViewFollowsAThousandRefillsOnce)
{
    int inserted = 0;
    int deleted = 0;
    int changed = 0;
    const auto model = view().get_model();
    model->signal_row_inserted().connect([&](const Gtk::TreePath&, const Gtk::TreeIter&) { ++inserted; });
    model->signal_row_deleted().connect([&](const Gtk::TreePath&) { ++deleted; });
    model->signal_row_changed().connect([&](const Gtk::TreePath&, const Gtk::TreeIter&) { ++changed; });
    addRecipients(100); // the component refills the list for each
    EXPECT_EQ(tree(list).rows().count(), 100U);
    EXPECT_EQ(inserted, 100);
    EXPECT_EQ(deleted, 0);
    EXPECT_EQ(changed, 0);
    EXPECT_EQ(shownNames(list).size(), 100U);
    EXPECT_EQ(shownNames(list)[99], "Recipient 99");
}

TEST_F(ListTest, ShrinksWithItsRows)
{
    addRecipients(5);
    dialogs->act([this] {
        tree(list).clearRows();
        add(tree(list), "Ann", "555");
    });
    loopUntilIdle();
    EXPECT_EQ(shownNames(list), (Names{"Ann"}));
}

TEST_F(ListTest, KeepsUpWithAHundredThousandRows)
{
    constexpr int count = 100'000;
    dialogs->act([this] {
        for (int number = 0; number < count; ++number)
            add(tree(list), "Recipient " + std::to_string(number), "555");
    });
    loopUntilIdle();
    const auto rows = view().get_model()->children();
    ASSERT_EQ(rows.size(), static_cast<unsigned>(count));
    Glib::ustring last;
    rows[count - 1].get_value(0, last);
    EXPECT_EQ(last, "Recipient 99999");
    dialogs->act([this] { tree(list).clearRows(); });
    loopUntilIdle();
    EXPECT_TRUE(shownNames(list).empty());
}

TEST_F(ListTest, RowsThatAreGoneReadAsEmptyUntilTheViewFollows)
{
    addRecipients(3);
    tree(list).clearRows();
    EXPECT_EQ(shownNames(list), (Names{"", "", ""}));
    loopUntilIdle();
    EXPECT_TRUE(shownNames(list).empty());
}

TEST_F(ListTest, CellsThatAreNoTextAreShown)
{
    dialogs->act([this] { add(tree(list), "J\xF6rg", "555"); });
    loopUntilIdle();
    EXPECT_EQ(shownNames(list), (Names{"J\xEF\xBF\xBDrg"}));
}

TEST_F(ListTest, WhatIsSelectedOnTheScreenReachesTheTree)
{
    addRecipients(3);
    select({0, 2});
    EXPECT_EQ(tree(list).selection(), (Rows{0, 2}));
    EXPECT_FALSE(screen("LanFax Details Button").get_sensitive());
    select({1});
    EXPECT_EQ(tree(list).selection(), (Rows{1}));
    EXPECT_TRUE(screen("LanFax Details Button").get_sensitive());
}

TEST_F(ListTest, WhatTheComponentSelectsIsShownAndNotTakenForAPersonsDoing)
{
    addRecipients(3);
    int told = 0;
    dialogs->setSettled([&told] { ++told; });
    tree(list).setSelection({2});
    loopUntilIdle();
    EXPECT_EQ(shownSelection(), (Rows{2}));
    EXPECT_EQ(told, 0);
}

TEST_F(ListTest, ARefillTakesTheSelectionWithIt)
{
    addRecipients(3);
    select({1});
    addRecipients(1); // asks whether to add it again
    dialogs->act([this] { driver().answer(false); });
    dialogs->act([this] { driver().closeWindow("LanFax Add Recipient Window"); });
    loopUntilIdle();
    EXPECT_EQ(shownSelection(), tree(list).selection());
    dialogs->act([this] {
        tree(list).clearRows();
        add(tree(list), "Ann", "555");
    });
    loopUntilIdle();
    EXPECT_EQ(shownSelection(), (Rows{}));
    EXPECT_EQ(tree(list).selection(), (Rows{}));
}

TEST_F(ListTest, ADoubleClickOpensTheRow)
{
    addRecipients(2);
    select({1});
    Gtk::TreePath path;
    path.push_back(1);
    view().row_activated(path, *view().get_column(0));
    ASSERT_TRUE(opens("LanFax Add Recipient Window"));
    EXPECT_EQ(screen<Gtk::Entry>("RecipientName").get_text(), "Recipient 1");
}

TEST_F(ListTest, EnterOpensTheRowThatHasTheFocusThoughItIsNotSelected)
{
    addRecipients(2);
    view().grab_focus();
    press(screen<Gtk::Window>("Lan Fax Window"), GDK_KEY_Down, GDK_CONTROL_MASK); // moves the focus alone
    ASSERT_EQ(tree(list).selection(), (Rows{}));
    ASSERT_FALSE(screen("LanFax Details Button").get_sensitive());
    press(screen<Gtk::Window>("Lan Fax Window"), GDK_KEY_Return);
    ASSERT_TRUE(opens("LanFax Add Recipient Window"));
    EXPECT_EQ(shownSelection().size(), 1U);
    EXPECT_EQ(screen<Gtk::Entry>("RecipientName").get_text(),
              "Recipient " + std::to_string(tree(list).selection().at(0)));
}

TEST_F(ListTest, TheDeleteKeyDoesNothingWhileNoRowIsSelected)
{
    addRecipients(2);
    view().grab_focus();
    press(screen<Gtk::Window>("Lan Fax Window"), GDK_KEY_Delete);
    EXPECT_EQ(question(), nullptr);
    EXPECT_EQ(message("Lan Fax Window"), "");
    EXPECT_EQ(tree(list).rows().count(), 2U);
}

TEST_F(ListTest, TheDeleteKeyAsksToRemoveTheRow)
{
    addRecipients(2);
    select({0});
    view().grab_focus();
    press(screen<Gtk::Window>("Lan Fax Window"), GDK_KEY_Delete);
    ASSERT_TRUE(loopUntil([] { return question() != nullptr; }));
    question()->response(Gtk::RESPONSE_YES);
    ASSERT_TRUE(loopUntil([] { return question() == nullptr; }));
    EXPECT_EQ(shownNames(list), (Names{"Recipient 1"}));
}

TEST_F(ListTest, ColumnsFitTheirTextsUntilAPersonDragsOne)
{
    const int before = view().get_column(0)->get_fixed_width();
    dialogs->act([this] { add(tree(list), "A recipient with quite a long name", "555"); });
    loopUntilIdle();
    EXPECT_GT(view().get_column(0)->get_fixed_width(), before);
    view().get_column(0)->set_fixed_width(60);
    dialogs->act([this] { add(tree(list), "Another recipient with a name that is even longer", "555"); });
    loopUntilIdle();
    EXPECT_EQ(view().get_column(0)->get_fixed_width(), 60);
}
