// Makes JSON of phonebooks.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/cli/phonebook_json.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <variant>

namespace quelm {
namespace {

using Json = nlohmann::ordered_json;

Json objectOf(const PhonebookEntry& entry)
{
    return {{"name", entry.name},
            {"number", entry.number},
            {"organization", entry.organization},
            {"phone", entry.phone},
            {"email", entry.email}};
}

Json objectOf(const PhonebookGroup& group) { return {{"name", group.name}, {"members", group.members}}; }

Json objectOf(const Phonebook::Item& item, const UnreadableRecord& record)
{
    return {{"name", item.key.empty() ? "" : item.key.substr(1)}, {"reason", record.reason}};
}

std::string written(const Json& json)
{
    constexpr int indentation = 2;
    return json.dump(indentation, ' ', false, Json::error_handler_t::replace) + "\n";
}

Json withKind(const char* kind, const Json& object)
{
    Json json = {{"kind", kind}};
    json.update(object);
    return json;
}

} // namespace

std::string phonebookJson(const std::string& path, const std::vector<Phonebook::Item>& items)
{
    Json json = {{"phonebook", path},
                 {"entries", Json::array()},
                 {"groups", Json::array()},
                 {"unreadable", Json::array()}};
    for (const auto& item : items)
        if (const auto* entry = std::get_if<PhonebookEntry>(&item.content))
            json["entries"].push_back(objectOf(*entry));
        else if (const auto* group = std::get_if<PhonebookGroup>(&item.content))
            json["groups"].push_back(objectOf(*group));
        else
            json["unreadable"].push_back(objectOf(item, std::get<UnreadableRecord>(item.content)));
    return written(json);
}

std::string itemJson(const Phonebook::Item& item, const std::vector<Phonebook::Item>& items)
{
    if (const auto* entry = std::get_if<PhonebookEntry>(&item.content))
        return written(withKind("entry", objectOf(*entry)));
    const auto* group = std::get_if<PhonebookGroup>(&item.content);
    if (group == nullptr)
        return written(withKind("unreadable", objectOf(item, std::get<UnreadableRecord>(item.content))));
    Json json = withKind("group", objectOf(*group));
    json["missing"] = Json::array();
    for (const auto& member : group->members)
        if (std::ranges::none_of(items, [key = entryKey(member)](const auto& one) { return one.key == key; }))
            json["missing"].push_back(member);
    return written(json);
}

std::string changeJson(const Outcome& outcome, Doing doing)
{
    return written({{"action", outcome.action},
                    {"kind", outcome.kind},
                    {"name", outcome.name},
                    {"dryRun", doing == Doing::dryRun},
                    {"warnings", outcome.warnings}});
}

} // namespace quelm
