// Lists, shows and finds the items of a phonebook.
#include "driver/phonebook/listing.h"

#include "driver/core/log.h"

#include <glib.h>

#include <algorithm>
#include <unordered_set>
#include <utility>

namespace quelm {
namespace {

/// How many columns a text takes on a terminal.
std::size_t widthOf(const std::string& text)
{
    std::size_t width = 0;
    for (const char* at = text.c_str(); *at != '\0'; at = g_utf8_next_char(at)) {
        const auto character = g_utf8_get_char(at);
        if (g_unichar_iszerowidth(character) == FALSE)
            width += g_unichar_iswide(character) != FALSE ? 2 : 1;
    }
    return width;
}

/// As one line of UTF-8, whatever a record holds.
std::string shown(const std::string& text)
{
    char* valid = g_utf8_make_valid(text.data(), static_cast<gssize>(text.size()));
    std::string copy = valid;
    g_free(valid);
    return oneLine(std::move(copy));
}

std::string listed(const std::vector<std::string>& names)
{
    std::string text;
    for (const auto& name : names)
        text += (text.empty() ? "" : ", ") + shown(name);
    return text;
}

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
            rows.emplace_back(shown(entry->name), shown(entry->number));
        else if (const auto* group = std::get_if<PhonebookGroup>(&item.content))
            rows.emplace_back("[" + shown(group->name) + "]", listed(group->members));
        else
            continue;
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
    const auto line = [&text](const char* label, const std::string& value, const char* remark = "") {
        if (!value.empty())
            text += std::string(label) + ": " + shown(value) + remark + "\n";
    };
    if (const auto* entry = std::get_if<PhonebookEntry>(&item.content)) {
        line("name", entry->name);
        line("number", entry->number);
        line("organization", entry->organization);
        line("phone", entry->phone);
        line("email", entry->email);
    } else if (const auto* group = std::get_if<PhonebookGroup>(&item.content)) {
        std::unordered_set<std::string_view> keys;
        for (const auto& other : items)
            keys.insert(other.key);
        line("group", group->name);
        for (const auto& member : group->members)
            line("member", member, keys.contains(entryKey(member)) ? "" : " (not in the phonebook)");
    } else {
        line("record", item.key);
        line("unreadable", std::get<UnreadableRecord>(item.content).reason);
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

std::string described(const Phonebook::Item& item)
{
    if (const auto* entry = std::get_if<PhonebookEntry>(&item.content))
        return "the entry \"" + shown(entry->name) + "\"";
    if (const auto* group = std::get_if<PhonebookGroup>(&item.content))
        return "the group \"" + shown(group->name) + "\"";
    return "the unreadable record \"" + shown(item.key.empty() ? "" : item.key.substr(1)) + "\"";
}

std::vector<std::string> unreadableRecords(const std::vector<Phonebook::Item>& items, const std::string& path)
{
    std::vector<std::string> lines;
    for (const auto& item : items) {
        if (const auto* unreadable = std::get_if<UnreadableRecord>(&item.content))
            lines.push_back(shown(path) + ": " + described(item) +
                            " is left out: " + shown(unreadable->reason));
    }
    return lines;
}

std::vector<std::variant<PhonebookEntry, PhonebookGroup>>
readableItems(const std::vector<Phonebook::Item>& items)
{
    std::vector<std::variant<PhonebookEntry, PhonebookGroup>> contents;
    contents.reserve(items.size());
    for (const auto& item : items) {
        if (const auto* entry = std::get_if<PhonebookEntry>(&item.content))
            contents.emplace_back(*entry);
        else if (const auto* group = std::get_if<PhonebookGroup>(&item.content))
            contents.emplace_back(*group);
    }
    return contents;
}

} // namespace quelm
