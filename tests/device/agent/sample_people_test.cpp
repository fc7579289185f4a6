// The people of the sample directory.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/agent/sample_people.h"

#include "base/texts.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <set>

namespace {

using quelm::device::samplePeople;
using quelm::device::SamplePerson;
using testing::HasSubstr;
using testing::MatchesRegex;
using testing::Not;

bool isOf(const std::string& text, const std::string& firstLetters) { return text.starts_with(firstLetters); }

TEST(SamplePeopleTest, ThereAreSeveralHundredAndNoTwoShareANumberANameOrAnAddress)
{
    const auto people = samplePeople();
    EXPECT_EQ(people.size(), 320U);
    std::set<std::string> numbers;
    std::set<std::string> names;
    std::set<std::string> addresses;
    for (const SamplePerson& person : people) {
        numbers.insert({person.fax, person.phone});
        names.insert(person.fullName());
        addresses.insert(person.mail);
    }
    EXPECT_EQ(numbers.size(), 2 * people.size());
    EXPECT_EQ(names.size(), people.size());
    EXPECT_EQ(addresses.size(), people.size());
}

TEST(SamplePeopleTest, NumbersAndAddressesAreNobodys)
{
    for (const SamplePerson& person : samplePeople()) {
        EXPECT_THAT(person.fax, MatchesRegex("\\+1 555 01[0-9][0-9] 2[0-9][0-9]"));
        EXPECT_THAT(person.phone, MatchesRegex("\\+1 555 01[0-9][0-9] 1[0-9][0-9]"));
        EXPECT_THAT(person.mail, MatchesRegex("[a-z-]+\\.[0-9][0-9]@[a-z-]+\\.example"));
    }
}

TEST(SamplePeopleTest, NamesAreOfManyScripts)
{
    const auto people = samplePeople();
    for (const char* surname :
         {"Müller", "Παπαδοπούλου", "Щербаков", "Łęcka", "Øster", "Öztürk", "לוי", "王", "O'Rourke"})
        EXPECT_TRUE(std::ranges::any_of(people, [&](const auto& person) {
            return isOf(person.surname, surname);
        })) << surname;
    for (const SamplePerson& person : people)
        EXPECT_TRUE(quelm::isPlainText(person.fullName()) && quelm::isPlainText(person.organization));
}

TEST(SamplePeopleTest, TheyAreTheSameEachTime)
{
    EXPECT_EQ(quelm::device::sampleLdif("dc=example"), quelm::device::sampleLdif("dc=example"));
    EXPECT_EQ(samplePeople().at(16).fullName(), "Jürgen Müller");
    EXPECT_EQ(samplePeople().at(16).fax, "+1 555 0101 201");
}

TEST(SamplePeopleTest, LdifIsAsciiAndBearsNamesInBase64)
{
    const std::string ldif = quelm::device::sampleLdif("dc=example");
    EXPECT_TRUE(std::ranges::all_of(ldif, [](unsigned char byte) { return byte < 0x80; }));
    EXPECT_THAT(ldif, HasSubstr("sn:: TcO8bGxlcg==\n")) << "Müller";
    EXPECT_THAT(ldif, HasSubstr("sn:: RWs=\n")) << "Ek";
    EXPECT_THAT(ldif, HasSubstr("sn:: TmFneQ==\n")) << "Nagy";
    EXPECT_THAT(ldif, Not(HasSubstr(":: \n"))) << "nothing is empty";
}

} // namespace
