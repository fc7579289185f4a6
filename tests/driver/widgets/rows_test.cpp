// The storage of list rows.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/widgets/rows.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using quelm::Rows;

TEST(RowsTest, KeepsTheTextsOfEachCell)
{
    Rows rows(2);
    const char* first[] = {"Ann", "1", nullptr};
    const char* second[] = {"Bob", "2", nullptr};
    rows.add(first);
    rows.add(second);
    ASSERT_EQ(rows.count(), 2U);
    EXPECT_STREQ(rows.cell(0, 0), "Ann");
    EXPECT_STREQ(rows.cell(0, 1), "1");
    EXPECT_STREQ(rows.cell(1, 0), "Bob");
    EXPECT_STREQ(rows.cell(1, 1), "2");
}

TEST(RowsTest, ReadsNoMoreEntriesThanThereAreColumns)
{
    Rows rows(1);
    const char* withoutEnd[] = {"Ann"};
    rows.add(withoutEnd);
    EXPECT_STREQ(rows.cell(0, 0), "Ann");
}

TEST(RowsTest, StopsAtTheFirstNullEntry)
{
    Rows rows(3);
    const char* cells[] = {"Ann", nullptr, "never read"};
    rows.add(cells);
    EXPECT_STREQ(rows.cell(0, 1), "");
    EXPECT_STREQ(rows.cell(0, 2), "");
}

TEST(RowsTest, WithoutEntriesARowIsEmpty)
{
    Rows rows(2);
    rows.add(nullptr);
    ASSERT_EQ(rows.count(), 1U);
    EXPECT_STREQ(rows.cell(0, 1), "");
}

TEST(RowsTest, AreGoneAfterClearingAndCanBeFilledAgain)
{
    Rows rows(1);
    const char* cells[] = {"Ann"};
    rows.add(cells);
    rows.clear();
    EXPECT_EQ(rows.count(), 0U);
    const char* others[] = {"Bob"};
    rows.add(others);
    ASSERT_EQ(rows.count(), 1U);
    EXPECT_STREQ(rows.cell(0, 0), "Bob");
}

TEST(RowsTest, RefillingAListAsLongAsBeforeMovesNoMemory)
{
    Rows rows(2);
    const auto fill = [&rows] {
        for (int number = 0; number < 5000; ++number) {
            const std::string name = "Recipient " + std::to_string(number);
            const char* cells[] = {name.c_str(), "555-1234"};
            rows.add(cells);
        }
    };
    fill();
    const char* block = rows.cell(0, 0);
    for (int round = 0; round < 20; ++round) {
        rows.clear();
        fill();
        ASSERT_EQ(rows.cell(0, 0), block);
    }
    ASSERT_EQ(rows.count(), 5000U);
    EXPECT_STREQ(rows.cell(4999, 0), "Recipient 4999");
}

} // namespace
