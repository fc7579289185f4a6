// Takes groups apart, and names the members that are sent nothing.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/store/group_members.h"

#include "base/texts.h"
#include "base/translation.h"
#include "driver/store/record_fields.h"

#include <cstddef>

namespace quelm {

namespace {

/// The name ahead of a comma behind which no member begins.
std::string cutNameIn(std::string_view value)
{
    for (auto at = value.find(','); at != std::string_view::npos; at = value.find(',', at + 1)) {
        const auto behind = value.substr(at + 1);
        if (at == 0 || behind.empty() || behind.starts_with('u') || behind.starts_with('>'))
            continue;
        const auto before = value.substr(0, at);
        const auto begin = before.rfind(',') + 1; // 0 without a comma
        return std::string(before.substr(begin).substr(begin < before.size() ? 1 : 0));
    }
    return {};
}

} // namespace

void appendMembers(std::string_view value, std::vector<std::string>& members)
{
    bool angleLeft = true;
    for (;;) {
        auto mark = angleLeft ? value.find('>') : std::string_view::npos;
        angleLeft = mark != std::string_view::npos;
        if (!angleLeft)
            mark = value.find('u');
        if (mark == std::string_view::npos)
            return;
        value.remove_prefix(mark);
        const auto end = value.find(',');
        members.emplace_back(value.substr(0, end).substr(1));
        value.remove_prefix(end == std::string_view::npos ? value.size() : end);
    }
}

std::optional<GroupRecord> groupOf(const Record& record)
{
    GroupRecord group;
    bool isGroup = false;
    RecordFields fields(record.data);
    while (fields.next()) {
        if (fields.tag() == "usg")
            isGroup = false;
        else if (fields.tag() == "nam")
            group.name = fields.value();
        if (fields.tag() != "gen")
            continue;
        isGroup = true;
        group.name = record.key.empty() ? "" : record.key.substr(1);
        appendMembers(fields.value(), group.members);
        if (group.cutName.empty())
            group.cutName = cutNameIn(fields.value());
    }
    return isGroup && !fields.problem() ? std::optional(std::move(group)) : std::nullopt;
}

std::optional<std::string> missingMembersWarning(const GroupRecord& group, const std::string& path,
                                                 const std::function<bool(const std::string& name)>& hasEntry)
{
    constexpr std::size_t mostNamed = 3;
    std::string names;
    std::size_t missing = 0;
    for (const std::string& member : group.members) {
        if (hasEntry(member))
            continue;
        if (++missing <= mostNamed)
            names += (names.empty() ? "\"" : ", \"") + shownText(member, 40) + "\"";
    }
    if (missing == 0)
        return std::nullopt;
    if (!group.cutName.empty())
        // Translators: a group, and the beginning of a member's name.
        return localized(
            "the group \"%s\" sends some of its members nothing, for a member's name ends at its "
            "comma, as \"%s\" does; save these entries and the group under names without one",
            shownText(group.name, 40), shownText(group.cutName, 40));
    if (missing > mostNamed) {
        const std::size_t more = missing - mostNamed;
        // Translators: names, and how many there are besides.
        names = localizedCount("%s and %d more", "%s and %d more", more, names, more);
    }
    return localizedCount(
        // Translators: a group, the names of its members, and a file.
        "the group \"%s\" sends nothing to its member %s, of whom the phonebook \"%s\" has no entry; save "
        "an entry of that name",
        "the group \"%s\" sends nothing to its members %s, of whom the phonebook \"%s\" has no entries; save "
        "an entry for each",
        missing, shownText(group.name, 40), names, path);
}

} // namespace quelm
