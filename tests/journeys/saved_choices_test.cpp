// The user's own choices: kept by what is done in the dialogs, left alone by one job's options.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "tests/journeys/journey.h"

#include <gmock/gmock.h>

namespace journeys {
namespace {

using testing::AllOf;
using testing::HasSubstr;

class SavedChoicesJourney : public Journey {};

TEST_F(SavedChoicesJourney, OptionsOfOneJobAreNotKept)
{
    const auto before = attributeText({"--to", "Ann=1"});
    attributes({"--to", "Ann=1", "--resolution", "fine", "--speed", "4800", "--no-confirmation", "--cover",
                "--prefix", "9", "--credit-card", "1"});
    EXPECT_EQ(attributeText({"--to", "Ann=1"}), before);
}

TEST_F(SavedChoicesJourney, WhatTheUserChoseInTheDialogIsTheStartingPoint)
{
    script({"call T40InvokeFaxDialog", "choose \"LanFax Resolution\" 2", "choose \"LanFax Send Speed\" 0",
            "press \"LanFax OK Button\""});
    EXPECT_THAT(attributeText({"--to", "Ann=1"}),
                AllOf(HasSubstr("RESOLUTION 1;"), HasSubstr("OID_VAL_FAX_TYPE_G3_FORCED_4800;")));
    EXPECT_THAT(attributeText({"--to", "Ann=1", "--resolution", "superfine"}),
                AllOf(HasSubstr("RESOLUTION 2;"), HasSubstr("OID_VAL_FAX_TYPE_G3_FORCED_4800;")));
}

TEST_F(SavedChoicesJourney, TheUsersCoverSheetGoesWithEveryJob)
{
    script({"call T40InvokeFaxDialog", "choose \"LanFax Cover Sheet Option\" 1",
            "type \"LanFax Cover Sheet Notes\" \"Hello\"", "press \"LanFax Setup Cover Sheet Button\"",
            "tick \"Show Sender Info Checkbox\" on", "press \"Sender Properties Button\"",
            "type \"Sender Fax Name\" \"Bob\"", "press \"LanFaxSender OK Button\"",
            "press \"LanFaxCover OK Button\"", "press \"LanFax OK Button\""});
    const auto letter = document("letter.ps", "Hello");
    ASSERT_EQ(driver({"fax", letter, "--to", "Ann=1", "--output", path("job")}).status, 0);
    EXPECT_THAT(content("job"), AllOf(HasSubstr("/SenderName       (Bob)"), HasSubstr("[ (Hello) ]")));
    ASSERT_EQ(driver({"fax", letter, "--to", "Ann=1", "--no-cover", "--output", path("job")}).status, 0);
    EXPECT_THAT(content("job"), testing::Not(HasSubstr("/SenderName")));
}

} // namespace
} // namespace journeys
