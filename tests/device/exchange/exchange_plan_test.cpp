// Tests of reading the exchange's file.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/exchange/exchange_plan.h"

#include "tests/support/failure_line.h"
#include "tests/support/temporary_folder.h"

#include <gmock/gmock.h>

namespace quelm::device::tests {
namespace {

using quelm::test::failureLine;
using testing::HasSubstr;

class ExchangePlanTest : public testing::Test {
protected:
    std::string file(const std::string& text) const { return writeFile(folder / "exchange.conf", text); }

    /// Why a file with this text is refused, without the name of the file, which stands in it.
    std::string refusal(const std::string& text) const
    {
        const std::string head = "the exchange's file \"" + (folder / "exchange.conf") + "\" ";
        const std::string line = failureLine([&] { (void)readExchangePlan(file(text)); });
        EXPECT_TRUE(line.starts_with(head)) << line;
        return line.substr(std::min(head.size(), line.size()));
    }

    TemporaryFolder folder;
};

TEST_F(ExchangePlanTest, AFileThatSaysNothingChangesNothing)
{
    for (const char* text : {"", "\n \n", "# nothing\n", "[exchange]\n"}) {
        const ExchangePlan plan = readExchangePlan(file(text));
        EXPECT_EQ(plan.outsideLine, "9");
        EXPECT_TRUE(plan.asksForCards);
        EXPECT_EQ(plan.others, AnsweringParty::Kind::fax);
        EXPECT_TRUE(plan.numbers.empty());
    }
}

TEST_F(ExchangePlanTest, TheClosestPatternWins)
{
    const ExchangePlan plan =
        readExchangePlan(file("[number *]\n[number 555*]\n[number 555?]\n[number 5551]\n"
                              "[number 55?1]\n[number 5?51]\n[number 55512*]\n"));
    const auto found = [&](const char* number) {
        const NumberPlan* best = planFor(plan, number);
        return best == nullptr ? "none" : best->pattern;
    };
    EXPECT_EQ(found("5551"), "5551");
    EXPECT_EQ(found("5552"), "555?");
    EXPECT_EQ(found("5541"), "55?1");
    EXPECT_EQ(found("555"), "555*");
    EXPECT_EQ(found("55533"), "555*");
    EXPECT_EQ(found("555123"), "55512*");
    EXPECT_EQ(found("55512"), "55512*");
    EXPECT_EQ(found("*#"), "*");
    EXPECT_EQ(found(""), "*");
    EXPECT_EQ(planFor(readExchangePlan(file("[number 1]\n")), "12"), nullptr);
    const ExchangePlan digit = readExchangePlan(file("[number 555?]\n"));
    EXPECT_NE(planFor(digit, "5550"), nullptr);
    EXPECT_EQ(planFor(digit, "555#"), nullptr) << "it stands for a digit";

    const ExchangePlan equal = readExchangePlan(file("[number 5?]\n[number ?5]\n"));
    EXPECT_EQ(planFor(equal, "55")->pattern, "5?") << "the one that stands first";
}

TEST_F(ExchangePlanTest, WhatIsNotKnownIsNamedWithItsGroupAndKey)
{
    EXPECT_EQ(refusal("[numbers 1]\n"),
              "has an unknown group [numbers 1]; possible are [exchange] and [number PATTERN]");
    EXPECT_EQ(refusal("[exchange]\nother = fax\n"),
              "has an unknown key \"other\" in [exchange]; possible are "
              "outside-line, cards, others, identity");
    EXPECT_THAT(refusal("[number 1]\nanswers = fax\n"),
                HasSubstr("has an unknown key \"answers\" in [number 1]"));
    EXPECT_EQ(refusal("[number 1]\nanswer = Fax\n"),
              "has \"Fax\" at [number 1] answer; write \"fax\", \"busy\", \"no-answer\" or \"voice\"");
    EXPECT_EQ(refusal("[number 1]\nbusy =\n"),
              "has no value at [number 1] busy; write one or remove the line");
    EXPECT_THAT(refusal("answer = fax\n"), HasSubstr("has \"answer = fax\" in line 1 ahead of any group"));
    EXPECT_THAT(refusal("[number 1]\nanswer\n"), HasSubstr("has \"answer\" in line 2, which is no"));
    EXPECT_EQ(refusal("# \xFF\n"), "is no UTF-8 text in line 1; save it as UTF-8");
}

TEST_F(ExchangePlanTest, ValuesThatNoExchangeHasAreRefused)
{
    for (const char* line :
         {"busy = 0", "busy = -1", "busy = 1x", "busy = 99999999999", "busy = never", "speed = 9600",
          "speed = 04800", "error-correction = true", "noise = -1", "noise = loud", "noise = nan",
          "noise = inf", "noise = 101", "noise = 1,5", "hangs-up-after-page = 0", "hangs-up-after-page = 1.5",
          "paper-for-pages = 0", "identity = Ann", "identity = 123456789012345678901"})
        EXPECT_THAT(refusal("[number 1]\n" + std::string(line) + "\n"), HasSubstr("; write ")) << line;
    for (const char* line : {"outside-line = 9,", "outside-line = nine", "cards = maybe", "others = nobody"})
        EXPECT_THAT(refusal("[exchange]\n" + std::string(line) + "\n"), HasSubstr("; write ")) << line;
    for (const char* pattern : {"", " ", "55*5", "**", "5#", "555-0104", "+49555", "555 0104", "a"})
        EXPECT_THAT(
            refusal("[number " + std::string(pattern) + "]\n"),
            HasSubstr("whose number is not written as it is dialled: write its digits without \"-\" and "
                      "blanks, 00 for \"+\", \"?\" for any one digit"))
            << pattern;
    EXPECT_THAT(refusal("[number " + std::string(101, '1') + "]\n"), HasSubstr("longer than the 100 keys"));
}

TEST_F(ExchangePlanTest, WhatMayStandThereIsSaidWithItsRange)
{
    EXPECT_EQ(refusal("[number 5]\nnoise = abc\n"),
              "has \"abc\" at [number 5] noise; write a number of dB from 0 to 100, by which the signal is "
              "above the noise");
    EXPECT_EQ(refusal("[number 5]\nbusy = 0\n"),
              "has \"0\" at [number 5] busy; write \"always\", or a number of calls from 1 to 1000");
    EXPECT_EQ(refusal("[number 5]\npaper-for-pages = 0\n"),
              "has \"0\" at [number 5] paper-for-pages; write a number of pages from 1 to 100000");
    EXPECT_EQ(refusal("[exchange]\noutside-line = nine\n"),
              "has \"nine\" at [exchange] outside-line; write the keys for an outside line, of digits, \"*\" "
              "and \"#\", or \"none\"");
    for (const char* line : {"busy = 1000", "noise = 0", "noise = 100", "paper-for-pages = 100000",
                             "speed = 14400", "error-correction = yes"})
        EXPECT_EQ(readExchangePlan(file("[number 5]\n" + std::string(line) + "\n")).numbers.size(), 1U)
            << line;
}

TEST_F(ExchangePlanTest, WhatContradictsItselfIsRefused)
{
    for (const char* lines :
         {"answer = voice\nnoise = 20", "answer = busy\nspeed = 4800", "answer = no-answer\nidentity = 1",
          "answer = busy\nbusy = 1", "busy = always\nspeed = 4800", "busy = always\nanswer = voice",
          "hangs-up-after-page = 1\npaper-for-pages = 1"})
        EXPECT_THAT(refusal("[number 1]\n" + std::string(lines) + "\n"),
                    HasSubstr("contradicts itself in [number 1]"))
            << lines;
}

TEST_F(ExchangePlanTest, NothingStandsTwice)
{
    EXPECT_EQ(refusal("[number 1]\nbusy = 1\n[number 1]\nspeed = 4800\n"),
              "has the group [number 1] twice; join the two");
    EXPECT_EQ(refusal("[number 1]\nbusy = 1\nbusy=2\n"),
              "has [number 1] busy twice; remove one of the lines");
    EXPECT_EQ(refusal("[number 1]\n[number  1]\n"), "has the group [number  1] twice; join the two");
    EXPECT_EQ(
        readExchangePlan(file("[number 1]\n#busy = 1\nbusy = 2\n[number 2]\nbusy = 1\n")).numbers.size(), 2U);
}

TEST_F(ExchangePlanTest, AFileThatCannotBeReadIsNamed)
{
    EXPECT_THAT(failureLine([&] { (void)readExchangePlan(folder / "absent"); }), HasSubstr("absent"));
    EXPECT_THAT(failureLine([&] { (void)readExchangePlan(folder.path()); }),
                HasSubstr(folder.path().string()));
    EXPECT_THAT(failureLine([&] { (void)readExchangePlan("/dev/zero"); }), HasSubstr("/dev/zero"));
}

TEST_F(ExchangePlanTest, ManyNumbersAreReadQuickly)
{
    std::string text;
    for (int number = 0; number < 5000; ++number)
        text += "[number " + std::to_string(5550000000 + number) + "]\nbusy = 1\n";
    const ExchangePlan plan = readExchangePlan(file(text));
    EXPECT_EQ(plan.numbers.size(), 5000U);
    EXPECT_EQ(planFor(plan, "5550004999")->pattern, "5550004999");
}

} // namespace
} // namespace quelm::device::tests
