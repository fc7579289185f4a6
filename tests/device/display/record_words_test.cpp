// Tests of the words for what the device remembers.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/display/record_words.h"

#include "base/texts.h"
#include "tests/device/display/page_support.h"
#include "tests/support/kept_variable.h"

#include <gtest/gtest.h>

namespace quelm::tests {
namespace {

using namespace device;
using std::chrono::milliseconds;

TEST(RecordWords, MomentsAreLocalTimeWithSeconds)
{
    const KeptVariable zone("TZ");
    setenv("TZ", "EST5", 1);
    EXPECT_EQ(momentText(momentAt(1795383790)), "2026-11-22 16:43:10");
    EXPECT_EQ(momentText(Moment(milliseconds(1795383790999))), "2026-11-22 16:43:10");
    EXPECT_EQ(momentText(Moment(milliseconds(-1))), "1969-12-31 18:59:59");
}

TEST(RecordWords, DurationsAreMinutesAndSeconds)
{
    EXPECT_EQ(lineTimeText(milliseconds(0)), "0:00");
    EXPECT_EQ(lineTimeText(milliseconds(45'400)), "0:45");
    EXPECT_EQ(lineTimeText(milliseconds(45'600)), "0:46") << "as in the lines of events";
    EXPECT_EQ(lineTimeText(milliseconds(754'000)), "12:34");
    EXPECT_EQ(lineTimeText(milliseconds(3'723'000)), "1:02:03");
}

TEST(RecordWords, ATitleIsOneLineAndAJobWithoutOneHasWordsForIt)
{
    JobRecord job;
    EXPECT_EQ(titleText(job), "(without a title)");
    job.reading.title = " \t ";
    EXPECT_EQ(titleText(job), "(without a title)");
    job.reading.title = "two\nlines \xFF\x1B[31m \xE2\x80\xAE";
    EXPECT_EQ(titleText(job).find_first_of("\n\x1B"), std::string::npos);
    EXPECT_TRUE(isUtf8(titleText(job)));
}

TEST(RecordWords, AFailedCallCarriesTheLibrarysWordsAndCode)
{
    const auto calls = sampleCalls();
    EXPECT_EQ(callResultText(calls[0]), "busy");
    EXPECT_EQ(callResultText(calls[1]), "sent");
    EXPECT_EQ(callResultText(calls[2]), "the other machine hung up (The call dropped prematurely, code 17)");
    CallRecord call;
    EXPECT_EQ(callResultText(call), "calling");
    call.state = CallState::brokenOff;
    EXPECT_EQ(callResultText(call), "broken off");
}

TEST(RecordWords, ARecipientsResultIsThatOfItsLastCall)
{
    const auto job = sampleJob();
    const auto calls = sampleCalls();
    EXPECT_EQ(recipientResultText(job.recipients[0], &calls[3]), "sent");
    EXPECT_EQ(recipientResultText(job.recipients[2], &calls[2]),
              "the other machine hung up (The call dropped prematurely, code 17)");
    EXPECT_EQ(recipientResultText(job.recipients[2], nullptr), "the other machine hung up (code 17)");
    EXPECT_EQ(recipientResultText({}, nullptr), "");
}

TEST(RecordWords, SettingsAreInTheFieldsWords)
{
    EXPECT_EQ(resolutionText(Resolution::standard), "standard (204 x 98 dots per inch)");
    EXPECT_EQ(resolutionText(Resolution::fine), "fine (204 x 196 dots per inch)");
    EXPECT_EQ(resolutionText(Resolution::superfine), "superfine (204 x 391 dots per inch)");
    EXPECT_EQ(speedText(Speed::forced4800), "4800 bit/s");
    EXPECT_EQ(speedText(Speed::upTo14400), "up to 14400 bit/s");
    EXPECT_EQ(speedText(Speed::automatic), "the fastest (Super G3)");
    EXPECT_EQ(pagesText(1), "1 page");
    EXPECT_EQ(pagesText(2), "2 pages");
    EXPECT_EQ(pagesOfText(1, 3), "1 of 3");
    EXPECT_EQ(carriageText(sampleCalls()[0]), "");
    EXPECT_EQ(carriageText(sampleCalls()[1]), "14400 bit/s, error correction");
    EXPECT_EQ(carriageText(sampleCalls()[2]), "4800 bit/s, no error correction");
}

TEST(RecordWords, WhatTheLineDidToThePagesIsCounted)
{
    CallRecord call;
    EXPECT_EQ(damageText(call), "");
    call.repeatedFrames = 1;
    EXPECT_EQ(damageText(call), "1 piece sent again");
    call.damagedRows = 2;
    EXPECT_EQ(damageText(call), "1 piece sent again, 2 lines damaged");
    call.repeatedFrames = 0;
    EXPECT_EQ(damageText(call), "2 lines damaged");
}

TEST(RecordWords, EachStateHasAWord)
{
    EXPECT_EQ(jobStateText(JobState::received), "received");
    EXPECT_EQ(jobStateText(JobState::calling), "calling");
    EXPECT_EQ(jobStateText(JobState::done), "done");
    EXPECT_EQ(jobStateText(JobState::printed), "printed");
    EXPECT_EQ(jobStateText(JobState::refused), "refused");
    EXPECT_EQ(jobStateText(JobState::failed), "failed");
    EXPECT_EQ(recipientStateText(RecipientState::waiting), "waiting");
    EXPECT_EQ(recipientStateText(RecipientState::calling), "calling");
    EXPECT_EQ(recipientStateText(RecipientState::sent), "sent");
    EXPECT_EQ(recipientStateText(RecipientState::failed), "failed");
}

} // namespace
} // namespace quelm::tests
