// The dialog in which a person picks recipients from the phonebook.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef BENCH_DESKTOP_PHONEBOOK_DIALOG_H
#define BENCH_DESKTOP_PHONEBOOK_DIALOG_H

#include "bench/desktop.h"

#include <string>

namespace bench {

/// A desktop with that dialog open in the tree; also on the screen between `show` and `remove`.
class PhonebookDialog {
public:
    static inline const std::string window = "Add Rcpt From PB Window";
    static inline const std::string entries = "Fax PB List";
    static inline const std::string picks = "Fax Cur Recipient List";

    /// `fill` puts its records into the phonebook that the dialog lists.
    explicit PhonebookDialog(const Desktop::Fill& fill);

    void show();
    void remove();

    /// Lists the phonebook anew, without its window.
    void list() { desktop.driver().call("T40ShowAddRcptFromPBDialog"); }

    /// Gives up what was picked, and selects a row of the phonebook.
    void startPicking(int row);

    /// Adds the selected row to the picks, without the window.
    void pick() { desktop.driver().press("Add Button"); }

    /// Queues an action and waits until that list shows what came of it.
    void actAndDraw(const std::string& listName, const std::function<void()>& action);

    /// Throws when a list of the tree, or the view of it when there is one, has other than `count` rows, or
    /// its last row does not begin with `name`.
    void requireRows(const std::string& listName, int count, const std::string& name);

    Desktop desktop;

private:
    bool isShown_ = false;
};

} // namespace bench

#endif
