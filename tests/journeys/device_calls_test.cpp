// Calls that do not go well, one kind for each number of an exchange.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "tests/journeys/device_journey.h"
#include "tests/servers/job_sender.h"
#include "tests/support/processes.h"
#include "tests/support/temporary_folder.h"

#include <gmock/gmock.h>

#include <filesystem>

namespace journeys {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::MatchesRegex;
using testing::Not;
using testing::SizeIs;

class DeviceCallsJourney : public DeviceJourney {
protected:
    /// A document of three pages.
    std::string letter() const
    {
        return file("letter.ps", "%!PS-Adobe-3.0\n/Helvetica findfont 12 scalefont setfont\n"
                                 "1 1 3 { 72 700 moveto 20 string cvs show showpage } for\n%%EOF\n");
    }

    /// The lines about the calls of a number, without their beginnings.
    std::vector<std::string> callsOf(const std::string& number) const
    {
        std::vector<std::string> calls;
        const auto name = ", " + number + ": ";
        for (const auto& line : said(name))
            calls.push_back(line.substr(line.find(name) + name.size()));
        return calls;
    }
};

TEST_F(DeviceCallsJourney, WhateverAnswersTheCallHasItsResult)
{
    const auto exchange = file("exchange.conf", "[number 1001]\nbusy = 1\n"
                                                "[number 1002]\nbusy = always\n"
                                                "[number 1003]\nanswer = no-answer\n"
                                                "[number 1004]\nanswer = voice\n"
                                                "[number 1005]\nspeed = 4800\n"
                                                "[number 1006]\nnoise = 22\n"
                                                "[number 1007]\nnoise = 2\n"
                                                "[number 1008]\nhangs-up-after-page = 1\n"
                                                "[number 1009]\npaper-for-pages = 2\n");
    serve({"--exchange", exchange, "--lines", "4"});
    Arguments options;
    for (int number = 1001; number <= 1010; ++number)
        options.insert(options.end(), {"--to", "Ann=" + std::to_string(number)});
    send(letter(), options);
    ASSERT_TRUE(hasSaid("job 1: done, 4 of 10 sent"));

    const auto pages = renderedPages(path("letter.ps"), "204x98", path("expected.tif"));
    ASSERT_THAT(pages, SizeIs(3));
    const auto sent = MatchesRegex("sent, 3 pages, 14400 bit/s, [0-9]+ s");
    EXPECT_THAT(callsOf("1001"), ElementsAre(MatchesRegex("busy, .*, again at .*"), sent));
    EXPECT_THAT(callsOf("1002"),
                ElementsAre(HasSubstr("busy"), HasSubstr("busy"), HasSubstr("busy"), HasSubstr("given up")));
    EXPECT_THAT(callsOf("1003"), SizeIs(4));
    EXPECT_THAT(callsOf("1003").back(), MatchesRegex("no answer, .*, given up"));
    EXPECT_THAT(callsOf("1004"), ElementsAre(HasSubstr("failed")));
    EXPECT_THAT(callsOf("1005"), ElementsAre(MatchesRegex("sent, 3 pages, 4800 bit/s, [0-9]+ s")));
    EXPECT_THAT(callsOf("1006"), ElementsAre(MatchesRegex("sent, 3 pages, [0-9]+ bit/s, [0-9]+ s")));
    EXPECT_THAT(callsOf("1007"), ElementsAre(HasSubstr("failed")));
    EXPECT_THAT(callsOf("1008"), ElementsAre(MatchesRegex("failed, 1 page, .*")));
    EXPECT_THAT(callsOf("1009"), ElementsAre(MatchesRegex("failed, 2 pages, .*")));
    EXPECT_THAT(callsOf("1010"), ElementsAre(sent));

    for (const auto* number : {"1001", "1005", "1006", "1010"})
        EXPECT_EQ(receivedPages(number), pages) << number;
    EXPECT_EQ(receivedPages("1008"), std::vector(pages.begin(), pages.begin() + 1));
    EXPECT_EQ(receivedPages("1009"), std::vector(pages.begin(), pages.begin() + 2));
    for (const auto* number : {"1002", "1003", "1004"})
        EXPECT_THAT(received(number), IsEmpty()) << number;
    for (const auto& file : received("1007"))
        EXPECT_LT(pagesIn(file).size(), 3U) << "it failed";
}

TEST_F(DeviceCallsJourney, PrefixAndCardAreDialledAndTheCardIsShownNowhere)
{
    serve();
    send(letter(),
         {"--to", "Ann=555-0001", "--prefix", "9", "--credit-card", "4000123412341234", "--confirmation"});
    ASSERT_TRUE(hasSaid("confirmation sheet job-1.pdf"));
    EXPECT_THAT(callsOf("9,5550001"), ElementsAre(HasSubstr("sent")));
    EXPECT_THAT(receivers(), ElementsAre("5550001")) << "behind the outside line";
    // Not a byte of it is left anywhere.
    device->stop();
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder / "state"))
        EXPECT_THAT(contentOf(entry.path()), Not(HasSubstr("4000123412341234"))) << entry.path();
    EXPECT_THAT(said("4000123412341234"), IsEmpty());
}

