// Reasons are kept, and each is logged once.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/boundary/failures.h"

#include "tests/support/log_capture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using quelm::Severity;
using testing::ElementsAre;
using testing::IsEmpty;

class FailuresTest : public testing::Test {
protected:
    LogCapture log;
    quelm::Failures failures;
};

TEST_F(FailuresTest, WhatAUserHasToHearOfIsLoggedAtOnceAsOneLine)
{
    failures.definitionRefused("the dialogs\nare none");
    failures.directoryFailed("the server is gone");
    failures.deviceFailed("the device is off", true);
    EXPECT_THAT(log.messages, ElementsAre("the dialogs are none", "the server is gone", "the device is off"));
    EXPECT_THAT(log.severities, ElementsAre(Severity::error, Severity::warning, Severity::warning));
    EXPECT_EQ(failures.last().definition, "the dialogs are none");
    EXPECT_EQ(failures.last().directory, "the server is gone");
    EXPECT_EQ(failures.last().device, "the device is off");
}

TEST_F(FailuresTest, OfAPhonebookTheUserHearsWhatTheComponentPassesOver)
{
    failures.recordRefused("it was\nnot saved");
    failures.recordsLeftOut("some are\nleft out");
    EXPECT_THAT(log.messages, ElementsAre("it was not saved", "some are left out"));
    EXPECT_THAT(log.severities, ElementsAre(Severity::warning, Severity::warning));
    EXPECT_EQ(failures.last().database, "it was not saved") << "the rest of a phonebook is shown";
}

TEST_F(FailuresTest, WhatTheComponentPassesOverInSilenceIsAWarning)
{
    failures.phonebookNotOpened("it is gone");
    failures.membersMissing("they are sent nothing");
    EXPECT_THAT(log.messages, ElementsAre("it is gone", "they are sent nothing"));
    EXPECT_THAT(log.severities, ElementsAre(Severity::warning, Severity::warning));
}

TEST_F(FailuresTest, OptionsThatCouldNotBeKeptAreHeldByThemselves)
{
    failures.optionsNotKept(true, "at once", false);
    failures.optionsNotKept(false, "later", true);
    failures.optionsNotKept(false, "thrown", true);
    EXPECT_THAT(log.messages, ElementsAre("at once"));
    failures.leaveOut("thrown");
    failures.release();
    EXPECT_THAT(log.messages, ElementsAre("at once", "later"));
    EXPECT_THAT(log.severities, ElementsAre(Severity::error, Severity::warning));
}

TEST_F(FailuresTest, WhatTheComponentMayGetOverIsKeptAndNotLogged)
{
    failures.widgetMissing("there is no widget");
    failures.databaseFailed("there is no\nsuch phonebook");
    EXPECT_THAT(log.messages, IsEmpty());
    EXPECT_EQ(failures.last().definition, "there is no widget");
    EXPECT_EQ(failures.last().database, "there is no such phonebook");
}

TEST_F(FailuresTest, AnAnswerEndsAFailure)
{
    failures.directoryFailed("the server is gone");
    failures.deviceFailed("the device is off", true);
    failures.directoryAnswered();
    EXPECT_EQ(failures.last().directory, "");
    EXPECT_EQ(failures.last().device, "the device is off");
    failures.deviceAnswered();
    EXPECT_EQ(failures.last().device, "");
}

TEST_F(FailuresTest, ADeviceThatLacksOneObjectHasNotFailed)
{
    failures.deviceFailed("the device has no such object", false);
    EXPECT_THAT(log.messages, ElementsAre("the device has no such object"));
    EXPECT_EQ(failures.last().device, "");
}

TEST_F(FailuresTest, HeldOnesAreLoggedInOrderWhenTheyAreReleased)
{
    failures.hold();
    failures.directoryFailed("first");
    failures.definitionRefused("second");
    EXPECT_THAT(log.messages, IsEmpty());
    failures.release();
    EXPECT_THAT(log.messages, ElementsAre("first", "second"));
    EXPECT_THAT(log.severities, ElementsAre(Severity::warning, Severity::error));
    failures.release();
    failures.deviceFailed("third", true);
    EXPECT_THAT(log.messages, ElementsAre("first", "second", "third"));
}

TEST_F(FailuresTest, WhatIsReportedOtherwiseIsNotLogged)
{
    failures.hold();
    failures.deviceFailed("the device is off", true);
    failures.directoryFailed("the server is gone");
    failures.deviceFailed("the device is off", true);
    failures.leaveOut("the device is off");
    failures.release();
    EXPECT_THAT(log.messages, ElementsAre("the server is gone"));
    EXPECT_EQ(failures.last().device, "the device is off");
}

} // namespace
