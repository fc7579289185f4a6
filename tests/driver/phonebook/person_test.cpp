// Entries of a person.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/phonebook/person.h"

#include "tests/driver/phonebook/phonebook_folder.h"

namespace quelm {
namespace {

using testing::ElementsAre;
using testing::SizeIs;

std::vector<std::string> entriesOf(const Person& person)
{
    Contacts all;
    addPerson(all, person);
    std::vector<std::string> entries;
    for (const auto& contact : all.contacts) {
        const auto& entry = std::get<PhonebookEntry>(contact.content);
        entries.push_back(entry.name + "|" + entry.number + "|" + entry.phone + "|" + entry.email);
    }
    return entries;
}

TEST(Person, EveryFaxNumberIsAnEntry)
{
    EXPECT_THAT(entriesOf({1,
                           " Ann ",
                           "",
                           {{"1", Use::home}, {"2", Use::work}, {"3"}, {"2"}, {"4", Use::home}, {" "}},
                           {{"7"}, {"8", Use::home}},
                           {{"w@x", Use::work}},
                           {}}),
                ElementsAre("Ann|2|7|w@x", "Ann - 2|3|7|w@x", "Ann - home|1|8|", "Ann - home 2|4|8|"));
}

TEST(Person, WhoHasNoFaxIsCountedAndWhoHasTooManyRefused)
{
    Contacts all;
    addPerson(all, {1, "Ann", "", {{""}}, {{"1"}}, {}, {}});
    EXPECT_EQ(all.withoutNumber, 1U);
    Person busy{2, "Bob", "", {}, {}, {}, {}};
    for (int i = 0; i < 101; ++i)
        busy.faxes.push_back({std::to_string(i)});
    addPerson(all, busy);
    EXPECT_THAT(all.contacts, SizeIs(0));
    EXPECT_EQ(all.refused.at(0).reason, "has more than 100 fax numbers of a kind; mend the card");
}

TEST(Person, CategoriesGoWithTheFirstEntryAndExtensionsAreCounted)
{
    Contacts all;
    addPerson(all, {1, "Ann", "", {{"1 ext 2", Use::home}, {"3"}}, {}, {}, {"A"}});
    ASSERT_THAT(all.contacts, SizeIs(2));
    EXPECT_THAT(all.contacts[0].categories, ElementsAre("A"));
    EXPECT_THAT(all.contacts[1].categories, SizeIs(0));
    EXPECT_EQ(all.contacts[1].markSize, std::string(" - home").size());
    EXPECT_EQ(all.extensions, 1U);
}

} // namespace
} // namespace quelm
