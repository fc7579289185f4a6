// The lines along which widgets begin, moved until no two widgets overlap.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/desktop/dialogs/untangling.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace quelm {
namespace {

using testing::ElementsAre;
using testing::FieldsAre;

/// A text, which is as large as it needs to be.
PlacementItem text(int x, int y, int width) { return {{x, y, 0, 0}, {width, 16}, false, false, false}; }

PlacementItem field(int x, int y, int width) { return {{x, y, width, 20}, {30, 20}, true, false, false}; }

TEST(GuideLines, MoveThoseBehindThemAtLeastAsFar)
{
    GuideLines lines;
    for (const int position : {10, 50, 90})
        lines.add(position);
    lines.moveTo(50, 65);
    EXPECT_EQ(lines.moved(10), 10);
    EXPECT_EQ(lines.moved(50), 65);
    EXPECT_EQ(lines.moved(90), 105);
    // None ever moves back.
    lines.moveTo(10, 12);
    EXPECT_EQ(lines.moved(10), 12);
    EXPECT_EQ(lines.moved(90), 105);
}

TEST(GuideLines, AnEdgeMovesWithTheLastLineAheadOfIt)
{
    GuideLines lines;
    lines.add(10);
    lines.add(50);
    lines.moveTo(50, 57);
    EXPECT_EQ(lines.movedEnd(5), 5);
    EXPECT_EQ(lines.movedEnd(50), 50);
    EXPECT_EQ(lines.movedEnd(80), 87);
}

TEST(Untangling, WhatIsApartStaysWhereItIs)
{
    EXPECT_THAT(Untangling({text(0, 0, 40), field(50, 0, 100)}).places(),
                ElementsAre(FieldsAre(0, 0, 40, 16), FieldsAre(50, 0, 100, 20)));
}

TEST(Untangling, ALongTextPushesItsNeighbourAndTheColumnBelowAlong)
{
    const auto places =
        Untangling({text(0, 0, 70), field(50, 0, 100), text(0, 30, 20), field(50, 30, 100)}).places();
    EXPECT_THAT(places, ElementsAre(FieldsAre(0, 0, 70, 16), FieldsAre(74, 0, 100, 20),
                                    FieldsAre(0, 30, 20, 16), FieldsAre(74, 30, 100, 20)));
}

TEST(Untangling, ATallerWidgetPushesDownWhatStandsBelow)
{
    const PlacementItem tall{{0, 0, 60, 20}, {60, 32}, false, false, false};
    const PlacementItem below{{0, 25, 60, 20}, {60, 20}, false, false, false};
    EXPECT_THAT(Untangling({tall, below}).places(),
                ElementsAre(FieldsAre(0, 0, 60, 32), FieldsAre(0, 32, 60, 20)));
}

TEST(Untangling, WidgetsOnOneSpotComeApart)
{
    const auto places = Untangling({text(5, 5, 40), text(5, 5, 40)}).places();
    ASSERT_EQ(places.size(), 2U);
    EXPECT_TRUE(places[1].x >= places[0].x + 40 || places[1].y >= places[0].y + 16);
}

TEST(Untangling, WhatStretchesEndsAtItsNeighbour)
{
    // The field was to reach 120; the text behind it begins at 100.
    const auto places = Untangling({field(0, 0, 120), text(130, 0, 20), text(100, 40, 20)}).places();
    EXPECT_EQ(places[0].width, 120);
    const auto pushed = Untangling({text(0, 0, 70), field(50, 0, 100), text(160, 0, 20)}).places();
    EXPECT_EQ(pushed[1].x + pushed[1].width, 174);
    EXPECT_EQ(pushed[2].x, 184);
}

TEST(Untangling, PositionsBeyondEveryScreenAreBroughtBack)
{
    const auto places = Untangling({text(-5, -7, 40), text(2'000'000'000, 0, 40)}).places();
    EXPECT_EQ(places[0].x, 0);
    EXPECT_EQ(places[0].y, 0);
    EXPECT_LE(places[1].x, 1'000'100);
}

} // namespace
} // namespace quelm
