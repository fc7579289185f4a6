// How the home fax number of a card and the entry of its own relate by name.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_PHONEBOOK_VCARD_NAMES_H
#define DRIVER_PHONEBOOK_VCARD_NAMES_H

#include <string>
#include <string_view>

namespace quelm {

/// Stands behind a card's name in the entry of its home fax number. All of it may stand in a name.
inline constexpr std::string_view homeMark = " - home";

/// The property of ours that names a group's members as the phonebook does; cards' own members can only
/// point at cards.
inline constexpr const char* memberProperty = "X-QUELM-MEMBER";

/// What marks a card of version 3.0 as a group and points at its members, as address books have it.
inline constexpr const char* oldKindProperty = "X-ADDRESSBOOKSERVER-KIND";
inline constexpr const char* oldMemberProperty = "X-ADDRESSBOOKSERVER-MEMBER";

/// True for the name of a home entry.
inline bool isHomeName(std::string_view name)
{
    return name.size() > homeMark.size() && name.ends_with(homeMark);
}

/// The name on a home entry's card.
inline std::string cardNameOf(std::string_view name)
{
    return std::string(isHomeName(name) ? name.substr(0, name.size() - homeMark.size()) : name);
}

} // namespace quelm

#endif
