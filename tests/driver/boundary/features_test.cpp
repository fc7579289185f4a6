// The boundary's functions on features.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "host/features.h"

#include "tests/support/test_dialogs.h"

namespace {

class FeatureCallsTest : public OptionsTest {};

TEST_F(FeatureCallsTest, AValueIsStoredAndReturned)
{
    int value = 77;
    EXPECT_EQ(GetFeatureOptValue(host::in("LanFax Send Speed"), &value), 2.0F);
    EXPECT_EQ(value, 2);
    EXPECT_EQ(GetFeatureOptValue(host::in("SendAtHr"), nullptr), 12.0F);
}

TEST_F(FeatureCallsTest, AnUnknownFeatureLeavesTheValueUntouched)
{
    EXPECT_EQ(host::featureValue("LanFax Dialing Time", 77), 77);
    EXPECT_EQ(host::featureValue("LanFax Cover Sheet Notes", 77), 77);
    int value = 77;
    GetFeatureOptValue(nullptr, &value);
    EXPECT_EQ(value, 77);
}

TEST_F(FeatureCallsTest, TheValueFollowsTheWidget)
{
    widget("LanFax Credit Card").setFlag(true);
    EXPECT_EQ(host::featureValue("LanFax Credit Card", 77), 1);
}

TEST_F(FeatureCallsTest, DefaultsAlsoPutTheBoundWidgetsBack)
{
    widget("LanFax Cover Sheet Option").setNumber(1);
    ASSERT_TRUE(widget("LanFax Cover Sheet Notes").sensitive());
    host::setFeaturesToDefaults(",LanFax Cover Sheet Option,LanFax Setup Cover Sheet Button,");
    EXPECT_FALSE(widget("LanFax Cover Sheet Notes").sensitive());
    EXPECT_FALSE(widget("LanFax Setup Cover Sheet Button").sensitive());
}

TEST_F(FeatureCallsTest, ADefaultedButtonStaysUsableWhileItsOptionIsChosen)
{
    widget("Show Sender Info Checkbox").setFlag(true);
    host::setFeaturesToDefaults(",Sender Properties Button,");
    EXPECT_TRUE(widget("Sender Properties Button").sensitive());
}

TEST_F(FeatureCallsTest, RestoringAlsoPutsTheBoundWidgetsBack)
{
    host::saveFeatures(",Show Sender Info Checkbox,");
    widget("Show Sender Info Checkbox").setFlag(true);
    ASSERT_TRUE(widget("Sender Properties Button").sensitive());
    host::restoreFeatures(",Show Sender Info Checkbox,");
    EXPECT_FALSE(widget("Show Sender Info Checkbox").flag());
    EXPECT_FALSE(widget("Sender Properties Button").sensitive());
}

TEST_F(FeatureCallsTest, ANullListActsOnNothing)
{
    EXPECT_EQ(SetFeaturesWithDefaultValue(nullptr), 0);
    EXPECT_EQ(SaveFeaturesWithCurrentValue(nullptr), 0);
    EXPECT_EQ(RestoreFeaturesWithCurrentValue(nullptr), 0);
}

TEST(FeaturesWithoutADriver, AreUnknown)
{
    EXPECT_EQ(host::featureValue("LanFax Send Speed", 77), 77);
    EXPECT_EQ(host::saveFeatures(",LanFax Send Speed,"), 0);
    EXPECT_EQ(host::restoreFeatures(",LanFax Send Speed,"), 0);
}

} // namespace
