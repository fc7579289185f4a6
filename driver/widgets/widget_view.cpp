// Takes down what a widget shows.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/widgets/widget_view.h"

#include <algorithm>

namespace quelm {

namespace {

bool hasText(const Widget& widget)
{
    switch (widget.kind()) {
    case WidgetKind::label:
    case WidgetKind::textEntry:
    case WidgetKind::dialogWindow:
    case WidgetKind::fileSelection:
    case WidgetKind::button:
    case WidgetKind::toolbarItem:
    case WidgetKind::checkBox:
    case WidgetKind::radioButton:
    case WidgetKind::radioButtonItem:
    case WidgetKind::comboBoxMain:
    case WidgetKind::comboBoxItem:
    case WidgetKind::notebookPage:
        return true;
    default:
        return false;
    }
}

/// What an item shows: its text, or its name when it has none.
std::string itemText(const Widget& item) { return item.text().empty() ? item.name() : item.text(); }

} // namespace

WidgetView viewOf(const Widget& widget)
{
    WidgetView view;
    view.name = widget.name();
    view.kind = kindName(widget.kind());
    view.visible = widget.visible();
    view.sensitive = widget.sensitive();
    view.operable = widget.onScreen() && widget.active();
    if (hasText(widget))
        view.text = widget.text();
    if (widget.kind() == WidgetKind::dialogWindow) {
        view.title = widget.text();
    } else if (widget.kind() == WidgetKind::fileSelection) {
        const std::string* title = widget.attribute("Title");
        view.title = title != nullptr ? *title : "";
    }
    if (widget.hasFlag())
        view.ticked = widget.flag();
    if (widget.hasNumber())
        view.value = widget.number();
    for (const Widget* item : widget.items())
        view.items.push_back(itemText(*item));
    if (widget.isList()) {
        view.rowCount = widget.rows().count();
        view.selection = widget.selection();
        std::sort(view.selection.begin(), view.selection.end());
    }
    return view;
}

std::vector<std::vector<std::string>> rowsOf(const Widget& list)
{
    const Rows& rows = list.rows();
    std::vector<std::vector<std::string>> cells(rows.count());
    for (std::size_t row = 0; row < rows.count(); ++row)
        for (std::size_t column = 0; column < rows.columnCount(); ++column)
            cells[row].emplace_back(rows.cell(row, column));
    return cells;
}

} // namespace quelm
