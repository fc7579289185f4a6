// Room for widgets that need more than the definition gave them.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/desktop/dialogs/placement.h"

#include <gtest/gtest.h>

#include <ostream>
#include <random>
#include <string>
#include <vector>

namespace quelm {

static bool operator==(const PlacedRectangle& one, const PlacedRectangle& other)
{
    return one.x == other.x && one.y == other.y && one.width == other.width && one.height == other.height;
}

static std::ostream& operator<<(std::ostream& out, const PlacedRectangle& place)
{
    return out << place.x << "," << place.y << " " << place.width << "x" << place.height;
}

} // namespace quelm

namespace {

using quelm::PlacedRectangle;
using quelm::PlacedSize;
using quelm::Placement;
using quelm::PlacementItem;
using quelm::placeWidgets;

PlacementItem sized(const PlacedRectangle& asked) { return {asked, {1, 1}, false, false, false}; }

/// A text at a position, which needs a size of its own.
PlacementItem text(int x, int y, int width, int height = 16)
{
    return {{x, y, 0, 0}, {width, height}, false, false, false};
}

PlacementItem field(const PlacedRectangle& asked) { return {asked, {30, 20}, true, false, false}; }

PlacementItem list(const PlacedRectangle& asked) { return {asked, {40, 40}, true, true, false}; }

PlacementItem button(const PlacedRectangle& asked, int needed = 10)
{
    return {asked, {needed, 20}, false, false, true};
}

bool overlap(const PlacedRectangle& one, const PlacedRectangle& other)
{
    return one.x < other.x + other.width && other.x < one.x + one.width && one.y < other.y + other.height &&
           other.y < one.y + one.height;
}

} // namespace

TEST(Placement, WhatFitsStandsWhereItAskedTo)
{
    const Placement placement =
        placeWidgets({text(65, 25, 40), field({65, 45, 200, 20}), button({5, 405, 75, 22})}, {320, 445});
    EXPECT_EQ(placement.places[0], (PlacedRectangle{65, 25, 40, 16}));
    EXPECT_EQ(placement.places[1], (PlacedRectangle{65, 45, 200, 20}));
    EXPECT_EQ(placement.places[2], (PlacedRectangle{5, 405, 75, 22}));
    EXPECT_EQ(placement.size.width, 320);
    EXPECT_EQ(placement.size.height, 445);
}

TEST(Placement, AContainerWithoutASizeIsAsLargeAsItsWidgets)
{
    const Placement placement = placeWidgets({sized({0, 0, 40, 24}), sized({50, 1, 50, 22})}, {});
    EXPECT_EQ(placement.size.width, 100);
    EXPECT_EQ(placement.size.height, 24);
}

TEST(Placement, AContainerWithoutWidgetsHasTheSizeAskedFor)
{
    const Placement placement = placeWidgets({}, {30, 20});
    EXPECT_TRUE(placement.places.empty());
    EXPECT_EQ(placement.size.width, 30);
    EXPECT_EQ(placement.size.height, 20);
}

TEST(Placement, SpinBoxesAskedForInsideEachOtherStandSideBySide)
{
    PlacementItem hour = sized({0, 0, 40, 24});
    PlacementItem minute = sized({25, 0, 40, 24});
    hour.needed = minute.needed = {58, 24};
    const Placement placement = placeWidgets({hour, minute, sized({50, 1, 50, 22})}, {});
    EXPECT_EQ(placement.places[0], (PlacedRectangle{0, 0, 58, 24}));
    EXPECT_EQ(placement.places[1], (PlacedRectangle{62, 0, 58, 24}));
    EXPECT_EQ(placement.places[2], (PlacedRectangle{124, 1, 50, 22}));
    EXPECT_EQ(placement.size.width, 174);
}

TEST(Placement, ALongTextPushesWholeColumnsToTheRight)
{
    const Placement placement = placeWidgets(
        {text(50, 35, 400), text(375, 35, 150), text(375, 130, 100), field({375, 150, 175, 20})}, {606, 388});
    EXPECT_EQ(placement.places[1].x, 454);
    EXPECT_EQ(placement.places[2].x, 454);
    EXPECT_EQ(placement.places[3], (PlacedRectangle{454, 150, 175, 20}));
    EXPECT_EQ(placement.size.width, 606 + 79);
}

