// Tests of key files.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/key_file.h"

#include "base/error.h"
#include "tests/support/failure_line.h"

#include <gmock/gmock.h>

namespace quelm::tests {
namespace {

using quelm::test::failureLine;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

void fail(const std::string& problem) { throw Error("the file " + problem); }

TEST(KeyFileTest, GroupsAndKeysKeepTheirOrder)
{
    const KeyFile file("# a comment\n[two]\nb = 1\na= \xC3\xBC b \n\n[one]\n", fail);
    EXPECT_THAT(file.groups(), ElementsAre("two", "one"));
    EXPECT_THAT(file.keys("two"), ElementsAre("b", "a"));
    EXPECT_THAT(file.keys("one"), IsEmpty());
    EXPECT_THAT(file.keys("three"), IsEmpty());
    EXPECT_EQ(file.value("two", "b"), "1");
    EXPECT_THAT(file.value("two", "a").value_or(""), testing::StartsWith("\xC3\xBC b"));
}

TEST(KeyFileTest, AnEmptyFileSaysNothing)
{
    for (const char* content : {"", "\n", " \t\r\n", "# nothing\n"})
        EXPECT_THAT(KeyFile(content, fail).groups(), IsEmpty()) << content;
}

TEST(KeyFileTest, WhatIsWrongIsSaidWithItsPlace)
{
    EXPECT_EQ(failureLine([] { KeyFile("[one]\n# \xFF\n", fail); }),
              "the file is no UTF-8 text in line 2; save it as UTF-8");
    EXPECT_THAT(failureLine([] { KeyFile("a = 1\n", fail); }),
                HasSubstr("the file cannot be understood in line 1: "));
    EXPECT_THAT(failureLine([] { KeyFile("[one]\nnothing\n", fail); }),
                HasSubstr("cannot be understood in line 2: "));
    const KeyFile file("[one]\nempty =\nbad = \\q\n", fail);
    EXPECT_EQ(failureLine([&] { (void)file.value("one", "empty"); }),
              "the file has no value at [one] empty (line 2); write one or remove the line");
    EXPECT_THAT(failureLine([&] { (void)file.value("one", "bad"); }),
                HasSubstr("has a bad value at [one] bad (line 3): "));
}

TEST(KeyFileTest, TheLineOfAKeyIsTheOneThatItsValueStandsIn)
{
    const KeyFile file("# [none]\r\n\n  [one]\r\na=1\n#b=2\n b = 3 = 4\n[two]\na=5\n[one]\na=6", fail);
    EXPECT_EQ(file.value("one", "a"), "6");
    EXPECT_EQ(file.line("one", ""), 3);
    EXPECT_EQ(file.line("one", "a"), 10);
    EXPECT_EQ(file.line("one", "b"), 6);
    EXPECT_EQ(file.line("two", "a"), 8);
    EXPECT_EQ(file.line("two", "b"), 0);
}

TEST(KeyFileTest, WhoOnlyTakesNoteOfAProblemGoesOn)
{
    std::vector<std::string> problems;
    const auto note = [&problems](const std::string& problem) { problems.push_back(problem); };
    const KeyFile file("[one]\nempty=\nbad=\\q\ngood=1\n", note);
    EXPECT_EQ(file.value("one", "empty"), std::nullopt);
    EXPECT_EQ(file.value("one", "bad"), std::nullopt);
    EXPECT_EQ(file.value("one", "good"), "1");
    EXPECT_EQ(problems.size(), 2U);
    EXPECT_THAT(KeyFile("[one]\na=1\nb\n", note).groups(), IsEmpty());
    EXPECT_EQ(problems.size(), 3U);
}

} // namespace
} // namespace quelm::tests
