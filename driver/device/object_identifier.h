// The dotted numbers that name what a device can be asked for.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_DEVICE_OBJECT_IDENTIFIER_H
#define DRIVER_DEVICE_OBJECT_IDENTIFIER_H

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quelm {

/// The numbers of an SNMP object's name, from the root: 2 to 128 of them.
using ObjectIdentifier = std::vector<std::uint32_t>;

/// Reads "1.3.6.1.2.1.1.1.0"; one dot may stand ahead of it. Nothing when the text is anything else
/// or names what cannot be sent: numbers beyond 32 bits, more than 128 of them, a first one above 2,
/// a second one above 39 below the first two roots.
[[nodiscard]] std::optional<ObjectIdentifier> parseObjectIdentifier(std::string_view dotted);

/// The numbers, parted by dots.
std::string dotted(const ObjectIdentifier& numbers);

} // namespace quelm

#endif
