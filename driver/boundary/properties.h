// The properties of widgets as the boundary knows them: which slot carries which.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_BOUNDARY_PROPERTIES_H
#define DRIVER_BOUNDARY_PROPERTIES_H

#include "driver/widgets/widget.h"

#include <optional>
#include <string_view>

namespace quelm {

/// The parameter that carries a property's value.
enum class Slot { text, integer, flag };

/// The slot of a property, nothing when the widget does not have that property.
std::optional<Slot> slotOf(const Widget& widget, std::string_view property);

/// Reads a property into its slot; a text, bounded, into a buffer of 4,096 bytes. False, and nothing
/// written, when the widget lacks the property or that pointer is null.
bool readProperty(const Widget& widget, std::string_view property, char* text, int* integer, bool* flag);

/// Sets a property from its slot; a null text counts as empty. False when the widget lacks the
/// property or has no such index or row. A spin box takes the nearest number that it has. Never
/// throws; a text for which there is no memory is not set, and the answer is false.
bool writeProperty(Widget& widget, std::string_view property, const char* text, int integer,
                   bool flag) noexcept;

} // namespace quelm

#endif
