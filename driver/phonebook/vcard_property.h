// One unfolded line of a card, as cards of version 2.1 and phones have them.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_PHONEBOOK_VCARD_PROPERTY_H
#define DRIVER_PHONEBOOK_VCARD_PROPERTY_H

#include <cstddef>
#include <string>
#include <string_view>

namespace quelm {

/// Where the first of `marks` stands in a text, outside of quotation marks; its size when none does.
std::size_t findUnquoted(std::string_view text, std::string_view marks);

/// Whether a property's value is quoted-printable, and goes on behind "=" at the end of a line.
bool isQuotedPrintable(std::string_view property);

/// A property "FN;CHARSET=ISO-8859-1;ENCODING=QUOTED-PRINTABLE:Zo=EB" in plain UTF-8, "FN:Zoë", as the vCard
/// library reads it. Without a charset that is known the bytes are taken for UTF-8 where they are that, and
/// for windows-1252 otherwise. Values in base64 stay as they are.
std::string plainProperty(const std::string& property);

/// The charset that the first property with one names, in a text whose bytes are not UTF-8; empty when none
/// does.
std::string declaredCharset(std::string_view cards);

} // namespace quelm

#endif
