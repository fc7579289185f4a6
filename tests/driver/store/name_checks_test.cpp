// What names and telephone numbers may hold, and what is said of those that hold more.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/store/name_checks.h"

#include <gtest/gtest.h>

#include <string>

namespace {

constexpr const char* nameMarks = "- .";
constexpr const char* numberMarks = "- ( ) /";

/// The message, or an empty text when the name or number is acceptable.
std::string nameProblem(const std::string& name, const char* allowed = nameMarks)
{
    return quelm::problemWithName(name, allowed).value_or("");
}
std::string numberProblem(const std::string& number, const char* allowed = numberMarks)
{
    return quelm::problemWithPhoneNumber(number, allowed).value_or("");
}

bool mentions(const std::string& text, const std::string& part)
{
    return text.find(part) != std::string::npos;
}

} // namespace

class AcceptableName : public testing::TestWithParam<const char*> {};

TEST_P(AcceptableName, HasNoMessage) { EXPECT_EQ(nameProblem(GetParam()), ""); }

INSTANTIATE_TEST_SUITE_P(Names, AcceptableName,
                         testing::Values("Anne", "Anne-Marie Dr. Muster", "O'Brien", "O\u2019Brien", "3M",
                                         "Zoë", "Zoe\u0308", "Дмитрий", "山田太郎", "محمد", "अनीता", "٣",
                                         "\U00020000", "-", "."));

/// Marks that names of people are written with: a person types what a phonebook or directory can hold.
INSTANTIATE_TEST_SUITE_P(
    Marks, AcceptableName,
    testing::Values("Ann\u00a0Lee", "O\u00b4Brien", "O`Brien", "O\u2018Brien", "O\u201bBrien", "O\uff07Brien",
                    "Gal\u00b7la", "Gal\u2022la", "Gal\u2027la", "\u0540\u055a\u0531",
                    "\u05d1\u05df\u05be\u05d3\u05d5\u05d3", "\u05d2\u05f3\u05d5\u05e8\u05d2\u05f3",
                    "\u05e6\u05d4\u05f4\u05dc", "\u0f56\u0f66\u0f9f\u0f53\u0f0b\u0f60", "\u0f56\u0f0c\u0f60",
                    "\u1200\u12ed\u1208\u1361\u1225", "\u0639\u0644\u06cc\u200c\u0631\u0636\u0627",
                    "\u0dc1\u0dca\u200d\u0dbb\u0dd3", "Jean\u2010Luc", "Jean\u2011Luc", "Jean\u2012Luc",
                    "Jean\u2013Luc", "\u5c71\u7530\u3000\u592a\u90ce", "\u30b8\u30a0\u30b9",
                    "\u30b8\u30fb\u30b9", "\uff7c\uff65\uff7d", "\uff21\uff0d\uff22", "\uff21\uff0e\uff22"));

TEST(NameCheck, AcceptsTheMarksOfNamesWhateverItsCallerAllows)
{
    EXPECT_EQ(nameProblem("Gal\u00b7la", ""), "");
    EXPECT_NE(nameProblem("Gal\u00b7la P", ""), "");
}

TEST(NameCheck, RefusesWhatIsNoPartOfAnyName)
{
    for (const char* name :
         {"Ann\u2028B", "Ann\u202eB", "Ann\u2066B", "Ann\u200e",      "Ann\ufeff",
          "Ann\u00ad",  "Ann\u0085",  "Ann\x7f",    "Ann\"",          "Ann\u201cB",
          "Ann;",       "Ann(",       "Ann\\",      "Ann=5",          "<Ann>",
          "Ann\u2212B", "Ann\u2014B", "Ann \u2764", "Ann \U0001f469", "\U0001f469\u200d\U0001f467",
          "Ann\ue000"})
        EXPECT_TRUE(mentions(nameProblem(name), "must not contain ")) << name;
}

TEST(NameCheck, LeavesTheEmptyNameToItsCaller) { EXPECT_EQ(nameProblem(""), ""); }

TEST(NameCheck, QuotesTheCharacterThatIsNotAllowed)
{
    const std::string problem = nameProblem("Anne@home");
    EXPECT_TRUE(mentions(problem, "must not contain \"@\"")) << problem;
    EXPECT_TRUE(mentions(problem, "letters, digits and \"'\" \"-\" blank \".\"")) << problem;
}

