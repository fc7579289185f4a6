// Texts of entries and groups without what records do not keep.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/phonebook/entry.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace quelm {
namespace {

TEST(Tidied, DropsWhiteSpaceAroundTextsAndKeepsThatWithin)
{
    EXPECT_EQ(tidied(std::string_view(" \t\r\na  b\r\nc\v\f ")), "a  b\nc");
    EXPECT_EQ(tidied(std::string_view(" \n")), "");
    EXPECT_EQ(tidied(PhonebookEntry{" Ann ", " 1 ", " o ", " 2", "e "}),
              (PhonebookEntry{"Ann", "1", "o", "2", "e"}));
    EXPECT_EQ(tidied(PhonebookGroup{" T ", {" a ", " ", "b"}}), (PhonebookGroup{"T", {"a", "b"}}));
}

} // namespace
} // namespace quelm
