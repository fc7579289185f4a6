// A list with columns.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_DESKTOP_DIALOGS_LIST_CONTROL_H
#define DRIVER_DESKTOP_DIALOGS_LIST_CONTROL_H

#include "driver/desktop/dialogs/control.h"
#include "driver/desktop/dialogs/rows_model.h"

#include <gtkmm/treeview.h>

#include <vector>

namespace quelm {

/// How wide columns are that need the given widths, in `available` pixels: where these are enough, what is
/// left makes narrow columns wider; else the list scrolls, and no column is narrower than a short name.
std::vector<int> columnWidths(const std::vector<int>& needed, int available);

class ListControl : public Control {
public:
    /// `width` is what the definition gives the frame that the list scrolls in; columns are laid out for it.
    ListControl(Widget& treeWidget, DesktopContext& desktopContext, int width);
    ~ListControl() override;
    Gtk::Widget* onScreen() override { return &view_; }

    /// The rows have changed; to be called ahead of the next refresh.
    void noteRows() { rowsChanged_ = true; }

protected:
    void show() override;

private:
    void addColumns();
    void layOutColumns();
    int neededWidth(int column) const;
    void showRows();
    void showSelection();
    void select();
    std::vector<int> selectedRows() const;
    void press(Widget* button);
    bool onKey(GdkEventKey* event);

    Gtk::TreeView& view_;
    Glib::RefPtr<RowsModel> model_;
    int frameWidth_;
    bool rowsChanged_ = false;
    bool selectionQueued_ = false;
    std::vector<int> laidOutWidths_; // empty before the first time
};

} // namespace quelm

#endif
