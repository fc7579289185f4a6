// The remarks about a job, of which there is an end.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/stream/remarks.h"

#include <gtest/gtest.h>

namespace quelm::device {
namespace {

TEST(Remarks, StandInTheOrderOfTheirLinesAndThoseAboutTheWholeLast)
{
    Remarks remarks;
    remarks.add(7, "seven");
    remarks.add(0, "whole");
    remarks.add(2, "two");
    remarks.add(7, "seven again");
    const auto all = remarks.take();
    ASSERT_EQ(all.size(), 4U);
    EXPECT_EQ(all[0].text, "two");
    EXPECT_EQ(all[1].text, "seven");
    EXPECT_EQ(all[2].text, "seven again");
    EXPECT_EQ(all[3].text, "whole");
}

TEST(Remarks, HoldNoCard)
{
    Remarks remarks;
    remarks.add(1, "\"4000-1234 1234 1234\" is none");
    EXPECT_EQ(remarks.take().at(0).text, "\"****-**** **** ****\" is none");
}

TEST(Remarks, AreCountedBeyondTheirBound)
{
    Remarks remarks;
    for (std::uint64_t line = 1; line <= Remarks::most + 3; ++line)
        remarks.add(line, "wrong");
    const auto all = remarks.take();
    ASSERT_EQ(all.size(), Remarks::most + 1);
    EXPECT_EQ(all.back().line, 0U);
    EXPECT_EQ(all.back().text, "and 3 more");
}

} // namespace
} // namespace quelm::device
