// Tests of the names of files that other programs hand over.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/desktop/main_window/file_uri.h"

#include <glib.h>
#include <gtest/gtest.h>

namespace quelm {
namespace {

TEST(FileUriTest, AFileHasItsOwnBytes)
{
    EXPECT_EQ(fileOfThisComputer("file:///home/ann/a%20letter%FF.ps"), "/home/ann/a letter\xff.ps");
}

TEST(FileUriTest, ThisComputerMayBeNamed)
{
    EXPECT_EQ(fileOfThisComputer("file://localhost/letter.ps"), "/letter.ps");
    EXPECT_EQ(fileOfThisComputer("file://LOCALHOST/letter.ps"), "/letter.ps");
    EXPECT_EQ(fileOfThisComputer(std::string("file://") + g_get_host_name() + "/letter.ps"), "/letter.ps");
}

TEST(FileUriTest, WhatIsNoFileOfThisComputerHasNoPath)
{
    EXPECT_EQ(fileOfThisComputer("file://elsewhere.example/letter.ps"), "");
    EXPECT_EQ(fileOfThisComputer("https://localhost/letter.ps"), "");
    EXPECT_EQ(fileOfThisComputer("/letter.ps"), "");
    EXPECT_EQ(fileOfThisComputer(""), "");
}

} // namespace
} // namespace quelm
