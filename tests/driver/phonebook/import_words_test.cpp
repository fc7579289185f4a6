// Options of an import in the menu.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/phonebook/import_words.h"

#include "tests/support/failure_line.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace quelm {
namespace {

std::string refusal(std::string line)
{
    return test::failureLine([&] { takeImportOptions(line); });
}

TEST(ImportWords, WhatIsLeftIsTheFile)
{
    std::string line =
        "--rename  --charset cp1252 --separator ; --skip-bad --no-groups --dry-run a b --x.csv";
    const auto options = takeImportOptions(line);
    EXPECT_EQ(line, "a b --x.csv");
    EXPECT_TRUE(options.settling.rename && options.skipBad && options.dryRun);
    EXPECT_FALSE(options.settling.categoryGroups);
    EXPECT_EQ(options.reading.charset, "cp1252");
    EXPECT_EQ(options.reading.separator, ';');
    std::string plain = "list.csv";
    EXPECT_FALSE(takeImportOptions(plain).settling.rename);
    EXPECT_EQ(plain, "list.csv");
}

TEST(ImportWords, OthersAreRefused)
{
    EXPECT_EQ(refusal("--colour a.csv"),
              "\"--colour\" is none of --rename|--skip-bad|--no-groups|--dry-run|--charset|--separator");
    EXPECT_THAT(refusal("--charset"), testing::HasSubstr("\"\" is no charset"));
    EXPECT_THAT(refusal("--separator ab c"), testing::HasSubstr("\"ab\" parts no fields"));
}

} // namespace
} // namespace quelm
