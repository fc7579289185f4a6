// Cards become properties, and properties cards.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/module.h"
#include "driver/phonebook/vcard_library.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using quelm::CardParameter;
using quelm::CardProperty;
using quelm::VcardLibrary;
using testing::ElementsAre;
using testing::HasSubstr;

std::vector<CardProperty> read(const std::string& lines)
{
    return quelm::part<VcardLibrary>().read("BEGIN:VCARD\r\nVERSION:3.0\r\n" + lines + "END:VCARD\r\n");
}

TEST(EvcardLibrary, APropertyHasItsGroupItsParametersAndItsComponents)
{
    const auto card = read("item1.TEL;TYPE=work,fax;PREF=1:+1-555-1234\r\nN:Zoë;Ann\\, Dr.;;;\r\n");
    ASSERT_EQ(card.size(), 3U); // VERSION is one, too
    EXPECT_EQ(card[1].group, "item1");
    EXPECT_EQ(card[1].name, "TEL");
    EXPECT_THAT(card[1].parameters, testing::UnorderedElementsAre(CardParameter{"TYPE", {"work", "fax"}},
                                                                  CardParameter{"PREF", {"1"}}));
    EXPECT_THAT(card[1].components, ElementsAre("+1-555-1234"));
    EXPECT_EQ(card[2].group, "");
    EXPECT_THAT(card[2].components, ElementsAre("Zoë", "Ann, Dr.", "", "", ""));
}

TEST(EvcardLibrary, WhatItWritesItReads)
{
    const std::vector<CardProperty> card{{"", "FN", {}, {"Ann; the \"first\", \\ n"}},
                                         {"a", "TEL", {{"TYPE", {"home", "fax"}}}, {"5"}}};
    const auto text = quelm::part<VcardLibrary>().write(card);
    EXPECT_THAT(text, HasSubstr("BEGIN:VCARD\r\nVERSION:3.0\r\n"));
    EXPECT_THAT(quelm::part<VcardLibrary>().read(text), testing::IsSupersetOf(card));
}

TEST(EvcardLibrary, WhatIsNoPropertyIsLeftOut)
{
    std::vector<std::string> names;
    for (const auto& property : read("nonsense\r\nFN:Ann\r\n"))
        names.push_back(property.name);
    EXPECT_THAT(names, testing::Contains("FN"));
    EXPECT_THAT(names, testing::Not(testing::Contains("nonsense")));
}

} // namespace
