// Checks of names and numbers, token lists and formatted copies.
#include "driver/boundary/texts.h"

#include <memory>
#include <string>

#include <gtest/gtest.h>

#include "host/calls.h"

namespace {

constexpr const char* nameMarks = "- .";
constexpr const char* numberMarks = "- ( ) /";

/// The message, or an empty text when the name or number is acceptable.
std::string nameProblem(const std::string& name, const char* allowed = nameMarks)
{
    const auto message = host::validateName(name.c_str(), allowed);
    return message ? message.get() : "";
}
std::string numberProblem(const std::string& number, const char* allowed = numberMarks)
{
    const auto message = host::validatePhoneNumber(number.c_str(), allowed);
    return message ? message.get() : "";
}

bool mentions(const std::string& text, const std::string& part)
{
    return text.find(part) != std::string::npos;
}

int tokenNumber(const char* list, const char* token) { return host::tokenNumber(list, token, true); }

} // namespace

class AcceptableName : public testing::TestWithParam<const char*> {};

TEST_P(AcceptableName, HasNoMessage) { EXPECT_EQ(nameProblem(GetParam()), ""); }

INSTANTIATE_TEST_SUITE_P(Names, AcceptableName,
                         testing::Values("Anne", "Anne-Marie Dr. Muster", "O'Brien", "O\u2019Brien", "3M",
                                         "Zoë", "Zoe\u0308", "Дмитрий", "山田太郎", "محمد", "अनीता", "٣",
                                         "\U00020000", "-", "."));

TEST(ValidateName, LeavesTheEmptyNameToItsCaller) { EXPECT_EQ(nameProblem(""), ""); }

TEST(ValidateName, QuotesTheCharacterThatIsNotAllowed)
{
    const std::string problem = nameProblem("Anne@home");
    EXPECT_TRUE(mentions(problem, "must not contain \"@\"")) << problem;
    EXPECT_TRUE(mentions(problem, "letters, digits and \"'\" \"-\" blank \".\"")) << problem;
}

TEST(ValidateName, QuotesACharacterBeyondAscii) { EXPECT_TRUE(mentions(nameProblem("Anne € Ltd"), "\"€\"")); }

TEST(ValidateName, NumbersACharacterThatDoesNotPrint)
{
    EXPECT_TRUE(mentions(nameProblem("Anne\tB"), " U+0009.")) << nameProblem("Anne\tB");
    EXPECT_TRUE(mentions(nameProblem("Anne\u200B"), " U+200B."));
    EXPECT_TRUE(mentions(nameProblem("Anne\n"), " U+000A."));
}

TEST(ValidateName, RefusesBytesThatAreNoUtf8)
{
    EXPECT_TRUE(mentions(nameProblem("Zo\xEB"), "the byte 0xEB"));
    EXPECT_TRUE(mentions(nameProblem("Zo\xC3"), "the byte 0xC3"));
    EXPECT_TRUE(mentions(nameProblem("\xED\xA0\x80"), "the byte 0xED")) << "a surrogate";
    EXPECT_TRUE(mentions(nameProblem("\xC0\xAF"), "the byte 0xC0")) << "an overlong form";
}

TEST(ValidateName, RefusesANameOfBlanksBecauseNoPhonebookCouldBeReadWithIt)
{
    EXPECT_TRUE(mentions(nameProblem("   "), "blanks only"));
}

TEST(ValidateName, AllowsWhatItsCallerAllowsAndNoMore)
{
    EXPECT_EQ(nameProblem("a€b", "€"), "");
    EXPECT_NE(nameProblem("a b", "-"), "");
    EXPECT_NE(nameProblem("a-b", ""), "");
    EXPECT_EQ(ValidateName(host::in("Anne"), nullptr), nullptr);
    EXPECT_EQ(ValidateName(nullptr, host::in("-")), nullptr);
}

TEST(ValidateName, LooksAtLongNamesWhole)
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

TEST(ValidatePhoneNumber, QuotesTheCharacterThatIsNotAllowed)
{
    EXPECT_TRUE(mentions(numberProblem("555-CALL"), "must not contain \"C\"")) << numberProblem("555-CALL");
    EXPECT_TRUE(mentions(numberProblem("555;1"), "\";\""));
    EXPECT_TRUE(mentions(numberProblem("5\t5"), "U+0009"));
}

