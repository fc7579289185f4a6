// Describes widgets as a user sees them.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_WIDGETS_WIDGET_VIEW_H
#define DRIVER_WIDGETS_WIDGET_VIEW_H

#include "driver/widgets/widget.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace quelm {

/// What a widget shows. A value that its kind does not have is absent.
struct WidgetView {
    std::string name;
    std::string kind;     ///< the element of the dialog definition: "Button", "ListBox", ...
    bool visible = false; ///< the widget's own property, whatever is around it
    bool sensitive = false;
    bool operable = false;            ///< the widget and all that it stands in are visible and sensitive
    std::optional<std::string> text;  ///< label, title, button text; what a text field or file chooser holds
    std::optional<std::string> title; ///< of a window or file chooser
    std::optional<bool> ticked;       ///< check box, radio item
    std::optional<int> value;         ///< index, page, number; the lowest selected row of a list, -1 for none
    std::vector<std::string> items;   ///< texts of the items of a combo box or radio group, of pages
    std::optional<std::size_t> rowCount; ///< of a list
    std::vector<int> selection;          ///< selected rows of a list, from 0, ascending
};

WidgetView viewOf(const Widget& widget);

/// The cells of a list, row by row.
std::vector<std::vector<std::string>> rowsOf(const Widget& list);

} // namespace quelm

#endif
