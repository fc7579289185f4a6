// The command line over the configuration file.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/cli/driver_setup.h"

#include "tests/support/failure_line.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

namespace quelm {
namespace {

class DriverSetupTest : public testing::Test {
protected:
    DriverSetupTest()
    {
        std::string pattern = (std::filesystem::temp_directory_path() / "driver-setup-XXXXXX").string();
        folder = ::mkdtemp(pattern.data());
        ::setenv("XDG_CONFIG_HOME", folder.c_str(), 1);
        ::setenv("XDG_CONFIG_DIRS", folder.c_str(), 1);
    }
    ~DriverSetupTest() override
    {
        ::unsetenv("XDG_CONFIG_HOME");
        ::unsetenv("XDG_CONFIG_DIRS");
        std::filesystem::remove_all(folder);
    }

    std::string configured(const std::string& content)
    {
        std::ofstream(folder / "q.conf") << content;
        return (folder / "q.conf").string();
    }

    std::filesystem::path folder;
};

TEST_F(DriverSetupTest, WithoutAFileTheCommandLineStandsAlone)
{
    CommandLine line;
    line.driver.user = "ann";
    const auto setup = setUpDriver(line);
    EXPECT_EQ(setup.driver.user, "ann");
    EXPECT_EQ(setup.driver.home, "");
    EXPECT_EQ(setup.pdl, Pdl::dsc);
}

TEST_F(DriverSetupTest, TheFileFillsWhatTheCommandLineLeavesOpen)
{
    CommandLine line;
    line.config = configured("[driver]\nhome=/srv/fax\nuser=bob\n[job]\npdl=pjl\n");
    line.driver.user = "ann";
    const auto setup = setUpDriver(line);
    EXPECT_EQ(setup.driver.home, "/srv/fax");
    EXPECT_EQ(setup.driver.user, "ann");
    EXPECT_EQ(setup.pdl, Pdl::pjl);
}

TEST_F(DriverSetupTest, TheCommandLinesFormOfTheJobWins)
{
    CommandLine line;
    line.config = configured("[job]\npdl=pjl\n");
    line.job.pdl = Pdl::dsc;
    EXPECT_EQ(setUpDriver(line).pdl, Pdl::dsc);
}

TEST_F(DriverSetupTest, TheFormOfADestinationIsThatOfItsJobs)
{
    CommandLine line;
    line.command = Command::fax;
    line.config = configured("[job]\npdl=dsc\ndestination=Lab\n[destination Lab]\ndevice=10.0.0.7\npdl=pjl\n"
                             "[destination Office]\nqueue=fax\n");
    EXPECT_EQ(setUpDriver(line).pdl, Pdl::pjl) << "of the default destination";
    line.job.destination = "Office";
    EXPECT_EQ(setUpDriver(line).pdl, Pdl::dsc);
    line.job.destination = "Lab";
    EXPECT_EQ(setUpDriver(line).pdl, Pdl::pjl);
    line.job.pdl = Pdl::dsc;
    EXPECT_EQ(setUpDriver(line).pdl, Pdl::dsc) << "the command line wins";
    line.job = {};
    line.job.queue = "other";
    EXPECT_EQ(setUpDriver(line).pdl, Pdl::dsc) << "the job goes elsewhere";
    line.job = {};
    line.command = Command::none;
    EXPECT_EQ(setUpDriver(line).pdl, Pdl::dsc) << "the desktop's user chooses the destination later";
}

TEST_F(DriverSetupTest, DestinationsAreOfferedUnderTheirNames)
{
    CommandLine line;
    line.config = configured("[job]\ndestination=Here\n[destination Lab]\ndevice=10.0.0.7:9101\n"
                             "[destination Here]\nfile=fax.job\n[destination Office]\n"
                             "queue=fax@print.example\n");
    const auto setup = setUpDriver(line);
    ASSERT_EQ(setup.destinations.size(), 3U);
    EXPECT_EQ(std::get<QueueTarget>(setup.destinations[2].target).server, "print.example:631")
        << "whatever port the user's own server has";
    EXPECT_EQ(std::get<NetworkAddress>(setup.destinations[0].target).port, 9101);
    EXPECT_EQ(setup.destination.value().name, "Here");
    EXPECT_EQ(std::get<FileTarget>(setup.destination.value().target).path, folder / "fax.job");
}

TEST_F(DriverSetupTest, WhatIsConfiguredIsTheDefaultOfTheDialogs)
{
    CommandLine line;
    line.config = configured("[job]\nprefix=0\nresolution=fine\n[sender]\nname=Ann\nnumber=1\n"
                             "organization=Acme\nphone=2\nemail=a@b\n[phonebook]\nshared=/srv/book.xdb\n");
    const std::map<std::string, std::string> expected{{"LanFax Dialing Prefix", "1"},
                                                      {"LanFax Dialing Prefix Info", "0"},
                                                      {"LanFax Resolution", "2"},
                                                      {"Sender Fax Name", "Ann"},
                                                      {"Sender Fax Number", "1"},
                                                      {"Sender Fax Organization", "Acme"},
                                                      {"Sender Fax Tel Number", "2"},
                                                      {"Sender Fax Email Addr", "a@b"},
                                                      {"LanFax Shared PB Name", "/srv/book.xdb"}};
    EXPECT_EQ(setUpDriver(line).driver.defaults, expected);
    line.config = configured("[driver]\nuser=ann\n");
    EXPECT_TRUE(setUpDriver(line).driver.defaults.empty());
}

TEST_F(DriverSetupTest, TheDeviceOfTheCommandLineKeepsTheFilesSettings)
{
    CommandLine line;
    line.config = configured("[device]\nsnmp=fax.example\nversion=1\n[directory]\nsize-limit=7\n");
    EXPECT_EQ(setUpDriver(line).driver.device.address, "fax.example");
    line.driver.device.address = "127.0.0.1:1161";
    const auto setup = setUpDriver(line);
    EXPECT_EQ(setup.driver.device.address, "127.0.0.1:1161");
    EXPECT_EQ(setup.driver.device.version, SnmpVersion::v1);
    EXPECT_EQ(setup.driver.directory.sizeLimit, 7);
}

TEST_F(DriverSetupTest, ADeviceThatIsNoneIsWrongUsage)
{
    for (const auto* address : {"a b", "fax:0", "fax:1:2", "[::1"}) {
        CommandLine line;
        line.driver.device.address = address;
        const auto refusal = test::failureLine<UsageError>([&] { setUpDriver(line); });
        EXPECT_EQ(refusal.find("--device-snmp: \"" + std::string(address) + "\" is no address"), 0U)
            << refusal;
    }
}

TEST_F(DriverSetupTest, ANamedFileMustBeThere)
{
    CommandLine line;
    line.config = (folder / "none.conf").string();
    EXPECT_NE(test::failureLine([&] { setUpDriver(line); }).find("none.conf"), std::string::npos);
}

TEST_F(DriverSetupTest, AnImpossibleTimeIsWrongUsage)
{
    CommandLine line;
    line.driver.now = "2023-02-29T10:00";
    EXPECT_NE(test::failureLine<UsageError>([&] { setUpDriver(line); }).find("2023-02-29"),
              std::string::npos);
}

} // namespace
} // namespace quelm
