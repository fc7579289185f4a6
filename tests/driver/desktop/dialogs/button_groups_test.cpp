// Rows of buttons that are placed as one.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/desktop/dialogs/button_groups.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace quelm {
namespace {

using testing::ElementsAre;
using testing::FieldsAre;

PlacementItem button(int x, int y, int width, int needed = 10)
{
    return {{x, y, width, 22}, {needed, 20}, false, false, true};
}

PlacementItem text(int x, int y) { return {{x, y, 40, 16}, {40, 16}, false, false, false}; }

std::vector<std::vector<std::size_t>> membersOf(const std::vector<PlacementItem>& items)
{
    std::vector<std::vector<std::size_t>> members;
    for (const auto& unit : unitsOf(items))
        members.push_back(unit.members);
    return members;
}

TEST(ButtonGroups, NeighboursInOneRowAreOneUnitInTheOrderOnTheScreen)
{
    EXPECT_THAT(membersOf({button(90, 5, 75), text(5, 5), button(5, 5, 75)}),
                ElementsAre(ElementsAre(2, 0), ElementsAre(1)));
}

TEST(ButtonGroups, AWideGapAnOverlapOrAnotherRowParts)
{
    EXPECT_THAT(membersOf({button(0, 5, 50), button(70, 5, 50)}), ElementsAre(ElementsAre(0, 1)));
    EXPECT_THAT(membersOf({button(0, 5, 50), button(71, 5, 50)}),
                ElementsAre(ElementsAre(0), ElementsAre(1)));
    EXPECT_THAT(membersOf({button(0, 5, 50), button(49, 5, 50)}),
                ElementsAre(ElementsAre(0), ElementsAre(1)));
    EXPECT_THAT(membersOf({button(0, 5, 50), button(60, 6, 50)}),
                ElementsAre(ElementsAre(0), ElementsAre(1)));
}

TEST(ButtonGroups, OnlyButtonsBelongTogether)
{
    EXPECT_THAT(membersOf({text(0, 5), text(45, 5), button(90, 5, 50)}),
                ElementsAre(ElementsAre(0), ElementsAre(1), ElementsAre(2)));
}

TEST(ButtonGroups, AUnitReachesFromItsFirstToItsLastButton)
{
    const auto units = unitsOf({button(5, 405, 75, 60), button(90, 405, 75, 100)});
    ASSERT_EQ(units.size(), 1U);
    EXPECT_EQ(units[0].item.asked.x, 5);
    EXPECT_EQ(units[0].item.asked.width, 160);
    EXPECT_EQ(units[0].item.asked.height, 22);
    // Each button as wide as asked or as needed, and the gap of ten between them.
    EXPECT_EQ(units[0].item.needed.width, 75 + 10 + 100);
}

TEST(ButtonGroups, ButtonsKeepTheirDistancesWhateverTheirTextsNeed)
{
    const std::vector<PlacementItem> items{button(5, 405, 75, 60), button(90, 405, 75, 100)};
    EXPECT_THAT(placesInUnit(unitsOf(items)[0], items, {20, 300, 185, 22}),
                ElementsAre(FieldsAre(20, 300, 75, 22), FieldsAre(105, 300, 100, 22)));
}

TEST(ButtonGroups, AUnitOfOneTakesThePlaceAsItIs)
{
    const std::vector<PlacementItem> items{button(5, 405, 75)};
    EXPECT_THAT(placesInUnit(unitsOf(items)[0], items, {7, 8, 9, 10}), ElementsAre(FieldsAre(7, 8, 9, 10)));
}

} // namespace
} // namespace quelm
