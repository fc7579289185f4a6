// The folder of a user's own, and what others lay in its way.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/config/user_place.h"

#include "base/error.h"
#include "tests/support/kept_variable.h"
#include "tests/support/log_capture.h"
#include "tests/support/two_users.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstdlib>
#include <string>

namespace {

namespace fs = std::filesystem;

using quelm::prepareUserPlace;
using testing::ElementsAre;
using testing::HasSubstr;

constexpr auto userAlone = fs::perms::owner_all;

class UserPlaceTest : public testing::Test {
protected:
    UserPlaceTest()
    {
        fs::create_directories(installation + "/db/phonebook");
        setenv("XDG_DATA_HOME", (folder / "data").c_str(), 1);
    }

    quelm::UserPlace prepare() { return prepareUserPlace("", installation, "ann"); }

    /// Why it cannot be prepared.
    std::string problem()
    {
        try {
            prepare();
        } catch (const quelm::Error& error) {
            return error.what();
        }
        return "";
    }

    static fs::perms modeOf(const std::string& path) { return fs::status(path).permissions(); }

    const KeptVariable home{"HOME"};
    const KeptVariable dataHome{"XDG_DATA_HOME"};
    TemporaryFolder folder;
    std::string installation = folder / "lib/quelm";
    std::string own = folder / "data/quelm";
};

TEST_F(UserPlaceTest, ANamedFolderHoldsThePhonebooksItself)
{
    const auto place = prepareUserPlace(installation, installation, "ann");
    EXPECT_EQ(place.location, installation);
    EXPECT_EQ(place.formerPhonebook, "");
    EXPECT_FALSE(fs::exists(own));
}

TEST_F(UserPlaceTest, ABuildTreeHoldsThePhonebooksItself)
{
    writeFile(folder / "lib/CMakeCache.txt", "");
    EXPECT_EQ(prepare().location, installation);
    EXPECT_FALSE(fs::exists(own));
}

TEST_F(UserPlaceTest, OfAnInstallationIsAFolderThatTheUserAloneMayEnter)
{
    const auto mask = umask(0);
    const auto place = prepare();
    umask(mask);
    EXPECT_EQ(place.location, own);
    EXPECT_EQ(place.formerPhonebook, installation + "/db/phonebook/user/ann.xdb");
    for (const auto* made : {"data", "data/quelm", "data/quelm/db/phonebook/user"})
        EXPECT_EQ(modeOf(folder / made), userAlone) << made;
    EXPECT_EQ(fs::read_symlink(own + "/db/phonebook/shared"), installation + "/db/phonebook");
    EXPECT_EQ(fs::read_symlink(own + "/fennodial"), installation + "/fennodial");
}

TEST_F(UserPlaceTest, IsBelowTheHomeFolderUnlessItIsSaid)
{
    setenv("HOME", (folder / "ann").c_str(), 1);
    for (const char* none : {"", "relative"}) {
        setenv("XDG_DATA_HOME", none, 1);
        EXPECT_EQ(prepare().location, folder / "ann/.local/share/quelm");
    }
}

TEST_F(UserPlaceTest, LinksThatLeadElsewhereAreMadeAnew)
{
    prepare();
    installation = folder / "newer";
    fs::create_directory(installation);
    prepare();
    EXPECT_EQ(fs::read_symlink(own + "/db/phonebook/shared"), installation + "/db/phonebook");
    EXPECT_EQ(fs::read_symlink(own + "/fennodial"), installation + "/fennodial");
}

TEST_F(UserPlaceTest, WhatTheUserPutInALinksPlaceStays)
{
    fs::create_directories(own + "/db/phonebook/shared");
    fs::permissions(own, userAlone);
    writeFile(own + "/fennodial", "mine");
    EXPECT_EQ(problem(), "");
    EXPECT_TRUE(fs::is_directory(fs::symlink_status(own + "/db/phonebook/shared")));
    EXPECT_EQ(contentOf(own + "/fennodial"), "mine");
}

TEST_F(UserPlaceTest, ALinkThatCannotBeMadeIsLoggedAndTheDriverGoesOn)
{
    prepare();
    const LogCapture log;
    EXPECT_EQ(inProcess([&] {
                  fs::remove(own + "/fennodial");
                  giveToOrdinaryUser(folder / "data");
                  for (const auto& entry : fs::recursive_directory_iterator(own))
                      if (!entry.is_symlink())
                          giveToOrdinaryUser(entry.path());
                  giveToOrdinaryUser(own);
                  fs::permissions(own, fs::perms::owner_read | fs::perms::owner_exec);
                  becomeOrdinaryUser();
                  const bool done = problem().empty();
                  return done && log.messages.size() == 1 &&
                                 log.messages[0].find("the link " + own + "/fennodial") == 0
                             ? 0
                             : 1;
              }),
              0);
}

TEST_F(UserPlaceTest, AFolderThatOthersMayReadIsClosedAndOneThatTheyMayWriteRefused)
{
    fs::create_directories(own);
    fs::permissions(own, fs::perms(0755));
    EXPECT_EQ(problem(), "");
    EXPECT_EQ(modeOf(own), userAlone);
    for (const int mode : {0777, 0770, 01777, 0702}) {
        fs::permissions(own, fs::perms(mode));
        EXPECT_EQ(problem(), "others can write into the folder " + own +
                                 ", and could change the numbers in your phonebooks; run chmod 700 " + own);
        EXPECT_EQ(modeOf(own), fs::perms(mode));
    }
}

TEST_F(UserPlaceTest, AFolderInWhichOthersCouldPutTheirsIsRefused)
{
    fs::create_directory(folder / "data");
    fs::permissions(folder / "data", fs::perms(0777));
    EXPECT_THAT(problem(), HasSubstr("others can write into the folder " + folder / "data"));
    for (const int mode : {01777, 0775}) {
        fs::permissions(folder / "data", fs::perms(mode));
        EXPECT_EQ(problem(), "") << "where nobody else can";
    }
}

TEST_F(UserPlaceTest, WhatIsNoFolderIsRefused)
{
    fs::create_directory(folder / "data");
    writeFile(own, "");
    EXPECT_EQ(problem(), own + " is no folder that your phonebooks can be kept in; move it away");
}

TEST_F(UserPlaceTest, DriversThatStartAtOnceAllFindTheLinks)
{
    // Half of them belong to another installation.
    prepare();
    std::vector<pid_t> drivers;
    for (int number = 0; number < 6; ++number) {
        const pid_t driver = fork();
        if (driver == 0) {
            installation = folder / (number % 2 == 0 ? "one" : "other");
            int bad = 0;
            for (int round = 0; round < 200; ++round) {
                bad += problem().empty() ? 0 : 1;
                std::error_code failure;
                const auto link = fs::read_symlink(own + "/fennodial", failure).string();
                bad += link.ends_with("/fennodial") ? 0 : 1;
            }
            _exit(bad == 0 ? 0 : 1);
        }
        drivers.push_back(driver);
    }
    for (const pid_t driver : drivers) {
        int status = -1;
        waitpid(driver, &status, 0);
        EXPECT_EQ(status, 0);
    }
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(own))
        names.push_back(entry.path().filename());
    std::ranges::sort(names);
    EXPECT_THAT(names, ElementsAre("db", "fennodial"));
}

