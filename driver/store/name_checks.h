// What a name and a telephone number may hold.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_STORE_NAME_CHECKS_H
#define DRIVER_STORE_NAME_CHECKS_H

#include <optional>
#include <string>
#include <string_view>

namespace quelm {

/// What is wrong with a name that a user typed, as a message in the user's language, or nothing
/// when it is acceptable. Letters and digits of any script, combining marks, apostrophes, the other marks
/// that people's names are written with (Gal·la; blanks, hyphens and dots of other scripts; what joins or
/// parts letters in Persian and Indic names) and the characters of `allowed` (UTF-8) are. An empty name is
/// none of this check's business. A name of nothing but blanks is refused, because no phonebook could be read
/// with it; so is one of nothing but such marks. Names from phonebooks and directories have to pass the same
/// check.
[[nodiscard]] std::optional<std::string> problemWithName(std::string_view name, std::string_view allowed);

/// The same for a telephone or fax number: digits, "+", ".", "*", "#", "," and the characters of
/// `allowed` are acceptable, and one digit there must be.
[[nodiscard]] std::optional<std::string> problemWithPhoneNumber(std::string_view number,
                                                                std::string_view allowed);

/// A name with one blank in the place of all in a row that `problemWithName` does not accept, and without
/// blanks around it. It may be empty, or still be refused: what is left may be nothing but marks.
[[nodiscard]] std::string mendedName(std::string_view name, std::string_view allowed);

} // namespace quelm

#endif