TEST(NameCheck, QuotesACharacterBeyondAscii) { EXPECT_TRUE(mentions(nameProblem("Anne € Ltd"), "\"€\"")); }

TEST(NameCheck, NumbersACharacterThatDoesNotPrint)
{
    EXPECT_TRUE(mentions(nameProblem("Anne\tB"), " U+0009.")) << nameProblem("Anne\tB");
    EXPECT_TRUE(mentions(nameProblem("Anne\u200B"), " U+200B."));
    EXPECT_TRUE(mentions(nameProblem("Anne\n"), " U+000A."));
}

TEST(NameCheck, RefusesBytesThatAreNoUtf8)
{
    EXPECT_TRUE(mentions(nameProblem("Zo\xEB"), "the byte 0xEB"));
    EXPECT_TRUE(mentions(nameProblem("Zo\xC3"), "the byte 0xC3"));
    EXPECT_TRUE(mentions(nameProblem("\xED\xA0\x80"), "the byte 0xED")) << "a surrogate";
    EXPECT_TRUE(mentions(nameProblem("\xC0\xAF"), "the byte 0xC0")) << "an overlong form";
}

TEST(NameCheck, RefusesANameOfBlanksBecauseNoPhonebookCouldBeReadWithIt)
{
    EXPECT_TRUE(mentions(nameProblem("   "), "blanks only"));
    EXPECT_TRUE(mentions(nameProblem("\u3000"), "blanks only"));
    EXPECT_TRUE(mentions(nameProblem(" \u00a0 "), "blanks only"));
}

TEST(NameCheck, RefusesANameOfMarksAlone)
{
    for (const char* name :
         {"\u200d", "\u200c \u200c", "\u00b7", "\u30fb\u3000\u30fb", "\u2013", "`", "-\u00b7", "\u3000-"})
        EXPECT_TRUE(mentions(nameProblem(name), "marks only")) << name;
}

TEST(NameCheck, AllowsWhatItsCallerAllowsAndNoMore)
{
    EXPECT_EQ(nameProblem("a€b", "€"), "");
    EXPECT_NE(nameProblem("a b", "-"), "");
    EXPECT_NE(nameProblem("a-b", ""), "");
}

TEST(NameCheck, LooksAtLongNamesWhole)
{
    const std::string longName(100000, 'x');
    EXPECT_EQ(nameProblem(longName), "");
    EXPECT_NE(nameProblem(longName + "@"), "");
}

class AcceptableNumber : public testing::TestWithParam<const char*> {};

TEST_P(AcceptableNumber, HasNoMessage) { EXPECT_EQ(numberProblem(GetParam()), ""); }

INSTANTIATE_TEST_SUITE_P(Numbers, AcceptableNumber,
                         testing::Values("5551234", "+41 (44) 555-12/34", "0,,5551234", "*70#5551234",
                                         "555.1234", "1"));

TEST(NumberCheck, QuotesTheCharacterThatIsNotAllowed)
{
    EXPECT_TRUE(mentions(numberProblem("555-CALL"), "must not contain \"C\"")) << numberProblem("555-CALL");
    EXPECT_TRUE(mentions(numberProblem("555;1"), "\";\""));
    EXPECT_TRUE(mentions(numberProblem("5\t5"), "U+0009"));
}

TEST(NumberCheck, RefusesDigitsThatNoDeviceDials)
{
    EXPECT_TRUE(mentions(numberProblem("٥٥٥"), "\"٥\""));
    EXPECT_TRUE(mentions(numberProblem("５５"), "\"５\""));
}

TEST(NumberCheck, AsksForOneDigit)
{
    EXPECT_TRUE(mentions(numberProblem("+-"), "no digit"));
    EXPECT_TRUE(mentions(numberProblem(""), "no digit"));
}

TEST(NumberCheck, NamesEachAcceptableMarkOnce)
{
    EXPECT_TRUE(mentions(numberProblem("x"), R"~(digits and "+" "." "*" "#" "," "-" blank "(" ")" "/")~"))
        << numberProblem("x");
}

TEST(NumberCheck, RefusesBytesThatAreNoUtf8) { EXPECT_TRUE(mentions(numberProblem("5\xFF"), "0xFF")); }
