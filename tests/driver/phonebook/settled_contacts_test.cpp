// What of a file goes in, and under which names.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/phonebook/settled_contacts.h"

#include "driver/phonebook/person.h"
#include "tests/driver/phonebook/phonebook_folder.h"

namespace quelm {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

class Settling : public testing::Test {
protected:
    void person(const std::string& name, const std::string& number, std::vector<std::string> categories = {})
    {
        addPerson(file, {++line, name, "", {{number}}, {}, {}, std::move(categories)});
    }

    void group(const std::string& name, const std::vector<std::string>& members)
    {
        addContact(file, ++line, PhonebookGroup{name, members});
    }

    /// Each as "name number" or "[group] member member".
    std::vector<std::string> settled(bool rename, const std::vector<Phonebook::Item>& present = {})
    {
        SettlingOptions options;
        options.rename = rename;
        result = settle(file, present, options);
        std::vector<std::string> all;
        for (const auto& contact : result.contacts)
            if (const auto* entry = std::get_if<PhonebookEntry>(&contact.content))
                all.push_back(entry->name + " " + entry->number);
            else
                all.push_back(shown(std::get<PhonebookGroup>(contact.content)));
        for (const auto& category : result.categories)
            all.push_back(shown(category));
        return all;
    }

    static std::string shown(const PhonebookGroup& group)
    {
        std::string text = "[" + group.name + "]";
        for (const auto& member : group.members)
            text += " " + member;
        return text;
    }

    static Phonebook::Item item(const std::string& name, const std::string& number)
    {
        return {entryKey(name), PhonebookEntry{name, number, "", "", ""}};
    }

    Contacts file;
    std::size_t line = 0;
    SettledContacts result;
};

TEST_F(Settling, NamesThatAreNotAllowedAreRefusedAndRenamingOffered)
{
    person("A=B", "1");
    person("***", "2");
    person("Ann", "none");
    EXPECT_THAT(settled(false), IsEmpty());
    ASSERT_THAT(result.refused, SizeIs(3));
    EXPECT_THAT(result.refused[0].reason, HasSubstr("\"A=B\": The Name must not contain \"=\""));
    EXPECT_TRUE(result.refused[0].mendable);
    EXPECT_FALSE(result.refused[1].mendable);
    EXPECT_FALSE(result.refused[2].mendable);
    EXPECT_THAT(settled(true), ElementsAre("A B 1"));
    EXPECT_THAT(result.renamed, ElementsAre(Renaming{1, "A=B", "A B"}));
    EXPECT_THAT(result.refused, SizeIs(2));
}

TEST_F(Settling, AMendedNameThatIsTakenGetsANumber)
{
    person("A=B", "1");
    person("A:B", "2");
    person("A B", "3");
    person("A;B", "1");
    EXPECT_THAT(settled(true), ElementsAre("A B 2 1", "A B 3 2", "A B 3", "A B 4 1"));
    EXPECT_THAT(result.renamed, SizeIs(3));
}

TEST_F(Settling, AMendedNameTakesNobodysPlaceInThePhonebook)
{
    person("A=B", "1");
    person("Ann", "2");
    EXPECT_THAT(settled(true, {item("A B", "9"), item("Ann", "9")}), ElementsAre("A B 2 1", "Ann 2"));
    // The same import again.
    EXPECT_THAT(settled(true, {item("A B", "9"), item("A B 2", "1")}), ElementsAre("A B 2 1", "Ann 2"));
}

TEST_F(Settling, TwoPeopleOfOneNameAreToldApart)
{
    person("Ann", "1");
    person("Ann", "2");
    group("Team", {"Ann"});
    EXPECT_THAT(settled(false), ElementsAre("Ann 1", "[Team] Ann"));
    EXPECT_TRUE(result.refused.at(0).mendable);
    EXPECT_THAT(settled(true), ElementsAre("Ann 1", "Ann 2 2"));
    EXPECT_EQ(result.refused.at(0).reason, "its member \"Ann\" may be one of several");
}

TEST_F(Settling, GroupsFollowTheirMembersNames)
{
    person("A=B", "1");
    group("T:1", {"A=B", "known"});
    EXPECT_THAT(settled(true), ElementsAre("A B 1", "[T 1] A B known"));
}

TEST_F(Settling, AllEntriesOfAPersonGetTheSameName)
{
    const std::string name(30, 'x');
    addPerson(file, {1, name, "", {{"1", Use::work}, {"2", Use::home}}, {}, {}, {}});
    EXPECT_THAT(settled(true), ElementsAre(name + " 1", std::string(24, 'x') + " - home 2"));
    EXPECT_THAT(settled(false), IsEmpty());
    EXPECT_THAT(result.refused, SizeIs(1));
}

TEST_F(Settling, ALongNameIsCutBetweenLetters)
{
    person("Bartholomäus Maximilian Freiherr e\u0301\u0301\u0301 von", "1");
    person(std::string(30, 'y') + "e\u0301", "2");
    EXPECT_THAT(settled(true), ElementsAre("Bartholomäus Maximilian Freiher 1", std::string(30, 'y') + " 2"));
}

TEST_F(Settling, CategoriesBecomeGroups)
{
    person("Ann", "1", {"A & B", "C"});
    person("Bob", "2", {"C", "C", ""});
    EXPECT_THAT(settled(true), ElementsAre("Ann 1", "Bob 2", "[A B] Ann", "[C] Ann Bob"));
    EXPECT_THAT(settled(false), ElementsAre("Ann 1", "Bob 2", "[C] Ann Bob"));
    EXPECT_THAT(result.refused.at(0).reason,
                HasSubstr("its category \"A & B\" can be no group: The Name must"));
    SettlingOptions options;
    options.categoryGroups = false;
    EXPECT_THAT(settle(file, {}, options).categories, IsEmpty());
}

TEST_F(Settling, ThousandsOfTheSameNameAreToldApartAtOnce)
{
    const std::string marks = "=:;!?%&$";
    for (std::size_t i = 0; i < 2000; ++i)
        person("A" + std::string(1, marks[i % 8]) + "B", std::to_string(i));
    EXPECT_THAT(settled(true), SizeIs(2000));
    EXPECT_EQ(result.renamed.back().to, "A B 2000");
}

} // namespace
} // namespace quelm
