// Tests of the texts that a note is made of.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/cover/note_texts.h"

#include <gmock/gmock.h>

#include <string>

namespace quelm {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// The texts of a note as a person types it.
std::vector<std::string> typed(const std::string& note)
{
    const std::string value = " (" + note + ") ";
    const auto texts = noteTexts(value);
    return texts ? std::vector<std::string>(texts->begin(), texts->end()) : std::vector<std::string>{"none"};
}

TEST(NoteTexts, AreOneTextAsARule)
{
    EXPECT_THAT(typed("Please call back"), ElementsAre("Please call back"));
    EXPECT_THAT(typed(""), ElementsAre(""));
    EXPECT_THAT(typed("  two  blanks  "), ElementsAre("  two  blanks  "));
    EXPECT_THAT(typed("x (y) z"), ElementsAre("x (y) z"));
    EXPECT_THAT(typed("((()))"), ElementsAre("((()))"));
}

TEST(NoteTexts, ArePartedByParenthesesWithBlanksBetween)
{
    EXPECT_THAT(typed("a) (b"), ElementsAre("a", "b"));
    EXPECT_THAT(typed("a)   (b (c)) ("), ElementsAre("a", "b (c)", ""));
    EXPECT_THAT(typed(") ("), ElementsAre("", ""));
}

TEST(NoteTexts, AreOneTextWhenTheParenthesesMakeNoWholeStrings)
{
    for (const char* note : {":)", "(", ")", "))((", "a)(b", "a) b (c", ") quit (", ")/showpage{}def(",
                             "a) (b)", "(a) (b", "a) [ (b"})
        EXPECT_THAT(typed(note), ElementsAre(note));
}

TEST(NoteTexts, KeepTheirBackslashes)
{
    for (const char* note : {"\\", "C:\\temp", "\\)", "\\(", "a\\) (b", "\\\\", "\\101"})
        EXPECT_THAT(typed(note), ElementsAre(note));
    EXPECT_THAT(typed("C:\\temp) (D:\\"), ElementsAre("C:\\temp) (D:\\"));
    EXPECT_THAT(typed("C:\\temp) (D:\\ "), ElementsAre("C:\\temp", "D:\\ "));
}

TEST(NoteTexts, AreNoneWithoutANote)
{
    EXPECT_THAT(noteTexts("").value(), IsEmpty());
    EXPECT_THAT(noteTexts(" ").value(), IsEmpty());
}

TEST(NoteTexts, ComeFromAComponentAlone)
{
    for (const char* value : {"a", "(a)", " (a", "(a) ", " (a) ] quit [ ", " ( ", " )( "})
        EXPECT_FALSE(noteTexts(value).has_value()) << value;
}

} // namespace
} // namespace quelm
