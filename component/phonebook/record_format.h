// Phonebook records: the tagged text of an entry or group, and its decoded form.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef PHONEBOOK_RECORD_FORMAT_H
#define PHONEBOOK_RECORD_FORMAT_H

#include <string>

struct LegacyDBRecord;

/// One decoded record. Texts are UTF-8.
struct LegacyDBRecipient {
    /// Leaves `type` unset: call `ClearLegacyDBRecipientInfo` before decoding into a new object.
    LegacyDBRecipient() {} // NOLINT(cppcoreguidelines-pro-type-member-init,modernize-use-equals-default)

    int type; ///< 0 cleared, 1 single entry, 2 group
    std::string name;
    std::string company;
    std::string faxNumber;
    std::string voiceNumber;
    std::string email;
    std::string blc; ///< kept with the entry, not used
    std::string faxMailbox;
    std::string groupMembers; ///< ",name1,name2,"; empty for a single entry
};

/// Sets `type` to 0 and empties all texts.
void ClearLegacyDBRecipientInfo(LegacyDBRecipient& recipient);

/// Decodes a record into `out`, which it never clears: fields that the record lacks keep what
/// they held. Returns false when a field has no end; the fields ahead of it stay in `out`.
/// Throws `std::out_of_range` for a field whose value is nothing but white space.
[[nodiscard]] bool ParseLegacyPBEntry(LegacyDBRecord* record, LegacyDBRecipient& out);

/// Appends the members named in a group's member list (",uAnne,uBernard" or ",>Anne,>Bernard,") to
/// `out.groupMembers`.
void ParseGroupEntry(std::string& value, LegacyDBRecipient& out);

#endif
