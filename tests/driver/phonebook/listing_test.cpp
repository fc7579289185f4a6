// Lists, and finding what a user names.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/phonebook/listing.h"

#include "tests/driver/phonebook/phonebook_folder.h"

namespace quelm {
namespace {

using testing::ElementsAre;

std::vector<Phonebook::Item> items()
{
    return {{"uAnn", PhonebookEntry{"Ann", "1", "Acme\nEast", "2", "a@b"}},
            {"u田中", PhonebookEntry{"田中", "2", "", "", ""}},
            {"gAnn", PhonebookGroup{"Ann", {"Ann", "Gone"}}},
            {"gTeam", PhonebookGroup{"Team", {"田中"}}},
            {"uBad", UnreadableRecord{"its field \"name\" is blank", true}},
            {"gAll", UnreadableRecord{"its field \"member\" has no end", true}}};
}

std::string found(const std::string& name)
{
    const auto all = items();
    const auto* item = findItem(all, name);
    return item == nullptr ? "nothing" : described(*item);
}

TEST(Listing, AlignsNumbersAndMembersAndMarksWhatCannotBeRead)
{
    EXPECT_EQ(listText(items()), "Ann     1\n田中    2\n[Ann]   Ann, Gone\n[Team]  田中\n"
                                 "Bad     (unreadable: its field \"name\" is blank)\n"
                                 "[All]   (unreadable: its field \"member\" has no end)\n");
    EXPECT_EQ(listText({}), "");
}

TEST(Listing, StaysOneLineForEachWhateverARecordHolds)
{
    EXPECT_EQ(listText({{"uA", PhonebookEntry{"A\nB\x1b", "1\xff", "", "", ""}}}), "A B   1\xef\xbf\xbd\n");
}

TEST(Listing, ShowsTheFieldsThatThereAre)
{
    const auto all = items();
    EXPECT_EQ(showText(all[0], all), "name: Ann\nnumber: 1\norganization: Acme East\nphone: 2\nemail: a@b\n");
    EXPECT_EQ(showText(all[1], all), "name: 田中\nnumber: 2\n");
    EXPECT_EQ(showText(all[2], all), "group: Ann\nmember: Ann\nmember: Gone (not in the phonebook)\n");
    EXPECT_EQ(showText(all[4], all), "record: uBad\nunreadable: its field \"name\" is blank\n");
}

TEST(Listing, FindsAnEntryBeforeAGroupAndAGroupInBrackets)
{
    EXPECT_EQ(found("Ann"), "the entry \"Ann\"");
    EXPECT_EQ(found("[Ann]"), "the group \"Ann\"");
    EXPECT_EQ(found("Team"), "the group \"Team\"");
    EXPECT_EQ(found("Bad"), "the unreadable record \"Bad\"");
    for (const auto* name : {"ann", "", "[]", "[田中]", "Gone"})
        EXPECT_EQ(found(name), "nothing") << name;
}

TEST(Listing, TellsOfUnreadableRecords)
{
    EXPECT_THAT(
        unreadableRecords(items(), "book.xdb"),
        ElementsAre("book.xdb: the unreadable record \"Bad\" is left out: its field \"name\" is blank",
                    "book.xdb: the unreadable record \"All\" is left out: its field \"member\" has no end"));
    EXPECT_EQ(readableItems(items()).size(), 4U);
}

} // namespace
} // namespace quelm
