// Tests of the folder of a device's state.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/jobs/state_folder.h"

#include "tests/device/jobs/state_support.h"
#include "tests/support/failure_line.h"
#include "tests/support/two_users.h"

#include <gmock/gmock.h>
#include <sys/stat.h>

#include <filesystem>

namespace quelm::device::tests {
namespace {

namespace fs = std::filesystem;
using quelm::test::failureLine;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;

unsigned modeOf(const fs::path& path)
{
    struct stat status = {};
    EXPECT_EQ(::lstat(path.c_str(), &status), 0) << path;
    return status.st_mode & 0777U;
}

class StateFolderTest : public StateTest {};

TEST_F(StateFolderTest, MakesWhatIsMissingForItsUserAloneWhateverTheUmask)
{
    const mode_t before = ::umask(0);
    open();
    ::umask(before);
    for (const char* name : {"", "incoming", "jobs", "received", "printed", "reports"})
        EXPECT_EQ(modeOf(path / name), 0700U) << name;
    for (const char* name : {"device.db", "lock"})
        EXPECT_EQ(modeOf(path / name), 0600U) << name;
}

TEST_F(StateFolderTest, TakesAPathAsPeopleWriteIt)
{
    EXPECT_EQ(StateFolder(outer.path() / "new/below/./state/").path(), outer.path() / "new/below/state");
    const fs::path before = fs::current_path();
    fs::current_path(outer.path());
    EXPECT_EQ(StateFolder("here").path(), outer.path() / "here");
    fs::current_path(before);
}

TEST_F(StateFolderTest, OneDeviceAtATimeHasIt)
{
    open();
    const auto second = [&] { StateFolder{path}; };
    EXPECT_THAT(failureLine(second), HasSubstr("another device works with it"));
    EXPECT_EQ(inProcess([&] {
                  failureLine(second);
                  return HasFailure() ? 1 : 0;
              }),
              0);
    close();
    second();
}

TEST_F(StateFolderTest, EmptiesIncomingOfWhatIsNoCalls)
{
    open();
    close();
    writeFile(path / "incoming/spooled", "half a job");
    writeFile(path / "incoming/call-x.tif", "");
    writeFile(path / "incoming/call-7.tif", "pages");
    fs::create_directories(path / "incoming/folder/below");
    const StateFolder state(path);
    EXPECT_THAT(files(), ElementsAre("incoming/call-7.tif"));
    EXPECT_FALSE(fs::exists(path / "incoming/folder"));
}

TEST_F(StateFolderTest, ClosesWhatIsOpenToOthers)
{
    open();
    close();
    fs::permissions(path, fs::perms::all);
    fs::permissions(path / "jobs", fs::perms::all);
    fs::permissions(path / "device.db", fs::perms::all);
    open();
    EXPECT_EQ(modeOf(path), 0700U);
    EXPECT_EQ(modeOf(path / "jobs"), 0700U);
    EXPECT_EQ(modeOf(path / "device.db"), 0600U);
}

TEST_F(StateFolderTest, LeavesAFolderWithOtherFilesAsItIs)
{
    fs::create_directory(path);
    fs::permissions(path, fs::perms(0755));
    writeFile(path / "letter.txt", "mine");
    EXPECT_THAT(failureLine([&] { StateFolder{path}; }),
                HasSubstr("name a folder that is the device's alone, or close this one with chmod 700 " +
                          path.string()));
    EXPECT_EQ(modeOf(path), 0755U);
    EXPECT_THAT(files(), ElementsAre("letter.txt"));
}

TEST_F(StateFolderTest, TakesAFolderThatWasMadeForItsExchange)
{
    fs::create_directory(path);
    fs::permissions(path, fs::perms(0755));
    writeFile(path / "exchange.conf", "[5550104477]\n");
    open();
    EXPECT_EQ(modeOf(path), 0700U);
    EXPECT_THAT(files(), ElementsAre("exchange.conf"));
}

TEST_F(StateFolderTest, AFolderThatCannotBeMadeIsToldOfWithWhatToDo)
{
    EXPECT_THAT(failureLine([] { StateFolder{"/proc/quelm-device-state"}; }),
                AllOf(HasSubstr("/proc/quelm-device-state: "), HasSubstr("cannot be made"),
                      HasSubstr("name another folder")));
    EXPECT_THAT(failureLine([&] { StateFolder{fs::path(writeFile(outer / "letter", "")) / "below/state"}; }),
                AllOf(HasSubstr("letter"), HasSubstr("name another folder")));
}

TEST_F(StateFolderTest, FollowsNoLinkAndTakesNoFileForAFolder)
{
    fs::create_directory(outer.path() / "elsewhere");
    fs::create_symlink(outer.path() / "elsewhere", path);
    EXPECT_THAT(failureLine([&] { StateFolder{path}; }), HasSubstr("it is a link"));
    EXPECT_TRUE(fs::is_empty(outer.path() / "elsewhere"));
    EXPECT_THAT(failureLine([&] { StateFolder{writeFile(outer / "file", "")}; }), HasSubstr("file"));

    fs::remove(path);
    open();
    close();
    fs::remove_all(path / "received");
    fs::create_symlink(outer.path() / "elsewhere", path / "received");
    EXPECT_THAT(failureLine([&] { StateFolder{path}; }), HasSubstr("it is a link"));
}

TEST_F(StateFolderTest, GivesEachFileItsPlaceAndNoneElsewhere)
{
    open();
    EXPECT_EQ(folder->jobFile(12), path / "jobs/12/job");
    EXPECT_EQ(folder->pagesFile(12), path / "jobs/12/pages.tif");
    EXPECT_EQ(folder->printedFile(12), path / "printed/job-12.tif");
    EXPECT_EQ(folder->reportPdf(12), path / "reports/job-12.pdf");
    EXPECT_EQ(folder->reportText(12), path / "reports/job-12.txt");
    EXPECT_EQ(folder->receivedCall("5550104477", 3), path / "received/5550104477/call-3.tif");
    for (const char* number : {"", "..", "../..", "5/5", ".", "555 1", "*"})
        EXPECT_THAT(failureLine([&] { (void)folder->receivedCall(number, 3); }), HasSubstr("received"))
            << number;
    EXPECT_EQ(StateFolder::callOf(folder->incomingCall(3)), 3);
    for (const char* name : {"call-.tif", "call-0.tif", "call-03.tif", "call--3.tif", "call-3", "3.tif",
                             "call-99999999999.tif", "call-3.tif.tif"})
        EXPECT_EQ(StateFolder::callOf(name), 0) << name;
}

using StateAmongOthers = TwoUsers;

TEST_F(StateAmongOthers, AnotherUsersFolderIsRefused)
{
    const fs::path shared = openFolder(folder / "shared");
    fs::create_directory(shared / "state");
    giveTo(shared / "state", attacker);
    fs::permissions(shared / "state", fs::perms::all);
    EXPECT_EQ(asUser(victim,
                     [&] {
                         const auto line = failureLine([&] { StateFolder{shared / "state"}; });
                         return line.find("another user") != std::string::npos ? 0 : 1;
                     }),
              0);
    EXPECT_TRUE(fs::is_empty(shared / "state"));
}

} // namespace
} // namespace quelm::device::tests
