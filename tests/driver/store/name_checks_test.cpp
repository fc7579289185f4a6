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
