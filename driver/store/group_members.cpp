// Takes groups apart, and names the members that are sent nothing.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/store/group_members.h"

#include "base/texts.h"
#include "base/translation.h"
#include "driver/store/record_fields.h"

#include <algorithm>
#include <cstddef>
#include <set>

namespace quelm {

namespace {

bool isMark(char character) { return character == 'u' || character == '>'; }

/// Whether what stands from `begin` to the next comma is the rest of a name with a comma in it.
bool isRest(std::string_view value, std::size_t begin)
{
    return begin > 1 && begin < value.size() && !isMark(value[begin]);
}

/// The names that end at a comma behind which no member begins.
void appendCutNames(std::string_view value, std::vector<std::string>& names)
{
    constexpr auto none = std::string_view::npos;
    auto last = none; // where the member begins that a rest would belong to
    for (std::size_t begin = 0; begin < value.size();) {
        const auto end = std::min(value.find(',', begin), value.size());
        if (isMark(value[begin])) {
            last = begin;
        } else if (last != none && isRest(value, begin)) {
            names.emplace_back(value.substr(last + 1, value.find(',', last) - last - 1));
            last = none;
        }
        begin = end + 1;
    }
}

constexpr std::size_t mostNamed = 3;

/// The sentences about cut names; adds to `told` whom they speak of.
std::vector<std::string> cutWarnings(const GroupRecord& group,
                                     const std::function<bool(const std::string&)>& hasEntry,
                                     std::set<std::string>& told)
{
    std::vector<std::string> warnings;
    const auto warn = [&](const std::string& name, bool isAnothers) {
        if (!told.insert(name).second || warnings.size() == mostNamed)
            return;
        const std::string shown = shownText(name, 40);
        warnings.push_back(
            isAnothers
                // Translators: a group, and what is left of a member's name, twice.
                ? localized(
                      "the group \"%s\" does not reach a member: the name ends at its comma and is cut to "
                      "\"%s\"; the fax goes to the entry \"%s\" instead; save the member's entry and the "
                      "group under names without a comma",
                      shownText(group.name, 40), shown, shown)
                // Translators: a group, and what is left of a member's name.
                : localized(
                      "the group \"%s\" sends nothing to a member: the name ends at its comma and is cut to "
                      "\"%s\"; save the member's entry and the group under names without a comma",
                      shownText(group.name, 40), shown));
    };
    for (const auto& name : group.cuts.names)
        warn(name, hasEntry(name));
    // What is left behind the comma is a name to the component, too, mostly of nobody.
    for (const auto& name : group.cuts.rests)
        if (hasEntry(name))
            warn(name, true);
        else
            told.insert(name);
    return warnings;
}

} // namespace

void appendMembers(std::string_view value, std::vector<std::string>& members, CutNames& cuts)
{
    appendCutNames(value, cuts.names);
    bool angleLeft = true;
    for (std::size_t at = 0; at < value.size();) {
        auto mark = angleLeft ? value.find('>', at) : std::string_view::npos;
        angleLeft = mark != std::string_view::npos;
        if (!angleLeft)
            mark = value.find('u', at);
        if (mark == std::string_view::npos)
            return;
        at = std::min(value.find(',', mark), value.size());
        members.emplace_back(value.substr(mark + 1, at - mark - 1));
        if (!cuts.names.empty() && isRest(value, value.rfind(',', mark) + 1))
            cuts.rests.push_back(members.back());
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
        appendMembers(fields.value(), group.members, group.cuts);
    }
    return isGroup && !fields.problem() ? std::optional(std::move(group)) : std::nullopt;
}

std::vector<std::string> groupWarnings(const GroupRecord& group, const std::string& path,
                                       const std::function<bool(const std::string& name)>& hasEntry)
{
    std::set<std::string> told;
    auto warnings = cutWarnings(group, hasEntry, told);
    std::string names;
    std::size_t missing = 0;
    for (const std::string& member : group.members) {
        if (told.contains(member) || hasEntry(member))
            continue;
        if (++missing <= mostNamed)
            names += (names.empty() ? "\"" : ", \"") + shownText(member, 40) + "\"";
    }
    if (missing == 0)
        return warnings;
    if (missing > mostNamed) {
        const std::size_t more = missing - mostNamed;
        // Translators: names, and how many there are besides.
        names = localizedCount("%s and %d more", "%s and %d more", more, names, more);
    }
    warnings.push_back(localizedCount(
        // Translators: a group, the names of its members, and a file.
        "the group \"%s\" sends nothing to its member %s, of whom the phonebook \"%s\" has no entry; save "
        "an entry of that name",
        "the group \"%s\" sends nothing to its members %s, of whom the phonebook \"%s\" has no entries; save "
        "an entry for each",
        missing, shownText(group.name, 40), names, path));
    return warnings;
}

} // namespace quelm
