// Two users of one installation, with the programs as they are installed.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "tests/support/two_users.h"

#include "tests/journeys/run_program.h"
#include "tests/support/build_paths.h"
#include "tests/support/copied_program.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <system_error>

namespace journeys {
namespace {

namespace fs = std::filesystem;

using testing::HasSubstr;

class OneInstallation : public TwoUsers {
protected:
    void SetUp() override
    {
        TwoUsers::SetUp();
        if (HasFatalFailure())
            return;
        // A program looks for what belongs to it in the folder that it lies in: each is there under its own
        // name.
        fs::create_directories(installation);
        for (const char* file : {"quelm-driver", "fennodial", "libBramblecorLanFax.so"}) {
            std::error_code elsewhere;
            const auto built = build_paths::stageFolder() + "/" + file;
            fs::create_hard_link(built, installation + "/" + file, elsewhere);
            if (elsewhere)
                fs::copy_file(built, installation + "/" + file);
        }
        copySharedParts(installation);
        fs::create_directories(shared);
        openFolder(former);
        for (const uid_t user : {victim, attacker}) {
            fs::create_directory(homeOf(user));
            giveTo(homeOf(user), user);
        }
        writeFile(folder / "leaks", "leak:libBramblecorLanFax.so\nleak:quelm::ComponentLibrary::start\n");
    }

    std::string homeOf(uid_t user) const { return folder / ("home" + std::to_string(user)); }
    std::string ownFolder(uid_t user) const { return homeOf(user) + "/.local/share/quelm"; }

    /// Runs the installed driver as that user, whose name is "ann" or "ben".
    Result driver(uid_t user, const std::vector<std::string>& arguments, const std::string& input = {}) const
    {
        Request request;
        const auto id = std::to_string(user);
        request.arguments = {"setpriv", "--reuid=" + id, "--regid=" + id, "--clear-groups",
                             installation + "/quelm-driver"};
        request.arguments.insert(request.arguments.end(), arguments.begin(), arguments.end());
        request.environment = {"HOME=" + homeOf(user),
                               "XDG_CONFIG_HOME=",
                               "XDG_DATA_HOME=",
                               "XDG_STATE_HOME=",
                               "XDG_CACHE_HOME=",
                               user == victim ? "LOGNAME=ann" : "LOGNAME=ben",
                               "LC_ALL=C.UTF-8",
                               "LANGUAGE=",
                               "LSAN_OPTIONS=print_suppressions=0:suppressions=" + folder / "leaks"};
        request.input = input;
        return runProgram(request);
    }

    /// What it writes; it must succeed in silence.
    std::string output(uid_t user, const std::vector<std::string>& arguments) const
    {
        const auto result = driver(user, arguments);
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.errors, "");
        return result.output;
    }

