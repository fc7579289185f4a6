// Reads and writes the tagged text of phonebook records.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/phonebook/record_codec.h"

#include "base/translation.h"
#include "driver/store/group_members.h"
#include "driver/store/record_fields.h"

#include <map>
#include <optional>

namespace quelm {
namespace {

std::string field(const char* tag, const std::string& value)
{
    return std::string(".s") + tag + "\r\n" + value + "\r\n.e" + tag + "\r\n";
}

std::string fieldUnlessEmpty(const char* tag, const std::string& value)
{
    return value.empty() ? std::string() : field(tag, value);
}

/// What has been read of one record.
struct Reading {
    enum class Kind { none, entry, group } kind = Kind::none;
    PhonebookEntry entry;
    PhonebookGroup group;

    void take(const Record& record, std::string_view tag, std::string_view value)
    {
        static const std::map<std::string_view, std::string PhonebookEntry::*> texts{
            {"nam", &PhonebookEntry::name},
            {"cmp", &PhonebookEntry::organization},
            {"fxn", &PhonebookEntry::number},
            {"von", &PhonebookEntry::phone},
            {"eml", &PhonebookEntry::email}};
        if (const auto text = texts.find(tag); text != texts.end()) {
            entry.*(text->second) = value;
        } else if (tag == "usg") {
            kind = Kind::entry;
        } else if (tag == "gen") {
            kind = Kind::group;
            group.name = record.key.empty() ? "" : record.key.substr(1);
            entry.name = group.name; // the component holds both in one text
            CutNames cuts;
            appendMembers(value, group.members, cuts);
            if (group.cutName.empty() && !cuts.names.empty())
                group.cutName = cuts.names.front();
        }
    }
};

} // namespace

std::string entryKey(std::string_view name) { return "u" + std::string(name); }

std::string groupKey(std::string_view name) { return "g" + std::string(name); }

RecordContent decodeRecord(const Record& record)
{
    Reading reading;
    RecordFields fields(record.data);
    while (fields.next())
        reading.take(record, fields.tag(), fields.value());
    if (fields.problem())
        return UnreadableRecord{described(*fields.problem()), true};
    switch (reading.kind) {
    case Reading::Kind::entry:
        return reading.entry;
    case Reading::Kind::group:
        reading.group.name = reading.entry.name;
        return reading.group;
    case Reading::Kind::none:
        break;
    }
    return UnreadableRecord{localized("it is neither an entry nor a group")};
}

Record encodeRecord(const PhonebookEntry& entry)
{
    return {entryKey(entry.name), field("usg", "0") + field("nam", entry.name) + field("fxn", entry.number) +
                                      fieldUnlessEmpty("cmp", entry.organization) +
                                      fieldUnlessEmpty("von", entry.phone) +
                                      fieldUnlessEmpty("eml", entry.email)};
}

Record encodeRecord(const PhonebookGroup& group)
{
    std::string members;
    for (const auto& member : group.members)
        members += ",u" + member;
    return {groupKey(group.name), field("gen", members)};
}

} // namespace quelm
