// What a script can name: the widgets of the dialogs, and the functions that `call` takes.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_CLI_SCRIPT_SCRIPT_LIST_H
#define DRIVER_CLI_SCRIPT_SCRIPT_LIST_H

#include "driver/widgets/widget_view.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace quelm {

class Driver;

/// A widget that scripts can name.
struct ListedWidget {
    WidgetView view;
    std::string window;                         ///< the name of the window that it stands in
    std::string label;                          ///< what people see it called
    std::vector<std::string> verbs;             ///< what a script can do with it: "press", "show", ...
    std::optional<std::pair<int, int>> numbers; ///< the least and the greatest that `choose` takes
    std::optional<std::size_t> longest;         ///< the most characters that `type` takes
    std::string callback;                       ///< the function that it fires; empty for none
};

struct ScriptNames {
    std::vector<ListedWidget> widgets;  ///< in the order of the dialog definition
    std::vector<std::string> functions; ///< in the component's order
};

/// Of the dialogs as they stand now. The number of a credit card is not shown.
[[nodiscard]] ScriptNames scriptNames(Driver& driver);

/// A line for each: widget "NAME" kind KIND window "NAME" ..., then function NAME.
[[nodiscard]] std::string namesText(const ScriptNames& names);

/// The same as one JSON object.
[[nodiscard]] std::string namesJson(const ScriptNames& names);

} // namespace quelm

#endif
