// Configuration files of all users and of one, over one another.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/config/configuration_file.h"
#include "tests/driver/config/configuration_test.h"
#include "tests/support/failure_line.h"

#include <algorithm>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

class FilesForAll : public ConfigurationTest {
protected:
    /// Writes quelm.conf in one of the folders "config", the user's, "site" and "machine".
    std::string write(const std::string& where, const std::string& content, mode_t mode = 0600)
    {
        std::filesystem::create_directories(folder / (where + "/quelm"));
        const auto file = writeFile(folder / (where + "/quelm/quelm.conf"), content);
        chmod(file.c_str(), mode);
        return file;
    }

    /// What loading them fails with, without the beginning that all have.
    std::string problem()
    {
        const std::string start = "the configuration file \"";
        const auto line =
            quelm::test::failureLine([] { static_cast<void>(quelm::loadConfiguration(std::nullopt)); });
        EXPECT_TRUE(line.starts_with(start)) << line;
        return line.substr(std::min(start.size(), line.size()));
    }
};

std::string placeOf(const quelm::Configuration& configuration, const char* group, const char* name)
{
    const auto* value = configuration.find(group, name);
    return value == nullptr ? "" : value->file + ":" + std::to_string(value->line) + " " + value->value;
}

} // namespace

TEST_F(FilesForAll, AreLookedForInTheFoldersOfXdgInTheirOrder)
{
    const auto expectFiles = [](const std::vector<std::string>& expected) {
        std::vector<std::string> files;
        for (const auto& source : quelm::configurationSources())
            files.push_back(source.file);
        EXPECT_EQ(files, expected);
    };
    const std::string own = folder / "config/quelm/quelm.conf";
    expectFiles({own, folder / "site/quelm/quelm.conf", folder / "machine/quelm/quelm.conf"});
    unsetenv("XDG_CONFIG_DIRS");
    expectFiles({own, "/etc/xdg/quelm/quelm.conf"});
    setenv("XDG_CONFIG_DIRS", "", 1);
    expectFiles({own, "/etc/xdg/quelm/quelm.conf"});
    setenv("XDG_CONFIG_DIRS", ("relative::/one/:/two:/one:" + folder / "config").c_str(), 1);
    expectFiles({own, "/one/quelm/quelm.conf", "/two/quelm/quelm.conf"});
}

TEST_F(FilesForAll, GoOverOneAnotherKeyByKey)
{
    const auto own = write("config", "[job]\nresolution=fine\n");
    const auto site =
        write("site", "\n[sender]\norganization=Site Ltd\n[job]\nresolution=superfine\npdl=pjl\n");
    const auto machine = write("machine", "[job]\npdl=dsc\nprefix=0\n[sender]\nname=Reception\n");
    const auto configuration = quelm::loadConfiguration(std::nullopt);
    EXPECT_EQ(configuration.file, own);
    EXPECT_EQ(configuration.resolution, "fine");
    EXPECT_EQ(configuration.pdl, quelm::Pdl::pjl);
    EXPECT_EQ(configuration.dialingPrefix, "0");
    EXPECT_EQ(configuration.sender.organization, "Site Ltd");
    EXPECT_EQ(configuration.sender.name, "Reception");
    EXPECT_EQ(placeOf(configuration, "job", "resolution"), own + ":2 fine");
    EXPECT_EQ(placeOf(configuration, "job", "pdl"), site + ":6 pjl");
    EXPECT_EQ(placeOf(configuration, "job", "prefix"), machine + ":3 0");
    EXPECT_EQ(configuration.find("sender", "email"), nullptr);
    EXPECT_EQ(configuration.values.size(), 5U) << "each value once";
}

TEST_F(FilesForAll, HoldWithoutAFileOfTheUsers)
{
    const auto machine = write("machine", "[driver]\nuser=fax\n", 0644);
    const auto configuration = quelm::loadConfiguration(std::nullopt);
    EXPECT_EQ(configuration.file, machine);
    EXPECT_EQ(configuration.user, "fax");
    ASSERT_EQ(configuration.sources.size(), 3U);
    EXPECT_FALSE(configuration.sources[0].isThere);
    EXPECT_TRUE(configuration.sources[2].isThere);
}

TEST_F(FilesForAll, DoNotCountBesideAFileThatIsNamed)
{
    write("machine", "[job]\nprefix=0\n");
    write("site", "[nonsense]\n");
    const auto named = writeFile(folder / "named", "[job]\npdl=pjl\n");
    const auto configuration = quelm::loadConfiguration(named);
    EXPECT_EQ(configuration.dialingPrefix, "");
    EXPECT_EQ(configuration.sources.size(), 1U);
}

TEST_F(FilesForAll, RelativePathsCountFromTheFolderOfTheFileThatHasThem)
{
    write("config", "[phonebook]\nshared=mine.xdb\n");
    write("machine", "[driver]\ncomponent=lib.so\n[destination Archive]\nfile=out/fax.job\n");
    const auto configuration = quelm::loadConfiguration(std::nullopt);
    EXPECT_EQ(configuration.sharedPhonebook, folder / "config/quelm/mine.xdb");
    EXPECT_EQ(configuration.component, folder / "machine/quelm/lib.so");
    EXPECT_EQ(configuration.destinations.at(0).place, folder / "machine/quelm/out/fax.job");
    EXPECT_EQ(configuration.find("driver", "component")->value, folder / "machine/quelm/lib.so");
}

