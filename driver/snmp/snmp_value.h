// Values of a device as texts.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_SNMP_SNMP_VALUE_H
#define DRIVER_SNMP_SNMP_VALUE_H

#include <optional>
#include <string>
#include <string_view>

struct variable_list; // net-snmp's

namespace quelm {

/// What a device sent as text, as one can show it: bytes that are no UTF-8 become U+FFFD, NULs at the
/// end are dropped, and any other control character is a blank.
std::string shownText(std::string_view bytes);

/// A value as a person reads it: octet strings as `shownText`, numbers in decimal, times in hundredths
/// of a second, objects as dotted numbers, addresses as dotted quads. Nothing when the device has no
/// value, or one of another kind.
std::optional<std::string> valueText(const variable_list& variable);

} // namespace quelm

#endif
