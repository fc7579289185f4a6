// Looking callbacks up: the component's, the driver's own, and names that nobody provides.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/core/callbacks.h"

#include "tests/support/log_capture.h"
#include "tests/support/plugin_paths.h"
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>

namespace {

class CallbacksTest : public testing::Test {
protected:
    CallbacksTest() { EXPECT_TRUE(library.start(state.guard)); }

    std::string copyOfGood()
    {
        std::filesystem::copy_file(pluginPath("good"), folder / "component.so");
        return folder / "component.so";
    }
    bool fire(const char* name) { return callbacks.fire(*state.tree.find(name)); }
    std::string journal() const { return state.tree.find("Journal")->text(); }

    TemporaryFolder folder;
    quelm::HostState state{"/opt/quelm", "ann"};
    quelm::ComponentLibrary library{copyOfGood()};
    quelm::Callbacks callbacks{state, library};
};

TEST_F(CallbacksTest, TheComponentGetsTheObjectThatFired)
{
    EXPECT_TRUE(fire("Box"));
    EXPECT_EQ(journal(), "Box;");
}

TEST_F(CallbacksTest, AHelpButtonAsksTheDriverForItsTopic)
{
    std::string shown;
    callbacks.setHelp([&shown](const std::string& topic) { shown = topic; });
    EXPECT_EQ(callbacks.helpTopic(), "");
    EXPECT_EQ(callbacks.helpButton(), nullptr);
    EXPECT_TRUE(fire("Help Button"));
    EXPECT_EQ(callbacks.helpButton(), state.tree.find("Help Button"));
    EXPECT_EQ(callbacks.helpTopic(), "LanFax");
    EXPECT_EQ(shown, "LanFax");
}

TEST_F(CallbacksTest, ANameThatNobodyProvidesIsLeftToTheCaller)
{
    EXPECT_FALSE(fire("Lonely Button"));
    EXPECT_FALSE(fire("Silent Button"));
    EXPECT_FALSE(callbacks.call("ProvidedByNobody"));
    EXPECT_FALSE(callbacks.call("pLanFaxXMLData"));
}

TEST_F(CallbacksTest, AnExceptionIsLoggedWithTheCallbacksNameAndTheDriverLivesOn)
{
    const LogCapture log;
    EXPECT_TRUE(fire("Throwing Button"));
    EXPECT_TRUE(callbacks.call("ThrowsNumber"));
    ASSERT_EQ(log.messages.size(), 2U);
    EXPECT_EQ(log.messages[0], "the component failed in Throws: out of ideas");
    EXPECT_NE(log.messages[1].find("ThrowsNumber"), std::string::npos);
    EXPECT_TRUE(fire("Button"));
    EXPECT_EQ(journal(), "Button;");
}

TEST_F(CallbacksTest, WhatReturnedIsRememberedUntilTheComponentIsStartedAgain)
{
    const LogCapture log;
    EXPECT_TRUE(callbacks.has("Fired"));
    EXPECT_FALSE(callbacks.has("ProvidedByNobody"));
    EXPECT_FALSE(callbacks.hasDone("Fired"));
    fire("Button");
    fire("Throwing Button");
    EXPECT_TRUE(callbacks.hasDone("Fired"));
    EXPECT_FALSE(callbacks.hasDone("Throws"));
    callbacks.forget("Fired");
    EXPECT_FALSE(callbacks.hasDone("Fired"));
    callbacks.call("Fired");
    EXPECT_TRUE(callbacks.hasDone("Fired"));
    callbacks.call("InitializeFaxComponent");
    EXPECT_FALSE(callbacks.hasDone("Fired"));
}

TEST_F(CallbacksTest, ACallInTheUsersPlaceIsToldFromTheUsersOwn)
{
    EXPECT_FALSE(callbacks.hasUserDone("Fired"));
    fire("Button");
    EXPECT_TRUE(callbacks.hasUserDone("Fired"));
    callbacks.noteUnseen("Fired");
    EXPECT_FALSE(callbacks.hasUserDone("Fired"));
    EXPECT_TRUE(callbacks.hasDone("Fired"));
    fire("Button");
    EXPECT_TRUE(callbacks.hasUserDone("Fired"));
    callbacks.call("InitializeFaxComponent");
    EXPECT_FALSE(callbacks.hasUserDone("Fired"));
}

TEST_F(CallbacksTest, OneActionComesAheadOfTheFirstCallIntoTheComponent)
{
    int times = 0;
    callbacks.setBeforeFirst([&] {
        ++times;
        EXPECT_EQ(journal(), "");
        callbacks.call("Fired"); // which is no reason to begin again
    });
    fire("Lonely Button");
    fire("Help Button");
    EXPECT_EQ(times, 0);
    fire("Button");
    fire("Button");
    EXPECT_EQ(times, 1);
    EXPECT_EQ(journal(), "called;Button;Button;");
}

} // namespace
