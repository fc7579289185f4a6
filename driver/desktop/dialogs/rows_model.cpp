// Answers the list view's questions from the rows.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/desktop/dialogs/rows_model.h"

#include "driver/desktop/toolkit/shown_text.h"

#include <glibmm/value.h>

#include <algorithm>
#include <typeinfo>

namespace quelm {

namespace {

// Iterators carry a row's number; one stamp serves, as numbers are checked whenever they are used.
constexpr int stamp = 1;

} // namespace

Glib::RefPtr<RowsModel> RowsModel::create(const Rows& rows)
{
    return Glib::RefPtr<RowsModel>(new RowsModel(rows));
}

RowsModel::RowsModel(const Rows& rows)
    : Glib::ObjectBase(typeid(RowsModel)), source_(&rows), known_(static_cast<int>(rows.count()))
{
}

void RowsModel::follow()
{
    const int wanted = source_ == nullptr ? 0 : static_cast<int>(source_->count());
    const auto tell = [this](int number, auto signal) {
        iterator row;
        Path path;
        path.push_back(number);
        if (pointAt(number, row))
            (this->*signal)(path, row);
    };
    const int kept = std::min(known_, wanted);
    while (known_ > wanted) {
        --known_;
        Path path;
        path.push_back(known_);
        row_deleted(path);
    }
    for (int number = 0; number < kept; ++number)
        tell(number, static_cast<void (RowsModel::*)(const Path&, const iterator&)>(&RowsModel::row_changed));
    while (known_ < wanted) {
        ++known_;
        tell(known_ - 1,
             static_cast<void (RowsModel::*)(const Path&, const iterator&)>(&RowsModel::row_inserted));
    }
}

void RowsModel::followQuietly() { known_ = source_ == nullptr ? 0 : static_cast<int>(source_->count()); }

void RowsModel::detach() { source_ = nullptr; }

Gtk::TreeModelFlags RowsModel::get_flags_vfunc() const
{
    return Gtk::TREE_MODEL_ITERS_PERSIST | Gtk::TREE_MODEL_LIST_ONLY;
}

int RowsModel::get_n_columns_vfunc() const
{
    return source_ == nullptr ? 0 : static_cast<int>(source_->columnCount());
}

GType RowsModel::get_column_type_vfunc(int /*index*/) const { return G_TYPE_STRING; }

void RowsModel::get_value_vfunc(const iterator& row, int column, Glib::ValueBase& value) const
{
    Glib::Value<Glib::ustring> text;
    text.init(Glib::Value<Glib::ustring>::value_type());
    const auto number = static_cast<std::size_t>(numberOf(row));
    const auto cell = static_cast<std::size_t>(column);
    if (source_ != nullptr && number < source_->count() && cell < source_->columnCount())
        text.set(drawable(source_->cell(number, cell)));
    value.init(Glib::Value<Glib::ustring>::value_type());
    value = text;
}

bool RowsModel::iter_next_vfunc(const iterator& row, iterator& next) const
{
    next = iterator();
    return pointAt(numberOf(row) + 1, next);
}

bool RowsModel::get_iter_vfunc(const Path& path, iterator& row) const
{
    return path.size() == 1 && pointAt(path[0], row);
}

bool RowsModel::iter_children_vfunc(const iterator& /*parent*/, iterator& /*child*/) const { return false; }

bool RowsModel::iter_parent_vfunc(const iterator& /*child*/, iterator& /*parent*/) const { return false; }

bool RowsModel::iter_nth_child_vfunc(const iterator& /*parent*/, int /*number*/, iterator& /*child*/) const
{
    return false;
}

bool RowsModel::iter_nth_root_child_vfunc(int number, iterator& row) const { return pointAt(number, row); }

bool RowsModel::iter_has_child_vfunc(const iterator& /*row*/) const { return false; }

int RowsModel::iter_n_children_vfunc(const iterator& /*row*/) const { return 0; }

int RowsModel::iter_n_root_children_vfunc() const { return known_; }

Gtk::TreePath RowsModel::get_path_vfunc(const iterator& row) const
{
    Path path;
    path.push_back(numberOf(row));
    return path;
}

bool RowsModel::pointAt(int number, iterator& row) const
{
    if (number < 0 || number >= known_)
        return false;
    row.set_stamp(stamp);
    row.gobj()->user_data = GINT_TO_POINTER(number);
    return true;
}

int RowsModel::numberOf(const iterator& row) { return GPOINTER_TO_INT(row.gobj()->user_data); }

} // namespace quelm