TEST_F(FilesForAll, ABrokenOneIsNamedWithItsLine)
{
    write("config", "[job]\nresolution=fine\n");
    const auto site = write("site", "[job]\n# ours\nresolution=best\n");
    EXPECT_EQ(
        problem(),
        site + "\" has \"best\" at [job] resolution (line 3), where standard, fine or superfine is expected");
    write("site", "[job]\n\npdl\n");
    EXPECT_TRUE(problem().starts_with(site + "\" cannot be understood in line 3: ")) << problem();
    std::filesystem::remove(site);
    std::filesystem::create_directory(site);
    EXPECT_EQ(problem(), site + "\" is a folder; name a file");
}

TEST_F(FilesForAll, OneThatTheUserCannotReadIsAnErrorAndNotPassedOver)
{
    const auto machine = write("machine", "[job]\nprefix=0\n", 0);
    EXPECT_EQ(inProcess([&] {
                  becomeOrdinaryUser();
                  return problem() == machine + "\" cannot be read: permission denied; check its permissions"
                             ? 0
                             : 1;
              }),
              0);
}

TEST_F(FilesForAll, ASecretKeepsToItsOwnFilesAccess)
{
    // What is no secret may be everybody's, whatever another file holds.
    write("machine", "[device]\nsnmp=fax.example\nversion=3\nuser=reader\n", 0644);
    const std::string secret = "[device]\nauthentication=SHA\nauthentication-passphrase=authentic7\n";
    const auto own = write("config", secret, 0600);
    const auto device = quelm::loadConfiguration(std::nullopt).device;
    EXPECT_EQ(device.user.name, "reader");
    EXPECT_EQ(device.user.authenticationPassphrase, "authentic7");
    write("config", secret, 0644);
    EXPECT_EQ(problem(), own + "\" holds a secret, and others have access to it; run chmod 600 " + own);
    write("config", "");
    const auto site = write("site", secret, 0640);
    EXPECT_EQ(problem(), site + "\" holds a secret, and others have access to it; run chmod 600 " + site);
    // Also when the user's own says something else in its place.
    write("site", "[device]\ncommunity=sesame\n", 0640);
    write("config", "[device]\ncommunity=public\n");
    EXPECT_EQ(problem(), site + "\" holds a secret, and others have access to it; run chmod 600 " + site);
}

TEST_F(FilesForAll, WhatDoesNotFitTogetherIsLookedForInTheOneThatCountsMost)
{
    write("machine", "[device]\nversion=3\nuser=reader\n");
    const auto own = write("config", "[device]\ncommunity=sesame\n");
    EXPECT_EQ(problem(), own + "\" has a community at [device], which version 3 does not have; remove it, or "
                               "write version=2c");
}

TEST_F(FilesForAll, AllThatIsWrongIsToldToWhoAsksForIt)
{
    const auto own = write("config", "[job]\npdl=pcl\nresolutions=fine\nprefix=0\n[nobody]\n");
    const auto machine = write("machine", "[device\n");
    std::vector<std::string> lines;
    const auto configuration =
        quelm::loadConfiguration(std::nullopt, [&lines](const std::string& line) { lines.push_back(line); });
    ASSERT_EQ(lines.size(), 4U);
    EXPECT_NE(lines[0].find(machine + "\" cannot be understood in line 1"), std::string::npos) << lines[0];
    EXPECT_NE(lines[1].find(own + "\" has \"pcl\" at [job] pdl (line 2)"), std::string::npos) << lines[1];
    EXPECT_NE(lines[2].find("unknown key \"resolutions\" in [job] (line 3)"), std::string::npos) << lines[2];
    EXPECT_NE(lines[3].find("unknown group [nobody] in line 5"), std::string::npos) << lines[3];
    EXPECT_EQ(configuration.dialingPrefix, "0") << "what is right counts";
}

TEST_F(FilesForAll, ADestinationIsTakenWholeFromTheFileThatCountsMore)
{
    write("config", "[destination Lab]\ndevice=10.0.0.7\n[destination Mine]\nfile=/tmp/fax.job\n");
    write("machine", "[job]\ndestination=Lab\n[destination Office]\nqueue=fax\n[destination Lab]\n"
                     "queue=lab\npdl=pjl\n");
    const auto configuration = quelm::loadConfiguration(std::nullopt);
    ASSERT_EQ(configuration.destinations.size(), 3U);
    EXPECT_EQ(configuration.destinations[0].name, "Lab");
    EXPECT_EQ(configuration.destinations[1].name, "Mine");
    EXPECT_EQ(configuration.destinations[2].name, "Office");
    const auto* lab = configuration.findDestination("Lab");
    EXPECT_EQ(lab->place, "10.0.0.7");
    EXPECT_FALSE(lab->pdl) << "which the other file says";
    EXPECT_EQ(configuration.find("destination Lab", "queue"), nullptr);
    EXPECT_EQ(configuration.destination, "Lab");
}
