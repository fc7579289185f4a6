// Shows a list's rows and selection, and selects.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/desktop/dialogs/list_control.h"

#include "driver/desktop/dialogs/dialog_habits.h"
#include "driver/desktop/toolkit/shown_text.h"

#include <gdk/gdkkeysyms.h>
#include <gtkmm/cellrenderertext.h>
#include <gtkmm/treeselection.h>

#include <algorithm>

namespace quelm {

namespace {

/// Beyond this many changed rows the view is rebuilt, which takes less time than telling it of each.
constexpr int rowsToldOneByOne = 2000;

constexpr int narrowestColumn = 80;
constexpr int narrowestByHand = 20;
constexpr int widestColumn = 200;
constexpr int cellMargins = 10;
constexpr std::size_t rowsMeasured = 200; // a longer list is like its beginning
constexpr int scrollBarWidth = 16;

} // namespace

std::vector<int> columnWidths(const std::vector<int>& needed, int available)
{
    if (needed.empty())
        return {};
    const auto total = [&needed](int least) {
        int sum = 0;
        for (const int width : needed)
            sum += std::max(width, least);
        return sum;
    };
    int least = narrowestColumn;
    if (total(0) <= available) {
        least = available / static_cast<int>(needed.size());
        while (total(least) > available)
            --least;
    }
    std::vector<int> widths;
    widths.reserve(needed.size());
    for (const int width : needed)
        widths.push_back(std::max(width, least));
    return widths;
}

ListControl::ListControl(Widget& treeWidget, DesktopContext& desktopContext, int width)
    : Control(treeWidget, desktopContext), view_(*Gtk::make_managed<Gtk::TreeView>()),
      model_(RowsModel::create(treeWidget.rows())), frameWidth_(width)
{
    addColumns();
    view_.set_fixed_height_mode(true);
    view_.set_enable_search(true);
    view_.set_search_column(0);
    view_.set_model(model_);
    view_.get_selection()->set_mode(tree.isMultipleSelection() ? Gtk::SELECTION_MULTIPLE
                                                               : Gtk::SELECTION_SINGLE);
    view_.get_selection()->signal_changed().connect([this] { select(); });
    view_.signal_row_activated().connect(
        [this](const Gtk::TreePath&, Gtk::TreeViewColumn*) { press(openingButton(tree)); });
    view_.signal_key_press_event().connect([this](GdkEventKey* event) { return onKey(event); }, false);
    view_.signal_style_updated().connect([this] { layOutColumns(); });
    describe(view_, tree.name(), accessibleName(tree));
}

ListControl::~ListControl() { model_->detach(); }

void ListControl::addColumns()
{
    for (std::size_t index = 0; index < tree.rows().columnCount(); ++index) {
        auto* cell = Gtk::make_managed<Gtk::CellRendererText>();
        cell->property_ellipsize() = Pango::ELLIPSIZE_END;
        auto* column = Gtk::make_managed<Gtk::TreeViewColumn>(columnTitle(tree, index), *cell);
        column->add_attribute(*cell, "text", static_cast<int>(index));
        column->set_sizing(Gtk::TREE_VIEW_COLUMN_FIXED);
        column->set_resizable(true);
        view_.append_column(*column);
    }
}

/// Fits the columns to their titles and texts, until a person has dragged one.
void ListControl::layOutColumns()
{
    const std::vector<Gtk::TreeViewColumn*> columns = view_.get_columns();
    std::vector<int> now;
    now.reserve(columns.size());
    for (const Gtk::TreeViewColumn* column : columns)
        now.push_back(column->get_fixed_width());
    if (!laidOutWidths_.empty() && now != laidOutWidths_)
        return;
    std::vector<int> needed;
    needed.reserve(columns.size());
    for (int column = 0; column < static_cast<int>(columns.size()); ++column)
        needed.push_back(neededWidth(column));
    laidOutWidths_ = columnWidths(needed, frameWidth_ - scrollBarWidth);
    for (std::size_t index = 0; index < columns.size(); ++index) {
        columns[index]->set_min_width(narrowestByHand);
        columns[index]->set_fixed_width(laidOutWidths_[index]);
    }
}

int ListControl::neededWidth(int column) const
{
    int least = 0;
    int title = 0;
    const_cast<Gtk::TreeViewColumn*>(view_.get_column(column))
        ->get_button()
        ->get_preferred_width(least, title);
    int widest = 0;
    const auto layout = const_cast<Gtk::TreeView&>(view_).create_pango_layout("");
    const std::size_t rows = std::min(tree.rows().count(), rowsMeasured);
    for (std::size_t row = 0; row < rows; ++row) {
        layout->set_text(drawable(tree.rows().cell(row, static_cast<std::size_t>(column))));
        int width = 0;
        int height = 0;
        layout->get_pixel_size(width, height);
        widest = std::max(widest, width);
    }
    return std::max(title, std::min(widest + cellMargins, widestColumn));
}

void ListControl::show()
{
    showState(view_);
    if (std::exchange(rowsChanged_, false))
        showRows();
    showSelection();
}

void ListControl::showRows()
{
    const int now = static_cast<int>(tree.rows().count());
    if (std::max(now, model_->rowCount()) > rowsToldOneByOne) {
        view_.unset_model();
        model_->followQuietly();
        view_.set_model(model_);
        view_.set_search_column(0);
    } else {
        model_->follow();
    }
    layOutColumns();
}

void ListControl::showSelection()
{
    std::vector<int> wanted = tree.selection();
    std::sort(wanted.begin(), wanted.end());
    if (wanted == selectedRows())
        return;
    const Glib::RefPtr<Gtk::TreeSelection> selection = view_.get_selection();
    selection->unselect_all();
    for (const int row : wanted) {
        Gtk::TreePath path;
        path.push_back(row);
        selection->select(path);
    }
}

std::vector<int> ListControl::selectedRows() const
{
    std::vector<int> rows;
    for (const Gtk::TreePath& path : view_.get_selection()->get_selected_rows())
        rows.push_back(path[0]);
    return rows;
}

/// A click that selects another row first unselects the old one, and says so; only the outcome counts.
void ListControl::select()
{
    if (!isUsersDoing() || std::exchange(selectionQueued_, true))
        return;
    act([this](UserActions& actions) {
        selectionQueued_ = false;
        actions.select(tree, selectedRows());
    });
}

/// Enter selects the row that has the focus as it opens it: only behind that selection, which is queued, is
/// it known whether the button can be pressed.
void ListControl::press(Widget* button)
{
    if (button == nullptr)
        return;
    act([button](UserActions& actions) {
        if (button->onScreen() && button->active())
            actions.press(*button);
    });
}

bool ListControl::onKey(GdkEventKey* event)
{
    const bool isDelete = event->keyval == GDK_KEY_Delete || event->keyval == GDK_KEY_KP_Delete;
    if (isDelete)
        press(removingButton(tree));
    return isDelete;
}

} // namespace quelm
