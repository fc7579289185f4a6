// Lists, shows and finds the items of a phonebook.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/phonebook/listing.h"

#include "base/terminal/columns.h"
#include "base/texts.h"
#include "base/translation.h"

#include <algorithm>
#include <unordered_set>
#include <utility>

namespace quelm {
namespace {

std::string listed(const std::vector<std::string>& names)
{
    std::string text;
    for (const auto& name : names)
        text += (text.empty() ? "" : ", ") + oneLine(name);
    return text;
}

/// The name in a record's key.
std::string keyName(const Phonebook::Item& item)
{
    return oneLine(item.key.empty() ? "" : item.key.substr(1));
}

bool isGroupKey(const Phonebook::Item& item) { return item.key.starts_with(groupKey("")); }

bool matches(const Phonebook::Item& item, std::string_view name, bool group)
{
    if (const auto* found = std::get_if<PhonebookGroup>(&item.content))
        return group && found->name == name;
    if (const auto* found = std::get_if<PhonebookEntry>(&item.content))
        return !group && found->name == name;
    return item.key == (group ? groupKey(name) : entryKey(name));
}

const Phonebook::Item* firstMatch(const std::vector<Phonebook::Item>& items, std::string_view name,
                                  bool group)
{
    const auto found =
        std::ranges::find_if(items, [&](const Phonebook::Item& item) { return matches(item, name, group); });
    return found == items.end() ? nullptr : &*found;
}

} // namespace

std::string listText(const std::vector<Phonebook::Item>& items)
{
    std::vector<std::pair<std::string, std::string>> rows;
    std::size_t widest = 0;
    for (const auto& item : items) {
        if (const auto* entry = std::get_if<PhonebookEntry>(&item.content))
            rows.emplace_back(oneLine(entry->name), oneLine(entry->number));
        else if (const auto* group = std::get_if<PhonebookGroup>(&item.content))
            rows.emplace_back("[" + oneLine(group->name) + "]", listed(group->members));
        else
            rows.emplace_back(
                isGroupKey(item) ? "[" + keyName(item) + "]" : keyName(item),
                // Translators: %s is why: its field "name" is blank.
                localized("(unreadable: %s)", oneLine(std::get<UnreadableRecord>(item.content).reason)));
        widest = std::max(widest, widthOf(rows.back().first));
    }
    std::string text;
    for (const auto& [name, rest] : rows)
        text.append(name).append(widest - widthOf(name) + 2, ' ').append(rest).append("\n");
    return text;
}

std::string showText(const Phonebook::Item& item, const std::vector<Phonebook::Item>& items)
{
    std::string text;
    const auto line = [&text](const std::string& label, const std::string& value) {
        if (!value.empty())
            text += label + ": " + oneLine(value) + "\n";
    };
    if (const auto* entry = std::get_if<PhonebookEntry>(&item.content)) {
        // Translators: these are labels; a colon and the value follow.
        line(localized("name"), entry->name);
        // Translators: of the fax.
        line(localized("number"), entry->number);
        line(localized("organization"), entry->organization);
        line(localized("phone"), entry->phone);
        line(localized("email"), entry->email);
    } else if (const auto* group = std::get_if<PhonebookGroup>(&item.content)) {
        std::unordered_set<std::string_view> keys;
        for (const auto& other : items)
            keys.insert(other.key);
        line(localized("group"), group->name);
        for (const auto& member : group->members)
            line(localized("member"),
                 keys.contains(entryKey(member)) ? member : localized("%s (not in the phonebook)", member));
    } else {
        line(localized("record"), item.key);
        // Translators: a label ahead of the reason why the record cannot be read.
        line(localized("unreadable"), std::get<UnreadableRecord>(item.content).reason);
    }
    return text;
}

const Phonebook::Item* findItem(const std::vector<Phonebook::Item>& items, std::string_view name)
{
    if (name.size() > 2 && name.front() == '[' && name.back() == ']') {
        if (const auto* group = firstMatch(items, name.substr(1, name.size() - 2), true))
            return group;
    }
    const auto* entry = firstMatch(items, name, false);
    return entry != nullptr ? entry : firstMatch(items, name, true);
}

std::string described(const PhonebookEntry& entry)
{
    // Translators: the subject of sentences such as: %s is in the phonebook already.
    return localized("the entry \"%s\"", oneLine(entry.name));
}

std::string described(const PhonebookGroup& group)
{
    // Translators: the subject of sentences such as: %s is in the phonebook already.
    return localized("the group \"%s\"", oneLine(group.name));
}

std::string described(const Phonebook::Item& item)
{
    if (const auto* entry = std::get_if<PhonebookEntry>(&item.content))
        return described(*entry);
    if (const auto* group = std::get_if<PhonebookGroup>(&item.content))
        return described(*group);
    // Translators: the subject of sentences such as: %s is left out.
    return localized("the unreadable record \"%s\"", keyName(item));
}

std::string countText(const std::vector<Phonebook::Item>& items)
{
    std::size_t entries = 0;
    std::size_t groups = 0;
    for (const auto& item : items) {
        entries += std::holds_alternative<PhonebookEntry>(item.content) ? 1 : 0;
        groups += std::holds_alternative<PhonebookGroup>(item.content) ? 1 : 0;
    }
    return localizedCount("%d entry", "%d entries", entries, entries) + ", " +
           localizedCount("%d group", "%d groups", groups, groups);
}

std::vector<std::string> unreadableRecords(const std::vector<Phonebook::Item>& items, const std::string& path)
{
    std::vector<std::string> lines;
    for (const auto& item : items) {
        if (const auto* unreadable = std::get_if<UnreadableRecord>(&item.content))
            // Translators: a phonebook, the unreadable record "Ann", and why it cannot be read.
            lines.push_back(localized("%s: %s is left out: %s", oneLine(path), described(item),
                                      oneLine(unreadable->reason)));
    }
    return lines;
}

std::vector<std::variant<PhonebookEntry, PhonebookGroup>>
readableItems(const std::vector<Phonebook::Item>& items)
{
    std::vector<std::variant<PhonebookEntry, PhonebookGroup>> contents;
    contents.reserve(items.size());
    for (const auto& item : items)
        if (const auto* entry = std::get_if<PhonebookEntry>(&item.content))
            contents.emplace_back(*entry);
        else if (const auto* group = std::get_if<PhonebookGroup>(&item.content))
            contents.emplace_back(*group);
    return contents;
}

} // namespace quelm
