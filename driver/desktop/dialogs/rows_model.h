// The rows of a list as a model that the toolkit's list view reads in place.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_DESKTOP_DIALOGS_ROWS_MODEL_H
#define DRIVER_DESKTOP_DIALOGS_ROWS_MODEL_H

#include "driver/widgets/rows.h"

#include <gtkmm/treemodel.h>
#include <gtkmm/treepath.h>

namespace quelm {

/// Every column is a text. The view knows as many rows as there were at the last `follow`; cells are read
/// from the rows themselves whenever the view draws them, so a list of 100,000 is never copied. Until
/// `follow` is called, rows that are gone read as empty.
class RowsModel : public Gtk::TreeModel, public Glib::Object {
public:
    /// `rows` outlives the model or is `detach`ed from it.
    [[nodiscard]] static Glib::RefPtr<RowsModel> create(const Rows& rows);

    /// Tells the view that the rows have changed: those that stayed in number as changed, the others as
    /// inserted or deleted.
    void follow();

    /// Takes over the number of rows without telling; for when no view looks.
    void followQuietly();

    /// Reads nothing any more: a view may outlive the rows by a moment.
    void detach();

    int rowCount() const { return known_; }

protected:
    explicit RowsModel(const Rows& rows);

    Gtk::TreeModelFlags get_flags_vfunc() const override;
    int get_n_columns_vfunc() const override;
    GType get_column_type_vfunc(int index) const override;
    void get_value_vfunc(const iterator& row, int column, Glib::ValueBase& value) const override;
    bool iter_next_vfunc(const iterator& row, iterator& next) const override;
    bool get_iter_vfunc(const Path& path, iterator& row) const override;
    bool iter_children_vfunc(const iterator& parent, iterator& child) const override;
    bool iter_parent_vfunc(const iterator& child, iterator& parent) const override;
    bool iter_nth_child_vfunc(const iterator& parent, int number, iterator& child) const override;
    bool iter_nth_root_child_vfunc(int number, iterator& row) const override;
    bool iter_has_child_vfunc(const iterator& row) const override;
    int iter_n_children_vfunc(const iterator& row) const override;
    int iter_n_root_children_vfunc() const override;
    Path get_path_vfunc(const iterator& row) const override;

private:
    [[nodiscard]] bool pointAt(int number, iterator& row) const;
    static int numberOf(const iterator& row);

    const Rows* source_;
    int known_ = 0;
};

} // namespace quelm

#endif