/// The victim's place in a data folder that everybody may write to.
class ContestedPlace : public TwoUsers {
protected:
    void SetUp() override
    {
        TwoUsers::SetUp();
        fs::create_directories(installation);
        openFolder(folder / "data");
        setenv("XDG_DATA_HOME", (folder / "data").c_str(), 1);
    }

    /// What the victim is told; empty when his place is ready.
    std::string told()
    {
        const std::string answer = writeFile(folder / "answer", "");
        chmod(answer.c_str(), 0666);
        EXPECT_EQ(asUser(victim,
                         [&] {
                             try {
                                 prepareUserPlace("", installation, "ann");
                             } catch (const quelm::Error& error) {
                                 writeFile(answer, error.what());
                             }
                             return 0;
                         }),
                  0);
        return contentOf(answer);
    }

    const KeptVariable home{"HOME"};
    const KeptVariable dataHome{"XDG_DATA_HOME"};
    std::string installation = folder / "lib/quelm";
    std::string own = folder / "data/quelm";
};

TEST_F(ContestedPlace, AFolderOfAnotherUserIsRefused)
{
    ASSERT_EQ(asUser(attacker, [&] { return mkdir(own.c_str(), 0777); }), 0);
    EXPECT_EQ(told(),
              "the folder " + own +
                  " belongs to another user, and your phonebooks cannot be kept in it; set XDG_DATA_HOME "
                  "to a folder of your own");
}

TEST_F(ContestedPlace, AnotherUsersLinkToAFolderOfTheVictimsIsRefused)
{
    fs::create_directory(folder / "private");
    giveTo(folder / "private", victim);
    ASSERT_EQ(asUser(attacker, [&] { return symlink((folder / "private").c_str(), own.c_str()); }), 0);
    EXPECT_THAT(told(), HasSubstr("belongs to another user"));
    EXPECT_TRUE(fs::is_empty(folder / "private"));
}

TEST_F(ContestedPlace, AFolderOfTheVictimsInAnotherUsersFolderIsRefused)
{
    fs::create_directory(own);
    giveTo(own, victim);
    giveTo(folder / "data", attacker);
    EXPECT_THAT(told(), HasSubstr("the folder " + folder / "data" + " belongs to another user"));
}

TEST_F(ContestedPlace, NothingIsMadeInAnotherUsersFolder)
{
    // As for root, who became root without a home folder of his own.
    fs::create_directory(folder / "home");
    giveTo(folder / "home", attacker);
    fs::permissions(folder / "home", fs::perms::all);
    setenv("HOME", (folder / "home").c_str(), 1);
    unsetenv("XDG_DATA_HOME");
    EXPECT_THAT(told(), HasSubstr("the folder " + folder / "home" + " belongs to another user"));
    EXPECT_TRUE(fs::is_empty(folder / "home"));
}

TEST_F(ContestedPlace, SettingsOfABuildThatSomebodyElseMadeBesideAnInstallationSayNothing)
{
    fs::permissions(folder / "lib", fs::perms::all);
    ASSERT_EQ(asUser(attacker,
                     [&] {
                         writeFile(folder / "lib/CMakeCache.txt", "");
                         return 0;
                     }),
              0);
    EXPECT_EQ(told(), "");
    EXPECT_TRUE(fs::is_directory(own));
}

} // namespace