TEST(ValidatePhoneNumber, RefusesDigitsThatNoDeviceDials)
{
    EXPECT_TRUE(mentions(numberProblem("٥٥٥"), "\"٥\""));
    EXPECT_TRUE(mentions(numberProblem("５５"), "\"５\""));
}

TEST(ValidatePhoneNumber, AsksForOneDigit)
{
    EXPECT_TRUE(mentions(numberProblem("+-"), "no digit"));
    EXPECT_TRUE(mentions(numberProblem(""), "no digit"));
}

TEST(ValidatePhoneNumber, NamesEachAcceptableMarkOnce)
{
    EXPECT_TRUE(mentions(numberProblem("x"), R"~(digits and "+" "." "*" "#" "," "-" blank "(" ")" "/")~"))
        << numberProblem("x");
}

TEST(ValidatePhoneNumber, RefusesBytesThatAreNoUtf8)
{
    EXPECT_TRUE(mentions(numberProblem("5\xFF"), "0xFF"));
}

TEST(SaveString, PutsTheArgumentInItsPlace)
{
    EXPECT_STREQ(host::saveString("%s", "Anne").get(), "Anne");
    EXPECT_STREQ(host::saveString("<%s> 100%%", "a%sb").get(), "<a%sb> 100%");
    EXPECT_STREQ(host::saveString("no place", "Anne").get(), "no place");
}

TEST(SaveString, DoesNotTakeAFurtherPlaceForAnArgument)
{
    EXPECT_STREQ(host::saveString("%s %s %n %", "a").get(), "a %s %n %");
    EXPECT_STREQ(std::unique_ptr<char[]>(SaveString(host::in("[%s]"), nullptr)).get(), "[]");
}

TEST(SaveString, KeepsALongTextWhole)
{
    const std::string longText(70000, 'x');
    EXPECT_EQ(host::saveString("%s", longText.c_str()).get(), longText);
}

TEST(GetTokenNum, CountsFromOne)
{
    EXPECT_EQ(tokenNumber(",A,B,C,", "A"), 1);
    EXPECT_EQ(tokenNumber(",A,B,C,", "C"), 3);
    EXPECT_EQ(tokenNumber("A,B,C", "C"), 3);
    EXPECT_EQ(tokenNumber(",Send Time,LanFax Cover,", "LanFax Cover"), 2);
}

TEST(GetTokenNum, MatchesWholeTokensByteForByte)
{
    EXPECT_EQ(tokenNumber(",Alpha,B,", "Al"), 0);
    EXPECT_EQ(tokenNumber(",Alpha,B,", "lpha"), 0);
    EXPECT_EQ(tokenNumber(",Alpha,B,", "alpha"), 0);
    EXPECT_EQ(tokenNumber(",Alpha,B,", "Alpha "), 0);
    EXPECT_EQ(tokenNumber(",Al,Alpha,", "Alpha"), 2);
}

TEST(GetTokenNum, AnswersZeroForWhatIsNoToken)
{
    EXPECT_EQ(tokenNumber(",A,B,", ""), 0);
    EXPECT_EQ(tokenNumber(",A,B,", "A,B"), 0);
    EXPECT_EQ(tokenNumber("", "A"), 0);
    EXPECT_EQ(tokenNumber(",", "A"), 0);
    EXPECT_EQ(tokenNumber(nullptr, "A"), 0);
    EXPECT_EQ(tokenNumber(",A,", nullptr), 0);
}

TEST(GetTokenNum, CountsAnEmptyPlace) { EXPECT_EQ(tokenNumber(",A,,C,", "C"), 3); }

TEST(GetTokenNum, DoesNotChangeWithTheFlag)
{
    for (const char* token : {"A", "b", "B", "x"})
        EXPECT_EQ(GetTokenNum(host::in(",A,B,"), host::in(token), ',', true),
                  GetTokenNum(host::in(",A,B,"), host::in(token), ',', false));
}

TEST(GetTokenNum, TakesAnyDelimiter)
{
    EXPECT_EQ(GetTokenNum(host::in(";A;B;"), host::in("B"), ';', true), 2);
}

TEST(Itoa, WritesEveryNumber)
{
    EXPECT_STREQ(itoa(0), "0");
    EXPECT_STREQ(itoa(2147483647), "2147483647");
    EXPECT_STREQ(itoa(-2147483647 - 1), "-2147483648");
}
