// Takes LDIF text apart into records that know their lines.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_PHONEBOOK_LDIF_RECORDS_H
#define DRIVER_PHONEBOOK_LDIF_RECORDS_H

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace quelm {

/// One attribute that a phonebook has a use for: its name in small letters, without options, and its value
/// in UTF-8, decoded.
struct LdifAttribute {
    std::string name;
    std::string value;
};

/// One record. `line` is the line, from 1, on which it begins.
struct LdifRecord {
    std::size_t line = 0;
    std::string dn;
    std::vector<LdifAttribute> attributes;
    std::string problem; ///< why it cannot be read; empty when it can

    /// The first value of an attribute that is not blank; empty when there is none.
    std::string text(std::string_view name) const;
    std::vector<std::string> texts(std::string_view name) const;
};

/// The records of a text in UTF-8, as RFC 2849 has them: parted by blank lines, long lines folded, comments
/// left out, values in base64 decoded. Of changes only those that add are read. Values that stand elsewhere
/// ("jpegPhoto:< file:...") are never fetched. A value of more than 4,096 bytes is a problem where a
/// phonebook has a use for it.
std::vector<LdifRecord> readLdifRecords(std::string_view text);

/// A distinguished name such that two of the same meaning are the same: without capitals, escapes, and blanks
/// around its marks.
std::string plainDn(std::string_view dn);

/// The value of the first part of a distinguished name: "Ann Lee" of "cn=Ann Lee,ou=people".
std::string firstValueOfDn(std::string_view dn);

} // namespace quelm

#endif
