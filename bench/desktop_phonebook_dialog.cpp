// Opens and uses the phonebook dialog.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "bench/desktop_phonebook_dialog.h"

#include "bench/comparison.h"
#include "tests/driver/desktop/main_loop.h"

#include <gtkmm/treeview.h>

namespace bench {

PhonebookDialog::PhonebookDialog(const Desktop::Fill& fill) : desktop(fill)
{
    desktop.driver().call("T40InvokeFaxDialog");
    list();
}

void PhonebookDialog::show()
{
    desktop.showWindows();
    desktop.waitUntilDrawn(window);
    isShown_ = true;
}

void PhonebookDialog::remove()
{
    desktop.removeWindows();
    isShown_ = false;
}

void PhonebookDialog::startPicking(int row)
{
    desktop.driver().press("LanFaxRcptPB Cancel Button");
    list();
    desktop.driver().select(entries, {row});
    if (isShown_)
        desktop.waitUntilDrawn(window);
}

void PhonebookDialog::actAndDraw(const std::string& listName, const std::function<void()>& action)
{
    bool done = false;
    desktop.act([&] {
        action();
        done = true;
    });
    require(loopUntil([&done] { return done; }), "an action was not carried out");
    waitUntilDrawn(desktop.screen(listName));
}

void PhonebookDialog::requireRows(const std::string& listName, int count, const std::string& name)
{
    const auto& rows = desktop.tree(listName).rows();
    require(rows.count() == static_cast<std::size_t>(count) && rows.cell(rows.count() - 1, 0) == name,
            "the list in the tree lacks rows");
    if (!isShown_)
        return;
    const auto shown = dynamic_cast<Gtk::TreeView&>(desktop.screen(listName)).get_model()->children();
    require(shown.size() == static_cast<unsigned>(count), "the list on the screen lacks rows");
    Glib::ustring last;
    shown[static_cast<unsigned>(count) - 1].get_value(0, last);
    require(last == name, "the list on the screen shows other rows");
}

} // namespace bench