TEST(Placement, ATallTextPushesWholeRowsDown)
{
    const Placement placement =
        placeWidgets({text(50, 20, 100, 45), text(50, 40, 100), text(300, 40, 100)}, {400, 100});
    EXPECT_EQ(placement.places[1].y, 65);
    EXPECT_EQ(placement.places[2].y, 65);
    EXPECT_EQ(placement.size.height, 125);
}

TEST(Placement, AFieldReachesAsFarAsTheColumnsThatItSpans)
{
    const Placement placement =
        placeWidgets({text(65, 25, 180), text(205, 25, 60), field({65, 45, 200, 20})}, {320, 445});
    EXPECT_EQ(placement.places[1].x, 249);
    EXPECT_EQ(placement.places[2], (PlacedRectangle{65, 45, 244, 20}));
}

TEST(Placement, TextsKeepAGap)
{
    const Placement placement = placeWidgets({text(10, 10, 99), sized({110, 10, 20, 20})}, {});
    EXPECT_EQ(placement.places[1].x, 113);
}

TEST(Placement, WidgetsThatTouchByDesignMayTouch)
{
    const Placement placement =
        placeWidgets({field({10, 120, 170, 22}), button({180, 120, 75, 22})}, {620, 445});
    EXPECT_EQ(placement.places[1].x, 180);
}

TEST(Placement, OfTwoWidgetsAtOnePlaceTheLaterGivesWay)
{
    const Placement placement = placeWidgets({sized({20, 30, 75, 22}), sized({20, 30, 75, 22})}, {});
    EXPECT_EQ(placement.places[0].x, 20);
    EXPECT_FALSE(overlap(placement.places[0], placement.places[1]));
}

TEST(Placement, SpareRoomGoesToTheListAndButtonsFollow)
{
    const Placement placement =
        placeWidgets({list({10, 125, 550, 175}), button({10, 310, 125, 22}), button({507, 360, 75, 22})},
                     {600, 390}, {800, 490});
    EXPECT_EQ(placement.places[0], (PlacedRectangle{10, 125, 750, 275}));
    EXPECT_EQ(placement.places[1], (PlacedRectangle{10, 410, 125, 22}));
    EXPECT_EQ(placement.places[2], (PlacedRectangle{707, 460, 75, 22}));
}

TEST(Placement, ListsSideBySideShareTheSpareRoomAndWhatIsBetweenStaysThere)
{
    const Placement placement =
        placeWidgets({list({10, 155, 250, 175}), button({273, 155, 75, 22}), list({360, 155, 250, 175})},
                     {620, 445}, {720, 445});
    EXPECT_EQ(placement.places[0].width, 300);
    EXPECT_EQ(placement.places[1].x, 323);
    EXPECT_EQ(placement.places[2], (PlacedRectangle{410, 155, 300, 175}));
}

TEST(Placement, ButtonsInARowKeepTheirDistances)
{
    const Placement placement = placeWidgets({list({10, 125, 550, 175}), button({10, 310, 125, 22}, 160),
                                              button({150, 310, 125, 22}), button({290, 310, 125, 22})},
                                             {606, 388});
    EXPECT_EQ(placement.places[1], (PlacedRectangle{10, 310, 160, 22}));
    EXPECT_EQ(placement.places[2].x, 185);
    EXPECT_EQ(placement.places[3].x, 325);
}

TEST(Placement, ButtonsAtTheRightEdgeGrowToTheLeft)
{
    const Placement placement =
        placeWidgets({button({450, 435, 75, 22}), button({533, 435, 75, 22}, 90)}, {620, 475});
    EXPECT_EQ(placement.places[0].x, 435);
    EXPECT_EQ(placement.places[1], (PlacedRectangle{518, 435, 90, 22}));
    EXPECT_EQ(placement.size.width, 620);
}

