// Decodes phonebook records in one pass over their text.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "phonebook/record_format.h"

#include "common/phonebook_tags.h"
#include "host/calls.h"

#include <cctype>
#include <string_view>

namespace {

// Positions of the tags in `PBEntryTags`.
enum Tag { usg = 1, nam, cmp, fxn, von, fxm, eml, blc, dtm, gen };

constexpr std::size_t tagLength = 3;

bool isSpace(char c) { return std::isspace(static_cast<unsigned char>(c)) != 0; }

/// The value without white space around it. Nothing but white space is out of range at its first
/// character: the record's reader relies on the exception, and callers let it pass.
std::string_view trimmed(std::string_view value)
{
    while (isSpace(value.at(0)))
        value.remove_prefix(1);
    while (!value.empty() && isSpace(value.back()))
        value.remove_suffix(1);
    return value;
}

void assign(LegacyDBRecipient& out, const LegacyDBRecord& record, const std::string& tag,
            std::string_view value)
{
    switch (host::tokenNumber(PBEntryTags, tag.c_str(), true)) {
    case usg:
        out.type = 1;
        break;
    case nam:
        out.name = value;
        break;
    case cmp:
        out.company = value;
        break;
    case fxn:
        out.faxNumber = value;
        break;
    case von:
        out.voiceNumber = value;
        break;
    case fxm:
        out.faxMailbox = value;
        break;
    case eml:
        out.email = value;
        break;
    case blc:
        out.blc = value;
        break;
    case gen: {
        out.type = 2;
        out.name =
            std::string_view(record.key).empty() ? "" : record.key + 1; // the key's first letter is its kind
        std::string members(value);
        ParseGroupEntry(members, out);
        break;
    }
    default:
        break; // "dtm" and unknown tags are passed over
    }
}

} // namespace

void ClearLegacyDBRecipientInfo(LegacyDBRecipient& recipient)
{
    recipient.type = 0;
    for (std::string* text :
         {&recipient.name, &recipient.company, &recipient.faxNumber, &recipient.voiceNumber, &recipient.email,
          &recipient.blc, &recipient.faxMailbox, &recipient.groupMembers})
        text->clear();
}

bool ParseLegacyPBEntry(LegacyDBRecord* record, LegacyDBRecipient& out)
{
    std::string_view rest = record->data;
    for (std::size_t start = rest.find(".s"); start != rest.npos; start = rest.find(".s")) {
        rest.remove_prefix(start + 2);
        const std::string tag(rest.substr(0, tagLength));
        // Looked for from the tag itself on, so a value must not hold its own end tag.
        const std::size_t end = rest.find(".e" + tag);
        if (end == rest.npos)
            return false;
        if (end > tagLength)
            assign(out, *record, tag, trimmed(rest.substr(tagLength, end - tagLength)));
        rest.remove_prefix(end + 4); // the end tag's last letter stays, and starts no field
    }
    return true;
}

void ParseGroupEntry(std::string& value, LegacyDBRecipient& out)
{
    std::string_view rest = value;
    // While any ">" is left it is the next member's mark, even behind a "u": a list that mixes both
    // loses the "u" members ahead of it.
    bool angleLeft = true;
    const auto nextMember = [&] {
        std::size_t position = angleLeft ? rest.find('>') : rest.npos;
        angleLeft = position != rest.npos;
        return angleLeft ? position : rest.find('u');
    };
    for (std::size_t member = nextMember(); member != rest.npos; member = nextMember()) {
        rest.remove_prefix(member);
        const std::size_t comma = rest.find(',');
        const std::string_view name = rest.substr(0, comma).substr(1);
        if (out.groupMembers.empty())
            out.groupMembers = ",";
        out.groupMembers.append(name).append(",");
        rest.remove_prefix(comma == rest.npos ? rest.size() : comma);
    }
}
