// A fax that is only summed up: what would happen, and nothing that does.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "tests/journeys/journey.h"
#include "tests/servers/print_listener.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

namespace journeys {
namespace {

using Json = nlohmann::json;
using servers::Manner;
using servers::PrintListener;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;

class DryRunJourney : public Journey {
protected:
    Result dryRun(const Arguments& options, const Arguments& recipients = {"--to", "Ann=555-1234"}) const
    {
        Request request;
        request.arguments = {"--now", "2026-11-22T18:00", "fax", letter, "--dry-run"};
        request.arguments.insert(request.arguments.end(), recipients.begin(), recipients.end());
        request.arguments.insert(request.arguments.end(), options.begin(), options.end());
        request.environment = {"TZ=Asia/Kolkata"};
        return driver(request);
    }

    std::string letter = document("letter.ps", "Hello");
};

TEST_F(DryRunJourney, SaysWhatWouldHappenAndDoesNothing)
{
    PrintListener device(Manner::takesAll);
    const auto result = dryRun({"--device", device.address(), "--resolution", "fine", "--speed", "14.4",
                                "--no-confirmation", "--cover", "--note", "Call me", "--prefix", "9",
                                "--credit-card", "4111111111112345", "--send-at", "04:05"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.errors, "");
    EXPECT_EQ(result.output, "fax to 1 recipient: Ann (555-1234)\n"
                             "a cover sheet with the note \"Call me\" and 1 page of letter.ps\n"
                             "resolution fine, at most 14.4 kbit/s, without a confirmation sheet\n"
                             "the dialing prefix 9 is dialled\n"
                             "the credit card ending in 2345 is charged\n"
                             "goes to device " +
                                 device.address() +
                                 " tomorrow at 04:05\n"
                                 "the device is not told the time; the outbox keeps it\n"
                                 "the cover sheet does not name the recipients\n");
    EXPECT_EQ(device.connections(), 0);
    EXPECT_THAT(files(), ElementsAre("letter.ps"));
    EXPECT_FALSE(std::filesystem::exists(home.parent_path() / "home/state")) << "nothing is kept";
}

TEST_F(DryRunJourney, NeedsNoDestination)
{
    const auto result = dryRun({});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.output, "fax to 1 recipient: Ann (555-1234)\n"
                             "1 page of letter.ps; no cover sheet\n"
                             "resolution standard, at most Super G3, with a confirmation sheet\n");
}

TEST_F(DryRunJourney, SaysWhenAlsoWithoutADestination)
{
    EXPECT_THAT(dryRun({"--send-at", "18:00"}).output, EndsWith("\ngoes out at once\n"));
    EXPECT_THAT(dryRun({"--send-at", "17:59"}).output, HasSubstr("\ngoes out tomorrow at 17:59\n"));
}

TEST_F(DryRunJourney, IsDataForOtherPrograms)
{
    const auto result = dryRun({"--json", "--queue", "fax", "--send-at", "04:05", "--hide-recipients",
                                "--cover", "--credit-card", "4111-1111-1111-2345"},
                               {"--to", "Zoë=555-1234", "--to", "Bob=(555) 1234"});
    EXPECT_EQ(result.status, 0);
    const Json json = Json::parse(result.output);
    EXPECT_EQ(json["recipients"][0]["name"], "Zoë");
    EXPECT_EQ(json["recipients"][1]["number"], "(555) 1234");
    EXPECT_EQ(json["document"], "letter.ps");
    EXPECT_EQ(json["pages"], 1);
    EXPECT_EQ(json["coverPage"], true);
    EXPECT_EQ(json["note"], nullptr);
    EXPECT_EQ(json["resolution"], "standard");
    EXPECT_EQ(json["speed"], "super-g3");
    EXPECT_EQ(json["confirmationSheet"], true);
    EXPECT_EQ(json["dialingPrefix"], nullptr);
    EXPECT_EQ(json["card"], "2345");
    EXPECT_EQ(json["destination"], (Json{{"kind", "queue"}, {"name", "fax"}}));
    EXPECT_EQ(json["sendAt"], "2026-11-23T04:05:00+05:30");
    EXPECT_EQ(json["toOutbox"], false);
    EXPECT_EQ(json["charges"].size(), 1U);
    EXPECT_EQ(json["notReaching"].size(), 2U);
    EXPECT_THAT(json["warnings"].at(0).get<std::string>(), HasSubstr("same fax number"));
    EXPECT_EQ(result.output.find("411111111111"), std::string::npos);
}

TEST_F(DryRunJourney, RefusesWhatAFaxIsRefusedFor)
{
    expectFailure(dryRun({}, {}), 1, "no recipients");
    expectFailure(dryRun({"--cover", "--note", "\x1b%-12345X"}), 2, "control character");
    expectFailure(dryRun({"--output", path("none/job")}), 1, "none");
    expectFailure(dryRun({"--output", letter}), 1, "letter.ps");
    EXPECT_EQ(dryRun({"--output", path("job")}).status, 0);
    EXPECT_THAT(files(), ElementsAre("letter.ps"));
    letter = file("letter.ps", "%!PS\nnonsense\n");
    expectFailure(dryRun({}), 1, "cannot be faxed");
    letter = path("none.ps");
    expectFailure(dryRun({}), 1, "there is no such document");
}

TEST_F(DryRunJourney, WhatDoesNotGoWithItIsWrongUsage)
{
    expectFailure(dryRun({"--cover-preview", path("cover.png")}), 2, "--cover-preview");
    expectFailure(driver({"attributes", "--to", "Ann=1", "--dry-run"}), 2, "--dry-run");
}

} // namespace
} // namespace journeys