TEST(Placement, AWindowThatGrowsKeepsItsButtonsAtTheirEnds)
{
    const Placement placement = placeWidgets({text(65, 345, 330), button({5, 405, 75, 22}),
                                              button({120, 405, 75, 22}), button({235, 405, 75, 22})},
                                             {320, 445});
    EXPECT_GE(placement.size.width, 65 + 330);
    const int grown = placement.size.width - 320;
    EXPECT_EQ(placement.places[1].x, 5);
    EXPECT_NEAR(placement.places[2].x, 120 + grown / 2.0, 1);
    EXPECT_EQ(placement.places[3].x, 235 + grown);
}

TEST(Placement, ATextBehindTheFieldsMakesTheContainerWiderInsteadOfRunningAway)
{
    const Placement placement = placeWidgets(
        {field({95, 150, 230, 20}), text(350, 40, 300), button({482, 360, 100, 22})}, {606, 388});
    EXPECT_EQ(placement.places[1].x, 350);
    EXPECT_EQ(placement.size.width, 350 + 300 + 8);
    EXPECT_EQ(placement.places[2].x, 482 + 52);
}

TEST(Placement, PositionsBeyondEveryScreenAreHeldWithinBounds)
{
    const Placement placement = placeWidgets(
        {sized({2'000'000'000, -5, 2'000'000'000, 10}), sized({-7, 2'000'000'000, 10, 10})}, {10, 10});
    EXPECT_GE(placement.places[0].y, 0);
    EXPECT_GE(placement.places[1].x, 0);
    EXPECT_GT(placement.size.width, 0);
}

namespace {

/// Whatever a definition asks for: everything has room, inside the container, and nothing overlaps.
void checkAnyPlacement(unsigned seed)
{
    std::mt19937 random(seed);
    const auto number = [&random](int least, int most) {
        return std::uniform_int_distribution<int>(least, most)(random);
    };
    std::vector<PlacementItem> items(static_cast<std::size_t>(number(1, 25)));
    for (PlacementItem& item : items) {
        const bool hasSize = number(0, 2) != 0;
        item.asked = {number(0, 40) * 15, number(0, 20) * 20, hasSize ? number(1, 250) : 0,
                      hasSize ? number(1, 60) : 0};
        item.needed = {number(0, 300), number(0, 40)};
        item.widens = number(0, 3) == 0;
        item.heightens = item.widens && number(0, 1) == 0;
        item.isButton = !item.widens && number(0, 2) == 0;
    }
    const PlacedSize asked{number(0, 620), number(0, 475)};
    const PlacedSize least = placeWidgets(items, asked).size;
    for (const PlacedSize available :
         {PlacedSize{}, least, PlacedSize{least.width + number(0, 400), least.height + number(0, 300)}}) {
        const Placement placement = placeWidgets(items, asked, available);
        EXPECT_GE(placement.size.width, asked.width);
        EXPECT_GE(placement.size.height, asked.height);
        const int width = std::max(available.width, placement.size.width);
        const int height = std::max(available.height, placement.size.height);
        for (std::size_t index = 0; index < items.size(); ++index) {
            const PlacedRectangle& place = placement.places[index];
            SCOPED_TRACE("seed " + std::to_string(seed) + ", item " + std::to_string(index));
            EXPECT_GE(place.width, std::max(items[index].asked.width, items[index].needed.width));
            EXPECT_GE(place.height, std::max(items[index].asked.height, items[index].needed.height));
            EXPECT_GE(place.x, 0);
            EXPECT_GE(place.y, 0);
            EXPECT_LE(place.x + place.width, width);
            EXPECT_LE(place.y + place.height, height);
            for (std::size_t other = 0; other < index; ++other) {
                EXPECT_FALSE(overlap(place, placement.places[other]))
                    << place << " and " << placement.places[other] << ", item " << other;
            }
        }
    }
}

} // namespace

TEST(Placement, OfAnythingLeavesNothingOverlappingOrCutOff)
{
    for (unsigned seed = 1; seed <= 1000; ++seed)
        checkAnyPlacement(seed);
}
