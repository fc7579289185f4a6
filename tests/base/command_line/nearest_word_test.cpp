// Which word is meant by another.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/command_line/nearest_word.h"

#include <gtest/gtest.h>

namespace quelm {
namespace {

const std::vector<std::string> commands{"fax", "attributes", "phonebook", "outbox", "script"};

TEST(NearestWord, ForgivesLettersThatAreMissingTooManyWrongOrExchanged)
{
    EXPECT_EQ(nearestWord("phonbook", commands), "phonebook");
    EXPECT_EQ(nearestWord("outboxx", commands), "outbox");
    EXPECT_EQ(nearestWord("scribt", commands), "script");
    EXPECT_EQ(nearestWord("fxa", commands), "fax");
    EXPECT_EQ(nearestWord("SCRIPT", commands), "script");
}

TEST(NearestWord, CountsAnExchangeAsOneSlip)
{
    EXPECT_EQ(nearestWord("ab", {"ba"}), "ba");
    EXPECT_EQ(nearestWord("fien", {"standard", "fine", "superfine"}), "fine");
}

TEST(NearestWord, ForgivesOneLetterInThree)
{
    EXPECT_EQ(nearestWord("atributs", commands), "attributes");
    EXPECT_EQ(nearestWord("faks", commands), std::nullopt);
    EXPECT_EQ(nearestWord("phnbk", commands), std::nullopt);
    EXPECT_EQ(nearestWord("letter.ps", commands), std::nullopt);
}

TEST(NearestWord, SaysNothingOfEmptyAndSingleLetters)
{
    EXPECT_EQ(nearestWord("", commands), std::nullopt);
    EXPECT_EQ(nearestWord("a", commands), std::nullopt);
    EXPECT_EQ(nearestWord("--", commands), std::nullopt);
    EXPECT_EQ(nearestWord("fax", {}), std::nullopt);
    EXPECT_EQ(nearestWord("-a", {"-o"}), std::nullopt);
}

TEST(NearestWord, TakesTheOnlyWordThatBeginsAlike)
{
    EXPECT_EQ(nearestWord("attr", commands), "attributes");
    EXPECT_EQ(nearestWord("--send", {"--send-at", "--send-now", "--sender-name"}), std::nullopt);
    EXPECT_EQ(nearestWord("--credit-card-f", {"--credit-card", "--credit-card-file"}), "--credit-card-file");
}

TEST(NearestWord, TakesTheNearest)
{
    EXPECT_EQ(nearestWord("--outbxo", {"--output", "--outbox"}), "--outbox");
    EXPECT_EQ(nearestWord("-outptu", {"--output", "--outbox"}), "--output");
    EXPECT_EQ(nearestWord("ad", {"ask", "add", "skip"}), "add");
}

TEST(NearestWord, TakesLongWordsInTheirStride)
{
    const std::string endless(1000 * 1000, 'x');
    EXPECT_EQ(nearestWord(endless, commands), std::nullopt);
}

} // namespace
} // namespace quelm
