// Help, version, wrong usage, and what this build does not have.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "tests/journeys/journey.h"
#include "tests/support/build_paths.h"
#include "tests/support/copied_program.h"

#include <gmock/gmock.h>

namespace journeys {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

class UsageJourney : public Journey {};

TEST_F(UsageJourney, WrongUsageIsStatusTwo)
{
    const auto letter = document("letter.ps", "Hello");
    const std::vector<Arguments> wrong = {
        {"send"},
        {"fax"},
        {"fax", letter, "extra", "--output", path("out")},
        {"fax", letter, "--to", "Ann=1"},
        {"attributes", "--bogus"},
        {"attributes", "--to", "Ann"},
        {"attributes", "--to", "Ann=1", "--resolution", "coarse"},
        {"attributes", "--to", "Ann=1", "--speed", "9600"},
        {"attributes", "--to", "Ann=1", "--pdl", "pcl"},
        {"attributes", "--to", "Ann=1", "--send-at", "25:00"},
        {"attributes", "--to", "Ann=1", "--prefix", "x"},
        {"attributes", "--to", "Ann=1", "--duplicates", "maybe"},
        {"--now", "2024-13-01T00:00", "attributes", "--to", "Ann=1"},
        {"--now", "yesterday", "attributes", "--to", "Ann=1"},
        {"script"},
    };
    for (const auto& arguments : wrong)
        expectFailure(driver(arguments), 2, "");
    EXPECT_FALSE(exists("out"));
}

TEST_F(UsageJourney, WithoutACommandTheDesktopNeedsADisplay)
{
    Request withoutDisplay;
    withoutDisplay.environment = {"DISPLAY=", "WAYLAND_DISPLAY="};
    expectFailure(driver(withoutDisplay), 1, "no display");
    expectFailure(driver(withoutDisplay), 1, "--help");
}

TEST_F(UsageJourney, ADesktopThatIsNotInstalledIsNamed)
{
    Request alone;
    alone.arguments = {path("quelm-driver"), document("letter.ps", "Hello")};
    alone.environment = {"DISPLAY=:0"};
    copyProgram("quelm-driver", folder);
    expectFailure(runProgram(alone), 1, "no program " + path("quelm-desktop"));
}

TEST_F(UsageJourney, AWordThatIsNoCommandIsNoDocumentEither)
{
    expectFailure(driver(Arguments{"sned"}), 2, "\"sned\" is neither a command nor a document");
}

TEST_F(UsageJourney, HelpAndVersionStandOnStandardOutput)
{
    for (const auto& arguments : {Arguments{"--help"}, Arguments{"fax", "--help"},
                                  Arguments{"attributes", "--help"}, Arguments{"script", "--help"}}) {
        const auto result = driver(arguments);
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.errors, "");
        EXPECT_THAT(result.output, HasSubstr("Usage: quelm-driver"));
    }
    EXPECT_THAT(driver({"--version"}).output, StartsWith("quelm-driver "));
}

TEST_F(UsageJourney, HelpIsAskedForInWhateverWay)
{
    const auto help = driver({"phonebook", "import", "--help"});
    for (const auto& arguments : {Arguments{"phonebook", "import", "-h"},
                                  {"help", "phonebook", "import"},
                                  {"-h", "phonebook", "import"}}) {
        const auto result = driver(arguments);
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.output, help.output);
    }
    EXPECT_EQ(driver({"help"}).output, driver({"--help"}).output);
    EXPECT_EQ(driver({"-V"}).output, driver({"--version"}).output);
    expectFailure(driver({"help", "phonebok"}), 2, "did you mean phonebook?");
}

TEST_F(UsageJourney, WhatIsMistypedIsAnsweredWithWhatIsNear)
{
    const auto letter = document("letter.ps", "Hello");
    expectFailure(driver({"fxa", letter}), 2, "there is no command \"fxa\"; did you mean fax?");
    expectFailure(driver(Arguments{"outbxo"}), 2, "neither a command nor a document; did you mean outbox?");
    expectFailure(driver({"fax", letter, "--outptu", path("out")}), 2, "did you mean --output?");
    expectFailure(driver({"attributes", "--to", "Ann=1", "--resolution", "fien"}), 2, "did you mean fine?");
    EXPECT_FALSE(exists("out"));
}

TEST_F(UsageJourney, HelpThatCannotBeWrittenIsAFailure)
{
    Request full;
    full.arguments = {"help", "fax"};
    full.outputFile = "/dev/full";
    EXPECT_EQ(driver(full).status, 1);
}

TEST_F(UsageJourney, TheDriversOptionsStandBeforeOrBehindTheCommand)
{
    const auto before = driver({"--now", "2024-03-05T14:07", "attributes", "--to", "Ann=1"});
    const auto behind = driver({"attributes", "--to", "Ann=1", "--now", "2024-03-05T14:07"});
    EXPECT_EQ(before.status, 0);
    EXPECT_EQ(behind.status, 0);
    EXPECT_EQ(before.output, behind.output);
}

} // namespace
} // namespace journeys
