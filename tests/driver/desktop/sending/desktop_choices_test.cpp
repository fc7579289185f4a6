// Tests of the choices that the main window keeps.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/desktop/sending/desktop_choices.h"

#include "base/log.h"
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>

#include <vector>

namespace quelm {
namespace {

class DesktopChoicesTest : public testing::Test {
protected:
    DesktopChoicesTest()
    {
        before_ = setLogSink([this](Severity, const std::string& line) { logged.push_back(line); });
    }
    ~DesktopChoicesTest() override { setLogSink(before_); }

    DesktopChoices loaded() { return DesktopChoicesFile(path).load(); }

    TemporaryFolder folder;
    std::string path = folder / "quelm/desktop.conf";
    std::vector<std::string> logged;
    const DesktopChoices chosen{
        {DestinationKind::queue, "/tmp/fax job.out", "[::1]:9100", "b\xC3\xBCro", "", "Head Office"},
        Pdl::pjl,
        "/home/ann",
        800,
        600};

private:
    LogSink before_;
};

TEST_F(DesktopChoicesTest, WithoutAFileTheDefaultsStand)
{
    EXPECT_EQ(loaded(), DesktopChoices());
    EXPECT_TRUE(logged.empty());
}

TEST_F(DesktopChoicesTest, ANamedDestinationComesBackByItsName)
{
    DesktopChoicesFile file(path);
    file.load();
    file.keep({{DestinationKind::named, "", "", "", "", "Head Office"}, {}, "", 0, 0});
    EXPECT_EQ(loaded().destination.kind, DestinationKind::named);
    EXPECT_EQ(loaded().destination.name, "Head Office");
}

TEST_F(DesktopChoicesTest, WhatWasKeptComesBack)
{
    DesktopChoicesFile file(path);
    file.load();
    file.keep(chosen);
    EXPECT_EQ(loaded(), chosen);
    EXPECT_TRUE(logged.empty());
}

TEST_F(DesktopChoicesTest, AFormThatWasNotChosenIsNotKept)
{
    DesktopChoicesFile file(path);
    file.load();
    DesktopChoices choices = chosen;
    choices.pdl.reset();
    file.keep(choices);
    EXPECT_EQ(loaded().pdl, std::nullopt);
}

TEST_F(DesktopChoicesTest, UnchangedChoicesAreNotWritten)
{
    DesktopChoicesFile file(path);
    file.keep(file.load());
    EXPECT_FALSE(std::filesystem::exists(path));
    file.keep(chosen);
    std::filesystem::remove(path);
    file.keep(chosen);
    EXPECT_FALSE(std::filesystem::exists(path));
}

TEST_F(DesktopChoicesTest, KeysOfOthersStay)
{
    std::filesystem::create_directories(folder / "quelm");
    writeFile(path, "# mine\n[later]\nkey=value\n");
    DesktopChoicesFile file(path);
    file.load();
    file.keep(chosen);
    EXPECT_NE(contentOf(path).find("# mine"), std::string::npos);
    EXPECT_NE(contentOf(path).find("[later]\nkey=value"), std::string::npos);
}

TEST_F(DesktopChoicesTest, ImpossibleValuesGiveWayToTheDefaults)
{
    std::filesystem::create_directories(folder / "quelm");
    writeFile(
        path,
        "[destination]\nkind=pigeon\ndevice=host\n[job]\npdl=pcl\n[window]\nwidth=-5\nheight=99999999\n");
    DesktopChoices expected;
    expected.destination.device = "host";
    EXPECT_EQ(loaded(), expected);
}

TEST_F(DesktopChoicesTest, ADamagedFileIsToldAndNeverWrittenOver)
{
    std::filesystem::create_directories(folder / "quelm");
    writeFile(path, "no ini file");
    DesktopChoicesFile file(path);
    EXPECT_EQ(file.load(), DesktopChoices());
    EXPECT_EQ(logged.size(), 1U);
    file.keep(chosen);
    EXPECT_EQ(contentOf(path), "no ini file");
}

TEST_F(DesktopChoicesTest, AFileThatCannotBeWrittenIsTold)
{
    writeFile(folder / "quelm", "a file where the folder should be");
    DesktopChoicesFile file(path);
    file.keep(chosen);
    EXPECT_EQ(logged.size(), 1U);
}

} // namespace
} // namespace quelm
