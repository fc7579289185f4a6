// Entries and groups as phonebook records, in the form that the component reads and writes.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_PHONEBOOK_RECORD_CODEC_H
#define DRIVER_PHONEBOOK_RECORD_CODEC_H

#include "driver/phonebook/entry.h"
#include "driver/store/record_store.h"

#include <string>
#include <string_view>
#include <variant>

namespace quelm {

/// A record that the component could not show, or not as one of the two kinds.
struct UnreadableRecord {
    std::string reason;
    bool leftOut = false; ///< the component cannot read it at all, and its dialogs have no row for it

    friend bool operator==(const UnreadableRecord&, const UnreadableRecord&) = default;
};

using RecordContent = std::variant<PhonebookEntry, PhonebookGroup, UnreadableRecord>;

/// A record's key is the letter of its kind and its name: a group's members are found by it.
std::string entryKey(std::string_view name);
std::string groupKey(std::string_view name);

/// What the component takes a record for. Fields that no entry has (a mailbox that another host keeps,
/// unknown ones) are passed over.
RecordContent decodeRecord(const Record& record);

/// The record that the component itself would write.
Record encodeRecord(const PhonebookEntry& entry);
Record encodeRecord(const PhonebookGroup& group);

} // namespace quelm

#endif
