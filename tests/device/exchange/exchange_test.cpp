// Tests of what the exchange connects.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/exchange/exchange.h"

#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>

namespace quelm::device::tests {
namespace {

using Kind = AnsweringParty::Kind;

class ExchangeTest : public testing::Test {
protected:
    Exchange exchange(const std::string& text) const
    {
        return Exchange(writeFile(folder / "exchange.conf", text));
    }

    TemporaryFolder folder;
};

TEST_F(ExchangeTest, WithoutAFileAFaxMachineAnswersEverywhereAndSaysItsNumber)
{
    const Exchange plain;
    const Connection connection = plain.connect({"5550104477", ""}, 1);
    EXPECT_EQ(connection.number, "5550104477");
    EXPECT_EQ(connection.party.kind, Kind::fax);
    EXPECT_EQ(connection.party.identity, "5550104477");
    EXPECT_EQ(connection.party.fastest, 14400);
    EXPECT_TRUE(connection.party.errorCorrection);
    EXPECT_FALSE(connection.party.noise || connection.party.hangsUpAfterPage ||
                 connection.party.paperForPages);
    EXPECT_EQ(connection.party.keepAs, "");
    EXPECT_TRUE(plain.asksForCards());
}

TEST_F(ExchangeTest, TheKeysForAnOutsideLineAreNoPartOfTheNumberWhenAPauseFollows)
{
    const auto number = [](const Exchange& exchange, const char* keys) {
        return exchange.connect({keys, ""}, 1).number;
    };
    const Exchange plain;
    EXPECT_EQ(number(plain, "9,5550104477"), "5550104477");
    EXPECT_EQ(number(plain, "9,,5550104477"), "5550104477");
    EXPECT_EQ(number(plain, "95550104477"), "95550104477");
    EXPECT_EQ(number(plain, "99,5550104477"), "995550104477");
    EXPECT_EQ(number(plain, "555,0104,477"), "5550104477");
    EXPECT_EQ(number(plain, "9,9,555"), "9555");
    EXPECT_EQ(number(exchange("[exchange]\noutside-line = *0\n"), "*0,5550104477"), "5550104477");
    EXPECT_EQ(number(exchange("[exchange]\noutside-line = none\n"), "9,5550104477"), "95550104477");
}

TEST_F(ExchangeTest, TwoNumbersNeverShareAFolderName)
{
    const Exchange plain;
    EXPECT_EQ(plain.connect({"*31#5550104477", ""}, 1).number, "s31p5550104477");
    EXPECT_EQ(plain.connect({"31#5550104477*", ""}, 1).number, "31p5550104477s");
    EXPECT_EQ(plain.connect({"*31#5550104477", ""}, 1).party.identity, "315550104477");
}

TEST_F(ExchangeTest, NothingStandsBehindNoNumber)
{
    const Exchange plain;
    for (const std::string& keys :
         {std::string(), std::string(","), std::string("9,"), std::string("*#"), std::string(101, '1')})
        EXPECT_EQ(plain.connect({keys, ""}, 1).number, "") << keys;
    EXPECT_EQ(plain.connect({std::string(100, '1'), ""}, 1).number.size(), 100U);
}

TEST_F(ExchangeTest, ANumberIsBusyForItsFirstCalls)
{
    const Exchange file = exchange("[number 1]\nbusy = 2\nspeed = 4800\n[number 2]\nbusy = always\n"
                                   "[number 3]\nbusy = 1\nanswer = voice\n");
    EXPECT_EQ(file.connect({"1", ""}, 1).party.kind, Kind::busy);
    EXPECT_EQ(file.connect({"1", ""}, 2).party.kind, Kind::busy);
    EXPECT_EQ(file.connect({"1", ""}, 3).party.kind, Kind::fax);
    EXPECT_EQ(file.connect({"1", ""}, 1).party.kind, Kind::busy) << "whatever was asked before";
    EXPECT_EQ(file.connect({"2", ""}, 1000000).party.kind, Kind::busy);
    EXPECT_EQ(file.connect({"3", ""}, 1).party.kind, Kind::busy);
    EXPECT_EQ(file.connect({"3", ""}, 2).party.kind, Kind::voice);
}

TEST_F(ExchangeTest, AnswersAsTheFileSays)
{
    const Exchange file = exchange(R"([exchange]
cards = no
others = no-answer
identity = +1 555
[number 1]
speed = 4800
error-correction = no
noise = 12.5
identity = +44 20
[number 2]
hangs-up-after-page = 2
[number 3]
paper-for-pages = 3
[number 4]
answer = voice
[number 5]
answer = busy
)");
    EXPECT_FALSE(file.asksForCards());
    const AnsweringParty slow = file.connect({"9,1", "4000"}, 1).party;
    EXPECT_EQ(slow.kind, Kind::fax);
    EXPECT_EQ(slow.fastest, 4800);
    EXPECT_FALSE(slow.errorCorrection);
    EXPECT_EQ(slow.noise, 12.5);
    EXPECT_EQ(slow.identity, "+44 20");
    EXPECT_EQ(file.connect({"2", ""}, 1).party.hangsUpAfterPage, 2);
    EXPECT_EQ(file.connect({"2", ""}, 1).party.identity, "+1 555");
    EXPECT_EQ(file.connect({"3", ""}, 1).party.paperForPages, 3);
    EXPECT_EQ(file.connect({"4", ""}, 1).party.kind, Kind::voice);
    EXPECT_EQ(file.connect({"5", ""}, 9).party.kind, Kind::busy);
    EXPECT_EQ(file.connect({"6", ""}, 1).party.kind, Kind::noAnswer);
}

} // namespace
} // namespace quelm::device::tests
