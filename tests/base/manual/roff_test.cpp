// Texts as roff takes them.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/manual/roff.h"

#include <gmock/gmock.h>

#include <sstream>

namespace quelm::roff {
namespace {

TEST(Roff, EscapesWhatWouldComeOutDifferently)
{
    EXPECT_EQ(escaped("--to \"A\\n\" it's `x` ~/.config ^"),
              "\\-\\-to \"A\\en\" it\\(aqs \\(gax\\(ga \\(ti/.config \\(ha");
    EXPECT_EQ(escaped("Zoë 传真"), "Zoë 传真");
    EXPECT_EQ(escaped("a\nb"), "a b");
}

TEST(Roff, MarksNames)
{
    EXPECT_EQ(bold("--to"), "\\fB\\-\\-to\\fR");
    EXPECT_EQ(italic("FILE"), "\\fIFILE\\fR");
    EXPECT_EQ(request("TH", {"A \"b\"", "1"}), ".TH \"A \\(dqb\\(dq\" \"1\"\n");
}

TEST(Roff, KeepsTextsFromBeingTakenForRequests)
{
    EXPECT_EQ(filled(".dot at the beginning"), "\\&.dot at the beginning\n");
    EXPECT_EQ(literal(".dot"), "\\&.dot\n");
    std::string words;
    for (int i = 0; i < 100; ++i)
        words += ".so /etc/passwd ";
    std::istringstream lines(filled(words));
    for (std::string line; std::getline(lines, line);)
        EXPECT_FALSE(line.starts_with('.')) << line;
}

TEST(Roff, BreaksItsInputIntoShortLines)
{
    std::string words;
    for (int i = 0; i < 100; ++i)
        words += "wörd ";
    std::istringstream lines(filled(words));
    int count = 0;
    for (std::string line; std::getline(lines, line); ++count)
        EXPECT_LE(line.size(), 80U) << line;
    EXPECT_GT(count, 5);
    EXPECT_EQ(filled(""), "");
}

TEST(Roff, JoinsTheLinesOfALongLiteral)
{
    std::string words = "begin";
    for (int i = 0; i < 40; ++i)
        words += " word";
    auto lines = literal(words);
    EXPECT_THAT(lines, testing::HasSubstr("\\\n"));
    for (auto at = lines.find("\\\n"); at != std::string::npos; at = lines.find("\\\n"))
        lines.erase(at, 2);
    EXPECT_EQ(lines, words + "\n");
}

} // namespace
} // namespace quelm::roff
