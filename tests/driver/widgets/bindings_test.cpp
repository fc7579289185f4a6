// Which widgets follow which options.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/widgets/bindings.h"

#include "tests/support/test_dialogs.h"

#include <vector>

namespace {

struct Binding {
    const char* option;
    std::vector<const char*> followers;
};

const std::vector<Binding> table{
    {"LanFax Cover Sheet Option", {"LanFax Setup Cover Sheet Button", "LanFax Cover Sheet Notes"}},
    {"Show Rcpt Info Checkbox", {"Show All Rcpt Info", "Show Custom Text"}},
    {"Show Sender Info Checkbox", {"Sender Properties Button", "Sender Info"}},
    {"LanFax Send Time", {"SendAtHr", "SendAtMin", "SendAtAmPm"}},
    {"LanFax Dialing Prefix", {"LanFax Dialing Prefix Info"}},
    {"LanFax Credit Card", {"LanFax Credit Card Info"}},
};

class BindingsTest : public OptionsTest {
protected:
    void set(const char* option, int value)
    {
        if (widget(option).hasFlag())
            widget(option).setFlag(value != 0);
        else
            widget(option).setNumber(value);
    }
};

TEST_F(BindingsTest, FollowersAreInsensitiveAtTheStart)
{
    for (const Binding& binding : table)
        for (const char* follower : binding.followers)
            EXPECT_FALSE(widget(follower).sensitive()) << follower;
    EXPECT_FALSE(widget("Cover Sheet Custom Text").sensitive());
}

TEST_F(BindingsTest, FollowersAreSensitiveAsLongAsTheOptionIsChosen)
{
    for (const Binding& binding : table) {
        set(binding.option, 1);
        for (const char* follower : binding.followers)
            EXPECT_TRUE(widget(follower).sensitive()) << follower;
        set(binding.option, 0);
        for (const char* follower : binding.followers)
            EXPECT_FALSE(widget(follower).sensitive()) << follower;
    }
}

TEST_F(BindingsTest, TheCustomTextNeedsTheRecipientInformationAndTheCustomTextChoice)
{
    set("Show Rcpt Info", 1);
    EXPECT_FALSE(widget("Cover Sheet Custom Text").sensitive());
    set("Show Rcpt Info Checkbox", 1);
    EXPECT_TRUE(widget("Cover Sheet Custom Text").sensitive());
    set("Show Rcpt Info", 0);
    EXPECT_FALSE(widget("Cover Sheet Custom Text").sensitive());
}

TEST_F(BindingsTest, AnOptionThatTheComponentSetsIsFollowedToo)
{
    host::setTicked("LanFax Credit Card", true);
    EXPECT_TRUE(widget("LanFax Credit Card Info").sensitive());
}

TEST_F(BindingsTest, ASensitivityThatTheComponentSetsStandsUntilTheOptionChanges)
{
    host::setSensitive("Sender Info", true);
    set("LanFax Credit Card", 1);
    EXPECT_TRUE(widget("Sender Info").sensitive());
    set("Show Sender Info Checkbox", 1);
    set("Show Sender Info Checkbox", 0);
    EXPECT_FALSE(widget("Sender Info").sensitive());
}

TEST(BindingsWithoutDialogs, HaveNothingToDo)
{
    quelm::HostState state("/opt/quelm", "ann");
    state.bindings.applyAll();
    EXPECT_EQ(state.tree.windows().size(), 1U);
}

} // namespace
