// Tidies the texts of entries and groups.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/phonebook/entry.h"

#include "base/texts.h"

namespace quelm {
std::string tidied(std::string_view text)
{
    text = trimmed(text);
    std::string result;
    result.reserve(text.size());
    for (std::size_t at = 0; at < text.size(); ++at)
        if (text.substr(at, 2) != "\r\n")
            result += text[at];
    return result;
}

PhonebookEntry tidied(PhonebookEntry entry)
{
    for (auto* text : {&entry.name, &entry.number, &entry.organization, &entry.phone, &entry.email})
        *text = tidied(std::string_view(*text));
    return entry;
}

PhonebookGroup tidied(PhonebookGroup group)
{
    group.name = tidied(std::string_view(group.name));
    for (auto& member : group.members)
        member = tidied(std::string_view(member));
    std::erase(group.members, "");
    return group;
}

} // namespace quelm
