// Tests of jobs as data.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/cli/job/job_json.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

namespace quelm {
namespace {

using Json = nlohmann::json;

JobRecipient ann()
{
    JobRecipient recipient;
    recipient.name = "Ann \"A\"\n";
    recipient.number = "555";
    return recipient;
}

TEST(JobJson, WhatIsNotKnownOfASummaryIsNull)
{
    const auto text = summaryJson({}, {});
    EXPECT_TRUE(text.ends_with("}\n"));
    const Json json = Json::parse(text);
    for (const char* key : {"document", "pages", "note", "dialingPrefix", "card", "destination", "sendAt"})
        EXPECT_EQ(json.at(key), nullptr) << key;
    for (const char* key : {"recipients", "charges", "notReaching", "warnings"})
        EXPECT_EQ(json.at(key), Json::array()) << key;
    EXPECT_EQ(json.size(), 16U);
}

TEST(JobJson, EveryKindOfDestinationSaysWhatItIs)
{
    const auto destination = [](const JobTarget& target) {
        JobSummary summary;
        summary.plan.target = target;
        return Json::parse(summaryJson(summary, {}))["destination"];
    };
    EXPECT_EQ(destination(NetworkAddress{"::1", 9101}),
              (Json{{"kind", "device"}, {"address", "[::1]:9101"}}));
    EXPECT_EQ(destination(QueueTarget{"fax"}), (Json{{"kind", "queue"}, {"name", "fax"}}));
    EXPECT_EQ(destination(QueueTarget{"fax", "a:1"}),
              (Json{{"kind", "queue"}, {"name", "fax"}, {"server", "a:1"}}));
    EXPECT_EQ(destination(FileTarget{"a b"}), (Json{{"kind", "file"}, {"path", "a b"}}));
}

TEST(JobJson, AJobOfTheOutboxHoldsAllThatIsKnownOfIt)
{
    constexpr std::time_t due = 1'700'000'000;
    OutboxJob job;
    job.number = 7;
    job.recipients = {ann()};
    job.title = "letter\xff.ps";
    job.due = job.queued = due;
    job.size = 5'000'000'000;
    job.note = "the queue is paused";
    job.hasStream = true;
    const Json json = Json::parse(jobJson(job, due + 7200));
    EXPECT_EQ(json["number"], 7);
    EXPECT_EQ(json["state"], "waiting");
    EXPECT_EQ(json["overdue"], true);
    EXPECT_EQ(json["document"], "letter\xef\xbf\xbd.ps") << "what is no UTF-8 is replaced";
    EXPECT_EQ(json["recipients"][0]["name"], "Ann \"A\"\n");
    EXPECT_EQ(json["ended"], nullptr);
    EXPECT_EQ(json["bytes"], 5'000'000'000);
    EXPECT_EQ(json["queueJob"], nullptr);
    EXPECT_EQ(json["note"], "the queue is paused");
    EXPECT_EQ(json["keepsJob"], true);
    EXPECT_EQ(json["keepsDocument"], false);
    EXPECT_EQ(json["sentBefore"], nullptr);
    EXPECT_EQ(json["held"], false);
    job.state = OutboxState::handedOver;
    job.isHeld = true;
    EXPECT_EQ(Json::parse(jobJson(job, due - 60))["held"], true);
    EXPECT_EQ(Json::parse(jobJson(job, due))["held"], false);
    EXPECT_EQ(Json::parse(jobsJson({job, job}, due)).size(), 2U);
    EXPECT_EQ(jobsJson({}, due), "[]\n");
}

} // namespace
} // namespace quelm
