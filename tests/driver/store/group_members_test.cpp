// Members of groups as the component finds them, and those who are sent nothing.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/store/group_members.h"

#include <gmock/gmock.h>

#include <algorithm>

namespace quelm {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::string> membersOf(std::string_view value)
{
    std::vector<std::string> members;
    appendMembers(value, members);
    return members;
}

Record group(const std::string& members) { return {"gTeam", ".sgen\r\n" + members + "\r\n.egen\r\n"}; }

std::string warningOf(const std::string& members, const std::vector<std::string>& entries)
{
    return missingMembersWarning(*groupOf(group(members)), "/books/ann.xdb",
                                 [&entries](const std::string& name) {
                                     return std::ranges::find(entries, name) != entries.end();
                                 })
        .value_or("nothing");
}

TEST(GroupMembers, AreReadWithEitherMarkAndWithOrWithoutACommaAtTheEnd)
{
    EXPECT_THAT(membersOf(",uAnne,uBernard"), ElementsAre("Anne", "Bernard"));
    EXPECT_THAT(membersOf(",uAnne,uBernard,"), ElementsAre("Anne", "Bernard"));
    EXPECT_THAT(membersOf(">A,>B"), ElementsAre("A", "B"));
    EXPECT_THAT(membersOf("uA,>B"), ElementsAre("B"));
    EXPECT_THAT(membersOf("xyz"), IsEmpty());
}

TEST(GroupMembers, AreThoseOfAReadableGroupAlone)
{
    EXPECT_EQ(groupOf(group(",uAnne"))->name, "Team");
    EXPECT_FALSE(groupOf({"uAnne", ".susg\r\n0\r\n.eusg\r\n"}));
    EXPECT_FALSE(groupOf({"gTeam", ".sgen\r\n,uAnne\r\n.egen\r\n.susg\r\n0\r\n.eusg\r\n"}))
        << "an entry then";
    EXPECT_FALSE(groupOf({"gTeam", ".sgen\r\n,uAnne"})) << "without an end";
    EXPECT_THAT(groupOf({"gTeam", ".sgen\r\n,uA\r\n.egen\r\n.sgen\r\n,uB\r\n.egen\r\n"})->members,
                ElementsAre("A", "B"));
}

TEST(GroupMembers, WithoutAnEntryAreNamedThreeOfThemAndHowManyMore)
{
    EXPECT_EQ(warningOf(",uAnne,uBob", {"Anne", "Bob"}), "nothing");
    EXPECT_EQ(warningOf(",uAnne,uBob", {"Anne"}),
              "the group \"Team\" sends nothing to its member \"Bob\", of whom the phonebook "
              "\"/books/ann.xdb\" has no entry; save an entry of that name");
    EXPECT_EQ(warningOf(",uA,uB,uC,uD,uE", {"B"}),
              "the group \"Team\" sends nothing to its members \"A\", \"C\", \"D\" and 1 more, of whom the "
              "phonebook \"/books/ann.xdb\" has no entries; save an entry for each");
}

TEST(GroupMembers, WhoseNamesHoldACommaCannotBeMendedByAnEntry)
{
    EXPECT_EQ(
        warningOf(",uAnne,uSOMMER, LUISE,uBob", {"Anne", "SOMMER, LUISE"}),
        "the group \"Team\" sends some of its members nothing, for a member's name ends at its comma, as "
        "\"SOMMER\" does; save these entries and the group under names without one");
    EXPECT_EQ(groupOf(group("uA,,"))->cutName, "A");
    EXPECT_EQ(groupOf(group(","))->cutName, "");
    EXPECT_EQ(groupOf(group(",uA,uB,"))->cutName, "");
    EXPECT_EQ(groupOf(group(">A,>B"))->cutName, "");
}

TEST(GroupMembers, OfHostileNamesAreShownInBoundsAndOnOneLine)
{
    const std::string warning = warningOf(",u" + std::string(9000, 'x') + ",uA\x1b[2J", {});
    EXPECT_LT(warning.size(), 400U);
    EXPECT_EQ(warning.find('\x1b'), std::string::npos);
}

} // namespace
} // namespace quelm
