// What a user typed, as a search filter takes it.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/cli/job/directory_dialog.h"

#include <gtest/gtest.h>

namespace {

TEST(EscapedForFilter, MakesTheFiltersOwnCharactersStandForThemselves)
{
    EXPECT_EQ(quelm::escapedForFilter("*"), "\\2a");
    EXPECT_EQ(quelm::escapedForFilter("a)(sn=*"), "a\\29\\28sn=\\2a");
    EXPECT_EQ(quelm::escapedForFilter("back\\slash"), "back\\5cslash");
}

TEST(EscapedForFilter, LeavesNamesAsTheyAre)
{
    EXPECT_EQ(quelm::escapedForFilter("O'Brien-Müller שלום & Söhne"), "O'Brien-Müller שלום & Söhne");
    EXPECT_EQ(quelm::escapedForFilter(""), "");
}

} // namespace
