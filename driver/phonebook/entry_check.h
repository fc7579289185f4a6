// What makes an entry or a group acceptable.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_PHONEBOOK_ENTRY_CHECK_H
#define DRIVER_PHONEBOOK_ENTRY_CHECK_H

#include "driver/phonebook/entry.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace quelm {

/// Why an entry (tidied) cannot be kept, or nothing. The dialogs' rules: a name of letters, digits, "-",
/// blanks, ".", apostrophes and the other marks of people's names, numbers to dial, and the fields' greatest
/// lengths (31, 46, 59, 46 and 59 characters), no line break and no other control character. A text that the
/// record's own marks would cut is refused, too.
[[nodiscard]] std::optional<std::string> problemWith(const PhonebookEntry& entry);

/// What an entry's name alone cannot be kept for.
[[nodiscard]] std::optional<std::string> problemWithEntryName(const std::string& name);

/// The same for a group, which needs a member. Whether the members exist is not looked at.
[[nodiscard]] std::optional<std::string> problemWith(const PhonebookGroup& group);

/// A name that can be kept in the place of one that cannot: blanks for what must not be in it, cut to the
/// greatest length less `room` characters, for what is to stand behind it. Empty when nothing is left.
[[nodiscard]] std::string acceptableName(std::string_view name, std::size_t room = 0);

} // namespace quelm

#endif