TEST_F(DeviceCallsJourney, AMailboxStandsOnTheConfirmationSheet)
{
    serve();
    send(letter(),
         {"--recipients", file("list.csv", "name,number,mailbox\nAnn,1001,4321\n"), "--confirmation"});
    ASSERT_TRUE(hasSaid("confirmation sheet job-1.pdf"));
    EXPECT_THAT(contentOf(path("state/reports/job-1.txt")), HasSubstr("4321"));
}

TEST_F(DeviceCallsJourney, AsManyCallsAreUnderWayAsThereAreLines)
{
    serve({"--real-time", "--lines", "4"});
    send(letter(), {"--to", "Ann=1001", "--to", "Bob=1002", "--to", "Cleo=1003", "--to", "Dora=1004"});
    // Each receiver has a file for what comes.
    EXPECT_TRUE(soon([this] {
        const std::filesystem::directory_iterator incoming(path("state/incoming"));
        return std::distance(begin(incoming), end(incoming)) == 4;
    }));
    EXPECT_THAT(said("call "), IsEmpty()) << "all go on";
}

TEST_F(DeviceCallsJourney, AConfirmationSheetIsThereWhenItWasAskedFor)
{
    const auto exchange = file("exchange.conf", "[number 1002]\nbusy = always\n");
    serve({"--exchange", exchange, "--until-idle"});
    send(letter(), {"--to", "Ann=1001", "--to", "Bob=1002", "--confirmation"});
    ASSERT_TRUE(deviceEnds());
    const auto text = contentOf(path("state/reports/job-1.txt"));
    EXPECT_THAT(text, HasSubstr("1001"));
    EXPECT_THAT(text, HasSubstr("1002"));
    EXPECT_THAT(contentOf(path("state/reports/job-1.pdf")), testing::StartsWith("%PDF-"));
}

TEST_F(DeviceCallsJourney, ARefusedJobDialsNobodyAndItsSenderFails)
{
    serve();
    driver({"fax", letter(), "--to", "Ann=1001", "--to", "Bob=1002", "--output", path("job")});
    auto job = content("job");
    const std::string line = "OID_ATT_FAX_RESOLUTION 0;";
    job.replace(job.find(line), line.size(), "OID_ATT_FAX_RESOLUTION 7;");
    EXPECT_EQ(servers::sendJob(address(), job), servers::DeviceEnding::reset);
    EXPECT_TRUE(hasSaid("job 1: refused: line "));

    EXPECT_THAT(receivers(), IsEmpty());
    EXPECT_THAT(said("call "), IsEmpty());
}

TEST_F(DeviceCallsJourney, ADeviceWithoutRoomFailsTheDriverAndGoesOn)
{
    // Files of more than four megabytes are refused by the system, as they are on a disk without room.
    const auto command = deviceCommand();
    Arguments limited{servers::systemProgram("sh"), "-c", "ulimit -f 8192; exec \"$@\"", "sh"};
    limited.insert(limited.end(), command.arguments.begin(), command.arguments.end());
    serveBy(limited);
    const auto large = file("large.ps", content(std::filesystem::path(letter()).filename()) + "%" +
                                            std::string(std::size_t{6} << 20U, 'x') + "\n");
    const auto result = withoutSummary(driver(fax(large, {"--to", "Ann=1001"})));
    expectFailure(result, 1, "device " + address() + ": broke off the connection");
    EXPECT_TRUE(hasSaid("job from 127.0.0.1: not kept: it cannot be written to the device's folder"));

    send(letter(), {"--to", "Ann=1001"});
    EXPECT_TRUE(hasSaid("job 1: done, 1 of 1 sent"));
    EXPECT_THAT(received("1001"), SizeIs(1));
}

} // namespace
} // namespace journeys
