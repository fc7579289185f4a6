// What the process is told from outside.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/environment.h"

#include "tests/support/kept_variable.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace {

TEST(ProgramFolder, HoldsTheRunningProgram)
{
    EXPECT_TRUE(std::filesystem::exists(quelm::programFolder() / "base_tests"));
}

TEST(EnvironmentVariable, IsEmptyWhenItIsNotSet)
{
    const KeptVariable kept("QUELM_TEST_VARIABLE");
    unsetenv("QUELM_TEST_VARIABLE");
    EXPECT_EQ(quelm::environmentVariable("QUELM_TEST_VARIABLE"), "");
    setenv("QUELM_TEST_VARIABLE", "a value", 1);
    EXPECT_EQ(quelm::environmentVariable("QUELM_TEST_VARIABLE"), "a value");
}

TEST(HasDisplay, LooksForXAndForWayland)
{
    const KeptVariable x("DISPLAY");
    const KeptVariable wayland("WAYLAND_DISPLAY");
    unsetenv("DISPLAY");
    unsetenv("WAYLAND_DISPLAY");
    EXPECT_FALSE(quelm::hasDisplay());
    setenv("DISPLAY", "", 1);
    EXPECT_FALSE(quelm::hasDisplay());
    setenv("DISPLAY", ":9", 1);
    EXPECT_TRUE(quelm::hasDisplay());
    unsetenv("DISPLAY");
    setenv("WAYLAND_DISPLAY", "wayland-0", 1);
    EXPECT_TRUE(quelm::hasDisplay());
}

} // namespace
