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
    CutNames cuts;
    appendMembers(value, members, cuts);
    return members;
}

std::vector<std::string> cutNamesOf(const std::string& value)
{
    std::vector<std::string> members;
    CutNames cuts;
    appendMembers(value, members, cuts);
    return cuts.names;
}

Record group(const std::string& members) { return {"gTeam", ".sgen\r\n" + members + "\r\n.egen\r\n"}; }

std::vector<std::string> warningsOf(const std::string& members, const std::vector<std::string>& entries)
{
    return groupWarnings(*groupOf(group(members)), "/books/ann.xdb", [&entries](const std::string& name) {
        return std::ranges::find(entries, name) != entries.end();
    });
}

std::string cutTo(const std::string& name)
{
    return "the group \"Team\" sends nothing to a member: the name ends at its comma and is cut to \"" +
           name + "\"; save the member's entry and the group under names without a comma";
}

std::string goesTo(const std::string& name)
{
    return "the group \"Team\" does not reach a member: the name ends at its comma and is cut to \"" + name +
           "\"; the fax goes to the entry \"" + name +
           "\" instead; save the member's entry and the group under names without a comma";
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
    EXPECT_THAT(warningsOf(",uAnne,uBob", {"Anne", "Bob"}), IsEmpty());
    EXPECT_THAT(warningsOf(",uAnne,uBob", {"Anne"}),
                ElementsAre("the group \"Team\" sends nothing to its member \"Bob\", of whom the phonebook "
                            "\"/books/ann.xdb\" has no entry; save an entry of that name"));
    EXPECT_THAT(
        warningsOf(",uA,uB,uC,uD,uE", {"B"}),
        ElementsAre(
            "the group \"Team\" sends nothing to its members \"A\", \"C\", \"D\" and 1 more, of whom the "
            "phonebook \"/books/ann.xdb\" has no entries; save an entry for each"));
}

TEST(GroupMembers, WhoseNamesHoldACommaCannotBeMendedByAnEntry)
{
    EXPECT_THAT(warningsOf(",uAnne,uSOMMER, LENE,uBob", {"Anne", "SOMMER, LENE", "Bob"}),
                ElementsAre(cutTo("SOMMER")));
    EXPECT_THAT(cutNamesOf("uA,,"), ElementsAre("A"));
    EXPECT_THAT(cutNamesOf(",uSmith, Bob, Jr"), ElementsAre("Smith"));
    EXPECT_THAT(cutNamesOf(">Smith, Bob,>Lee, Ann,>Kim"), ElementsAre("Smith", "Lee"));
    for (const char* value : {",", ",uA,uB,", ">A,>B", "", "u", ",x,y", "xyz"})
        EXPECT_THAT(cutNamesOf(value), IsEmpty()) << value;
}

TEST(GroupMembers, WhoseCutNameIsAnothersAreNotSentTheFaxThatTheOtherIs)
{
    EXPECT_THAT(warningsOf(",uSmith, Bob", {"Smith", "Smith, Bob"}), ElementsAre(goesTo("Smith")));
    EXPECT_THAT(warningsOf(",uAnne,uSmith, Bob,uLee, Kim", {"Anne", "Smith"}),
                ElementsAre(goesTo("Smith"), cutTo("Lee")));
    // Behind the comma the component looks for the next "u".
    EXPECT_THAT(membersOf(",uSmith, Luise,uBob"), ElementsAre("Smith", "ise", "Bob"));
    EXPECT_THAT(warningsOf(",uSmith, Luise,uBob", {"Bob"}), ElementsAre(cutTo("Smith")));
    EXPECT_THAT(warningsOf(",uSmith, Luise,uBob", {"Bob", "ise"}),
                ElementsAre(cutTo("Smith"), goesTo("ise")));
}

TEST(GroupMembers, WithoutAnEntryAreNamedBesideThoseWhoseNamesAreCut)
{
    EXPECT_THAT(warningsOf(",uAnn, Bob,uZed,uKim", {"Ann", "Kim"}),
                ElementsAre(goesTo("Ann"),
                            "the group \"Team\" sends nothing to its member \"Zed\", of whom the phonebook "
                            "\"/books/ann.xdb\" has no entry; save an entry of that name"));
}

TEST(GroupMembers, OfHostileNamesAreShownInBoundsAndOnOneLine)
{
    std::string many;
    for (int i = 0; i < 1000; ++i)
        many += ",u" + std::to_string(i) + ", x";
    EXPECT_EQ(warningsOf(many, {}).size(), 3U);
    const auto warnings = warningsOf(",u" + std::string(9000, 'x') + ", y,uA\x1b[2J", {});
    EXPECT_EQ(warnings.size(), 2U);
    for (const auto& warning : warnings) {
        EXPECT_LT(warning.size(), 400U);
        EXPECT_EQ(warning.find('\x1b'), std::string::npos);
    }
}

} // namespace
} // namespace quelm
