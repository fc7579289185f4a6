// Telephone numbers of address books as they are dialled.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_PHONEBOOK_DIALLED_NUMBER_H
#define DRIVER_PHONEBOOK_DIALLED_NUMBER_H

#include <string>
#include <string_view>

namespace quelm {

/// A number in the marks that phonebooks keep.
struct DialledNumber {
    std::string number;
    bool hasExtension = false; ///< an extension stands in it, behind a pause
};

/// The number of a text such as "tel:+49-30-1234;ext=12", "555 1234 ext. 12" or "555p12": what is no mark but
/// looks like one (hyphens, blanks and digits of other writing) becomes that mark, invisible characters go,
/// an extension is dialled behind a pause: "555 1234,12". What else is in it stays, and may not be
/// acceptable.
[[nodiscard]] DialledNumber dialledNumber(std::string_view text);

} // namespace quelm

#endif
