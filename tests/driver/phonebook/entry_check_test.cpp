// What an entry or group must be like to be kept.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/phonebook/entry_check.h"

#include "tests/driver/phonebook/phonebook_folder.h"

namespace quelm {
namespace {

using testing::HasSubstr;
using testing::Optional;

PhonebookEntry ann() { return {"Ann", "555-1234", "", "", ""}; }

std::string e(std::size_t count)
{
    std::string text;
    for (std::size_t i = 0; i < count; ++i)
        text += "\xc3\xab";
    return text;
}

TEST(Entry, NeedsANameAndAFaxNumber)
{
    EXPECT_EQ(problemWith(ann()), std::nullopt);
    EXPECT_THAT(problemWith(PhonebookEntry{"", "1", "", "", ""}), Optional(HasSubstr("name is missing")));
    EXPECT_THAT(problemWith(PhonebookEntry{"Ann", "", "", "", ""}),
                Optional(HasSubstr("fax number is missing")));
}

TEST(Entry, TakesTextsAsLongAsTheDialogsFieldsInCharacters)
{
    PhonebookEntry entry{e(31), std::string(46, '1'), e(59), std::string(46, '2'), e(59)};
    EXPECT_EQ(problemWith(entry), std::nullopt);
    for (auto text : {&PhonebookEntry::name, &PhonebookEntry::organization, &PhonebookEntry::email}) {
        auto longer = entry;
        longer.*text += "e";
        EXPECT_THAT(problemWith(longer), Optional(HasSubstr("are possible")));
    }
    for (auto text : {&PhonebookEntry::number, &PhonebookEntry::phone}) {
        auto longer = entry;
        longer.*text += "1";
        EXPECT_THAT(problemWith(longer), Optional(HasSubstr("47 characters; 46 are possible")));
    }
}

TEST(Entry, IsHeldToTheDialogsRulesForNamesAndNumbers)
{
    for (const auto* name : {"Zoë O'Neil-Smith Jr.", "田中 2", "Ann - home"})
        EXPECT_EQ(problemWith(PhonebookEntry{name, "1", "", "", ""}), std::nullopt) << name;
    for (const auto* name : {"Miller, Ann", "a@b", "a\nb", "[Ann]", "a\xff", "u>"})
        EXPECT_NE(problemWith(PhonebookEntry{name, "1", "", "", ""}), std::nullopt) << name;
    for (const auto* number : {"+1 (555) 12/3-4", "*#1,,2", "1"})
        EXPECT_EQ(problemWith(PhonebookEntry{"Ann", number, "", number, ""}), std::nullopt) << number;
    for (const auto* number : {"call me", "---", "1\n2", "1\xff", "1;2"}) {
        EXPECT_NE(problemWith(PhonebookEntry{"Ann", number, "", "", ""}), std::nullopt) << number;
        EXPECT_THAT(problemWith(PhonebookEntry{"Ann", "1", "", number, ""}),
                    Optional(HasSubstr("phone number")))
            << number;
    }
}

TEST(Entry, HoldsNoControlCharacterInAnyText)
{
    auto entry = ann();
    entry.organization = "אקמה, \"East\"";
    EXPECT_EQ(problemWith(entry), std::nullopt);
    for (const auto* text : {"Acme\nSales", "Acme\x1b[0m", "Acme\u009b0m", "Acme\u2028"}) {
        entry.organization = text;
        EXPECT_THAT(problemWith(entry),
                    Optional(HasSubstr("the organization holds a line break or control")));
    }
    entry.organization = "Acme\xff";
    EXPECT_THAT(problemWith(entry), Optional(HasSubstr("organization is not UTF-8")));
    entry.organization.clear();
    entry.email = "a@b\nc";
    EXPECT_THAT(problemWith(entry), Optional(HasSubstr("e-mail address holds a line break")));
}

TEST(Entry, IsRefusedWhenTheRecordsMarksWouldCutIt)
{
    EXPECT_THAT(problemWith(PhonebookEntry{"Dr.enamel", "1", "", "", ""}),
                Optional(HasSubstr("mark of the record format")));
    EXPECT_THAT(problemWith(PhonebookEntry{"Ann", "1", "", "", "x@y.emlen.ecmp.eeml"}),
                Optional(HasSubstr("mark of the record format")));
    EXPECT_EQ(problemWith(PhonebookEntry{"Ann.senam", "1", "a.senam", "", "x@a.enam"}), std::nullopt);
}

TEST(Group, NeedsANameOfTheDialogsRulesAndAMember)
{
    EXPECT_EQ(problemWith(PhonebookGroup{"Team", {"Ann"}}), std::nullopt);
    EXPECT_THAT(problemWith(PhonebookGroup{"", {"Ann"}}), Optional(HasSubstr("name is missing")));
    EXPECT_THAT(problemWith(PhonebookGroup{"T,", {"Ann"}}), Optional(HasSubstr("must not contain \",\"")));
    EXPECT_THAT(problemWith(PhonebookGroup{std::string(32, 'x'), {"Ann"}}),
                Optional(HasSubstr("31 are possible")));
    EXPECT_THAT(problemWith(PhonebookGroup{"Team", {}}), Optional(HasSubstr("has no member")));
    EXPECT_THAT(problemWith(PhonebookGroup{"Team", {"a\xff"}}), Optional(HasSubstr("not UTF-8")));
    for (const auto* name : {"a\nb", "a\u009b1m", "a\u2029"})
        EXPECT_THAT(problemWith(PhonebookGroup{"Team", {"Ann", name}}),
                    Optional(HasSubstr("name of a member holds a line break")));
    EXPECT_THAT(problemWith(PhonebookGroup{"Team", {"a,ub"}}), Optional(HasSubstr("cannot be kept")));
    EXPECT_THAT(problemWith(PhonebookGroup{"Team", {"a", "b.egen"}}), Optional(HasSubstr("cannot be kept")));
}

} // namespace
} // namespace quelm
