// Finding the installation, the user and the settings.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/config/installation.h"

#include "base/error.h"
#include "tests/support/kept_variable.h"
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

namespace {

class InstallationTest : public testing::Test {
protected:
    const KeptVariable home{"HOME"};
    const KeptVariable configHome{"XDG_CONFIG_HOME"};
    TemporaryFolder folder;
};

TEST_F(InstallationTest, ByDefaultIsTheFolderOfTheRunningProgram)
{
    EXPECT_EQ(quelm::resolveHome(""), std::filesystem::read_symlink("/proc/self/exe").parent_path().string());
}

TEST_F(InstallationTest, IsAbsoluteAndEndsWithoutASlash)
{
    EXPECT_EQ(quelm::resolveHome(folder.path().string() + "///"), folder.path().string());
    EXPECT_EQ(quelm::resolveHome("."), std::filesystem::current_path().string());
    EXPECT_EQ(quelm::resolveHome("/"), "");
}

TEST_F(InstallationTest, MustBeAFolder)
{
    EXPECT_THROW(quelm::resolveHome(folder / "missing"), quelm::Error);
    EXPECT_THROW(quelm::resolveHome(writeFile(folder / "file", "")), quelm::Error);
}

TEST_F(InstallationTest, AUserIsOneWhoseNameCanNameAFile)
{
    EXPECT_EQ(quelm::resolveUser("ann.o'neil zoë"), "ann.o'neil zoë");
    EXPECT_FALSE(quelm::resolveUser("").empty());
    for (const char* name : {"..", ".", "a/b", "/", "a\nb"})
        EXPECT_THROW(quelm::resolveUser(name), quelm::Error) << name;
}

TEST_F(InstallationTest, OptionsAreKeptInTheFolderOfSettings)
{
    setenv("HOME", "/home/ann", 1);
    setenv("XDG_CONFIG_HOME", "/settings", 1);
    EXPECT_EQ(quelm::featureFilePath("", "ann"), "/settings/quelm/features/ann.ini");
    EXPECT_EQ(quelm::featureFilePath("/mine", "ann"), "/mine/features/ann.ini");
    setenv("XDG_CONFIG_HOME", "relative", 1);
    EXPECT_EQ(quelm::featureFilePath("", "ann"), "/home/ann/.config/quelm/features/ann.ini");
    unsetenv("XDG_CONFIG_HOME");
    EXPECT_EQ(quelm::featureFilePath("", "ann"), "/home/ann/.config/quelm/features/ann.ini");
}

TEST_F(InstallationTest, TheOutboxLiesInTheFolderOfStates)
{
    const KeptVariable stateHome{"XDG_STATE_HOME"};
    setenv("HOME", "/home/ann", 1);
    setenv("XDG_STATE_HOME", "/states", 1);
    EXPECT_EQ(quelm::outboxFolder(), "/states/quelm/outbox");
    setenv("XDG_STATE_HOME", "relative", 1);
    EXPECT_EQ(quelm::outboxFolder(), "/home/ann/.local/state/quelm/outbox");
    unsetenv("XDG_STATE_HOME");
    EXPECT_EQ(quelm::outboxFolder(), "/home/ann/.local/state/quelm/outbox");
}

TEST_F(InstallationTest, GetsItsFolderForPhonebooks)
{
    quelm::prepareInstallation(folder.path());
    quelm::prepareInstallation(folder.path());
    EXPECT_TRUE(std::filesystem::is_directory(folder / "db"));
}

} // namespace