    std::string installation = folder / "lib/quelm";
    std::string shared = installation + "/db/phonebook";
    std::string former = shared + "/user";
};

TEST_F(OneInstallation, EachHasAPhonebookOfHisOwnThatNobodyElseCanReach)
{
    output(victim, {"phonebook", "add", "Anne", "1"});
    output(attacker, {"phonebook", "add", "Ben", "2"});
    EXPECT_EQ(output(victim, {"phonebook", "list"}), "Anne  1\n");
    EXPECT_EQ(output(attacker, {"phonebook", "list"}), "Ben  2\n");
    const auto book = ownFolder(victim) + "/db/phonebook/user/ann.xdb";
    EXPECT_EQ(fs::status(book).permissions(), fs::perms(0600));
    EXPECT_EQ(asUser(attacker, [&] { return access(ownFolder(victim).c_str(), X_OK); }), 255);
    EXPECT_TRUE(fs::is_empty(former));
}

TEST_F(OneInstallation, TheDialogsUseTheSamePhonebookAsTheCommand)
{
    output(victim, {"phonebook", "add", "Anne", "5551234"});
    EXPECT_THAT(output(victim, {"attributes", "--entry", "Anne"}),
                HasSubstr("OID_ATT_FAX_DESTINATION_PHONE \"5551234\""));
    const auto shown =
        driver(victim, {"script", "-"}, "call T40InvokeFaxDialog\nshow \"LanFax Personal PB Name\"\n");
    EXPECT_THAT(shown.output, HasSubstr("text \"" + ownFolder(victim) + "/db/phonebook/user/ann.xdb\""));
}

TEST_F(OneInstallation, TheMachinesPhonebooksAreReadByAllThroughEachUsersFolder)
{
    Request administrator;
    administrator.arguments = {
        installation + "/quelm-driver", "phonebook", "add", "Dora", "4", "--file", shared + "/team.xdb"};
    ASSERT_EQ(runProgram(administrator).status, 0);
    EXPECT_EQ(fs::status(shared + "/team.xdb").permissions(), fs::perms(0644));
    output(victim, {"phonebook", "list"});
    const auto through = ownFolder(victim) + "/db/phonebook/shared/team.xdb";
    EXPECT_EQ(output(victim, {"phonebook", "list", "--shared", through}), "Dora  4\n");
    EXPECT_THAT(output(victim, {"attributes", "--shared", through, "--entry", "Dora"}),
                HasSubstr("OID_ATT_FAX_DESTINATION_PHONE \"4\""));
    const auto change = driver(victim, {"phonebook", "add", "Eve", "5", "--file", through});
    EXPECT_EQ(change.status, 1);
    EXPECT_THAT(change.errors, HasSubstr("it belongs to root, who alone may change it"));
}

TEST_F(OneInstallation, APhonebookAtTheFormerPlaceIsTakenOverByCommandAndDialogsAlike)
{
    for (const auto& first :
         {std::vector<std::string>{"phonebook", "show", "Anne"}, {"attributes", "--entry", "Anne"}}) {
        fs::remove_all(ownFolder(victim));
        fs::remove(former + "/ann.xdb");
        output(victim, {"phonebook", "add", "Anne", "1", "--file", former + "/ann.xdb"});
        EXPECT_THAT(output(victim, first), HasSubstr("1"));
        output(victim, {"phonebook", "remove", "Anne"});
        fs::remove(ownFolder(victim) + "/db/phonebook/user/ann.xdb");
        EXPECT_EQ(output(victim, {"phonebook", "list"}), "");
    }
}

TEST_F(OneInstallation, WhatAnotherUserPutsAtTheFormerPlaceIsIgnored)
{
    const auto book = former + "/ann.xdb";
    const auto expectEmpty = [&](const std::string& what) {
        EXPECT_EQ(output(victim, {"phonebook", "list"}), "") << what;
        EXPECT_EQ(driver(victim, {"attributes", "--to", "Cid=1"}).status, 0) << what;
        fs::remove_all(ownFolder(victim));
        fs::remove_all(book);
    };
    output(attacker, {"phonebook", "add", "Anne", "999", "--file", book});
    expectEmpty("a phonebook");
    ASSERT_EQ(asUser(attacker, [&] { return mkfifo(book.c_str(), 0666); }), 0);
    expectEmpty("a fifo");
    ASSERT_EQ(asUser(attacker, [&] { return mkdir(book.c_str(), 0777); }), 0);
    expectEmpty("a folder");
    output(victim, {"phonebook", "add", "Other", "2", "--file", homeOf(victim) + "/other.xdb"});
    ASSERT_EQ(
        asUser(attacker, [&] { return symlink((homeOf(victim) + "/other.xdb").c_str(), book.c_str()); }), 0);
    expectEmpty("a link to a phonebook of the victim's");
}

TEST_F(OneInstallation, ASharedPhonebookThatIsAFifoIsNotWaitedFor)
{
    const auto fifo = former + "/team.xdb";
    ASSERT_EQ(asUser(attacker, [&] { return mkfifo(fifo.c_str(), 0666); }), 0);
    for (const auto& arguments : {std::vector<std::string>{"phonebook", "list", "--shared", fifo},
                                  {"attributes", "--shared", fifo, "--entry", "Dora"}}) {
        const auto result = driver(victim, arguments);
        EXPECT_EQ(result.status, 1);
        EXPECT_THAT(result.errors, HasSubstr("it is a pipe and no file"));
    }
}

} // namespace
} // namespace journeys
