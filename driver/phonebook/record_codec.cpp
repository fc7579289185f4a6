// Reads and writes the tagged text of phonebook records.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/phonebook/record_codec.h"

#include "base/translation.h"
#include "driver/store/record_fields.h"

#include <cstddef>
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

/// The members in a group's value. A name begins behind ">" or, when no ">" is left, behind "u", and
/// ends at a comma: as the component reads it, oddities of mixed lists included.
void appendMembers(std::string_view list, std::vector<std::string>& members)
{
    bool angleLeft = true;
    for (;;) {
        auto mark = angleLeft ? list.find('>') : std::string_view::npos;
        angleLeft = mark != std::string_view::npos;
        if (!angleLeft)
            mark = list.find('u');
        if (mark == std::string_view::npos)
            return;
        list.remove_prefix(mark);
        const auto end = list.find(',');
        members.emplace_back(list.substr(0, end).substr(1));
        list.remove_prefix(end == std::string_view::npos ? list.size() : end);
    }
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
            appendMembers(value, group.members);
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
