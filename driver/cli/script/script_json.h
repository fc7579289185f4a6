// Widgets as data for other programs.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_CLI_SCRIPT_SCRIPT_JSON_H
#define DRIVER_CLI_SCRIPT_SCRIPT_JSON_H

#include "driver/widgets/widget_view.h"

#include <nlohmann/json.hpp>

namespace quelm {

/// The object of a widget; what it does not have is left out.
[[nodiscard]] nlohmann::ordered_json widgetObject(const WidgetView& view);

/// JSON in one line, with a line end behind it. Texts that are no UTF-8 have U+FFFD in place of their bad
/// bytes.
[[nodiscard]] std::string jsonLine(const nlohmann::ordered_json& json);

} // namespace quelm

#endif
