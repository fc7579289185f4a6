// Reads a dialog definition.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_WIDGETS_DEFINITION_H
#define DRIVER_WIDGETS_DEFINITION_H

#include "driver/widgets/widget.h"

#include <memory>
#include <string_view>
#include <vector>

namespace quelm {

/// The windows that a definition describes, in document order, made with `listener`. Throws
/// quelm::Error with one line when the text is no definition that the driver understands.
std::vector<std::unique_ptr<Widget>> windowsOfDefinition(WidgetListener& listener,
                                                         std::string_view definition);

} // namespace quelm

#endif
