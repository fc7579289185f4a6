// CSV files of entries and groups.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/phonebook/contacts.h"
#include "tests/driver/phonebook/phonebook_folder.h"

namespace quelm {
namespace {

using test::failureLine;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

using Content = std::variant<PhonebookEntry, PhonebookGroup>;

SettledContacts parsed(const std::string& text) { return test::settled(readCsvContacts(text, "list.csv")); }

std::string refusal(const std::string& row)
{
    const auto contacts = parsed("name,number,organization,phone,email,type,members,mailbox\n" + row + "\n");
    EXPECT_THAT(contacts.contacts, IsEmpty());
    if (contacts.refused.size() != 1)
        return std::to_string(contacts.refused.size()) + " refused";
    EXPECT_EQ(contacts.refused[0].line, 2U);
    return contacts.refused[0].reason;
}

std::string headerRefusal(const std::string& text)
{
    return failureLine([&] { parsed(text); });
}

TEST(CsvContacts, ReadsEntriesAndGroups)
{
    const auto all = parsed("members,type,name,number,email,organization,phone\n"
                            ",, Ann ,1,a@b,\"Acme, Inc.\",2\n"
                            ",entry,Bob,2,,,\n"
                            "\"Ann, Bob,\",group,Team,,,,\n");
    ASSERT_THAT(all.contacts, SizeIs(3));
    EXPECT_EQ(all.contacts[0].content, Content(PhonebookEntry{"Ann", "1", "Acme, Inc.", "2", "a@b"}));
    EXPECT_EQ(all.contacts[1].content, Content(PhonebookEntry{"Bob", "2", "", "", ""}));
    EXPECT_EQ(all.contacts[2].content, Content(PhonebookGroup{"Team", {"Ann", "Bob"}}));
    EXPECT_EQ(all.contacts[2].line, 4U);
    EXPECT_THAT(all.refused, IsEmpty());
}

TEST(CsvContacts, CountsMailboxesWhichPhonebooksDoNotKeep)
{
    EXPECT_EQ(parsed("name,number,mailbox\nAnn,1,12\nBob,2,\nCid,x,9\n").mailboxes, 1U);
}

TEST(CsvContacts, RefusesRowsOneByOne)
{
    EXPECT_EQ(refusal("Ann,1"), "has 2 fields where the first line names 8");
    EXPECT_EQ(refusal(",1,,,,,,"), "the name is missing");
    EXPECT_EQ(refusal("Ann,,,,,,,"), "the fax number is missing");
    EXPECT_EQ(refusal("Ann,1,,,,person,,"), "the type \"person\" is neither entry nor group");
    EXPECT_EQ(refusal("Ann,1,,,,,Bob,"), "only a group has members; write group as its type");
    EXPECT_EQ(refusal("Team,1,,,,group,Bob,"), "a group has no number");
    EXPECT_EQ(refusal("Team,,,,,group,,"), "the group has no member");
    EXPECT_EQ(refusal("Team,,,,,group,\",,\","), "the group has no member");
    EXPECT_EQ(refusal("A\"n\",1,,,,,,").substr(0, 15), "quotation marks");
    const auto all = parsed("name,number\nA@n,1\nAnn,1\nBob\n");
    EXPECT_THAT(all.contacts, SizeIs(1));
    ASSERT_THAT(all.refused, SizeIs(2));
    EXPECT_EQ(all.refused[0].line, 2U);
    EXPECT_EQ(all.refused[1].line, 4U);
}

TEST(CsvContacts, NeedsAFirstLineThatNamesTheColumns)
{
    EXPECT_EQ(headerRefusal(""), "list.csv:1: the first line must name the columns, such as name,number");
    EXPECT_EQ(headerRefusal("name\nAnn\n"),
              "list.csv:1: the column number is missing; the first line names the columns");
    EXPECT_EQ(headerRefusal("name,number,name\n"), "list.csv:1: the column name stands twice");
    EXPECT_EQ(headerRefusal("\nname,colour\n"),
              "list.csv:2: the column number is missing; the first line names the columns");
    EXPECT_EQ(headerRefusal("size,colour\n"), "list.csv:1: unknown column \"size\"; the columns are name, "
                                              "number, organization, phone, email, type, members, mailbox");
    EXPECT_EQ(headerRefusal("na\xff,number\n").substr(0, 24), "list.csv:1: is not UTF-8");
}

TEST(CsvContacts, WritesOneLineForEach)
{
    EXPECT_EQ(writeCsvContacts({PhonebookEntry{"Ann", "1", "Acme, Inc.", "2", "a@b"},
                                PhonebookGroup{"Team", {"Ann", "Bob"}}}),
              "name,number,organization,phone,email,type,members\n"
              "Ann,1,\"Acme, Inc.\",2,a@b,entry,\n"
              "Team,,,,,group,\"Ann,Bob\"\n");
}

} // namespace
} // namespace quelm
