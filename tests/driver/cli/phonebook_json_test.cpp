// Phonebooks as data.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/cli/phonebook_json.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <vector>

namespace quelm {
namespace {

using Json = nlohmann::json;

std::vector<Phonebook::Item> items()
{
    return {{entryKey("Ann"), PhonebookEntry{"Ann", "555", "Acme", "", "a@b"}},
            {groupKey("Team"), PhonebookGroup{"Team", {"Ann", "Bob"}}},
            {entryKey("Odd\xff"), UnreadableRecord{"its field \"name\" is blank"}}};
}

TEST(PhonebookJson, ABookHasItsEntriesGroupsAndWhatCannotBeRead)
{
    const Json json = Json::parse(phonebookJson("/a/b.xdb", items()));
    EXPECT_EQ(json["phonebook"], "/a/b.xdb");
    EXPECT_EQ(json["entries"], Json::parse(R"([{"name": "Ann", "number": "555", "organization": "Acme",
                                               "phone": "", "email": "a@b"}])"));
    EXPECT_EQ(json["groups"], Json::parse(R"([{"name": "Team", "members": ["Ann", "Bob"]}])"));
    EXPECT_EQ(json["unreadable"], Json::parse(R"([{"name": "Odd\ufffd",
                                                   "reason": "its field \"name\" is blank"}])"));
    EXPECT_EQ(Json::parse(phonebookJson("x", {}))["entries"], Json::array());
}

TEST(PhonebookJson, ARecordSaysWhatItIs)
{
    const auto all = items();
    EXPECT_EQ(Json::parse(itemJson(all[0], all))["kind"], "entry");
    const Json group = Json::parse(itemJson(all[1], all));
    EXPECT_EQ(group["kind"], "group");
    EXPECT_EQ(group["missing"], Json({"Bob"}));
    EXPECT_EQ(Json::parse(itemJson(all[2], all))["kind"], "unreadable");
}

TEST(PhonebookJson, AChangeSaysWhatItDidOrWouldDo)
{
    Outcome outcome;
    outcome.action = "removed";
    outcome.kind = "entry";
    outcome.name = "Ann";
    outcome.warnings = {"the group \"Team\" still has the member \"Ann\""};
    const Json json = Json::parse(changeJson(outcome, Doing::dryRun));
    EXPECT_EQ(json["action"], "removed");
    EXPECT_EQ(json["dryRun"], true);
    EXPECT_EQ(json["warnings"].size(), 1U);
    EXPECT_EQ(Json::parse(changeJson(outcome, Doing::really))["dryRun"], false);
}

} // namespace
} // namespace quelm
