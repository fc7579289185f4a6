// The configuration file: what it may say, and what is said about a wrong one.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/config/configuration_file.h"

#include "base/file_handle.h"
#include "tests/driver/config/configuration_test.h"
#include "tests/support/failure_line.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <cstdlib>
#include <string>
#include <string_view>

TEST_F(ConfigurationTest, APipeIsReadToItsEndHoweverSlowly)
{
    const std::string fifo = folder / "fifo";
    ASSERT_EQ(mkfifo(fifo.c_str(), 0600), 0);
    const pid_t writer = fork();
    if (writer == 0) {
        const int file = open(fifo.c_str(), O_WRONLY);
        for (const std::string_view part : {"[driver]\nuser=", "zoe\n"}) {
            poll(nullptr, 0, 150); // longer than a wait between two looks
            if (write(file, part.data(), part.size()) < 0)
                _exit(1);
        }
        _exit(0);
    }
    EXPECT_EQ(quelm::readConfiguration(fifo).user, "zoe");
    waitpid(writer, nullptr, 0);
}

TEST_F(ConfigurationTest, RelativePathsInAPipeCountFromTheWorkingFolder)
{
    std::array<int, 2> ends{};
    ASSERT_EQ(pipe2(ends.data(), O_CLOEXEC), 0);
    const quelm::FileHandle out(ends[0]);
    {
        const quelm::FileHandle in(ends[1]);
        ASSERT_EQ(write(in.get(), "[driver]\nhome=here\n", 19), 19);
    }
    EXPECT_EQ(quelm::readConfiguration("/dev/fd/" + std::to_string(out.get())).home, "here");
}

TEST_F(ConfigurationTest, AFifoThatNobodyWritesIsNotWaitedForForEver)
{
    const std::string fifo = folder / "fifo";
    ASSERT_EQ(mkfifo(fifo.c_str(), 0600), 0);
    const quelm::PipeLimits impatient{std::chrono::milliseconds(50), std::chrono::milliseconds(50)};
    EXPECT_EQ(
        quelm::test::failureLine([&] { static_cast<void>(quelm::readConfiguration(fifo, impatient)); }),
        "the configuration file \"" + fifo +
            "\" cannot be read: no program writes to this fifo; start the one that does, and try again");
    const quelm::FileHandle silent(open(fifo.c_str(), O_RDWR | O_CLOEXEC));
    EXPECT_NE(quelm::test::failureLine([&] {
                  static_cast<void>(quelm::readConfiguration(fifo, impatient));
              }).find("cannot be read: nothing came for 50 ms"),
              std::string::npos);
}

TEST_F(ConfigurationTest, SaysEverythingThatItKnows)
{
    const auto configuration = read("# ours\n[driver]\nhome = /opt/quelm\nuser=Zoë\ncomponent=/lib/a b.so\n\n"
                                    "[job]\npdl=pjl\n");
    EXPECT_EQ(configuration.file, folder / "quelm.conf");
    EXPECT_EQ(configuration.home, "/opt/quelm");
    EXPECT_EQ(configuration.user, "Zoë");
    EXPECT_EQ(configuration.component, "/lib/a b.so");
    EXPECT_EQ(configuration.pdl, quelm::Pdl::pjl);
    EXPECT_EQ(read("[job]\npdl=dsc\n").pdl, quelm::Pdl::dsc);
}

TEST_F(ConfigurationTest, MaySayNothing)
{
    for (const char* content : {"", "\n \n", "# only a comment\n", "[driver]\n", "[job]\n[driver]\n"}) {
        const auto configuration = read(content);
        EXPECT_FALSE(configuration.home || configuration.user || configuration.component ||
                     configuration.pdl);
    }
}

TEST_F(ConfigurationTest, RelativePathsCountFromItsFolder)
{
    const auto configuration = read("[driver]\nhome=install\ncomponent=../lib.so\n");
    EXPECT_EQ(configuration.home, folder / "install");
    EXPECT_EQ(configuration.component, folder / "../lib.so");
}

TEST_F(ConfigurationTest, UnknownWordsAreNamedWithWhatIsPossible)
{
    EXPECT_EQ(
        problemWith("[printer]\nhome=/x\n"),
        "has an unknown group [printer] in line 1; possible are [driver], [job], [sender], [phonebook], "
        "[destination NAME], [device], [directory] and [outbox]");
    EXPECT_EQ(problemWith("[driver]\nhomes=/x\n"),
              "has an unknown key \"homes\" in [driver] (line 2); possible are home, user, component");
    EXPECT_EQ(problemWith("[job]\nhome=/x\n"), "has an unknown key \"home\" in [job] (line 2); possible are "
                                               "pdl, destination, resolution, prefix");
    EXPECT_EQ(problemWith("[job]\npdl=PCL\n"),
              "has \"PCL\" at [job] pdl (line 2), where dsc or pjl is expected");
    EXPECT_EQ(problemWith("[driver]\nuser=a/b\n"),
              "has \"a/b\" at [driver] user (line 2), where a user name without \"/\" is expected");
    EXPECT_EQ(problemWith("[driver]\nhome=\n"),
              "has no value at [driver] home (line 2); write one or remove the line");
}

TEST_F(ConfigurationTest, MalformedFilesAreRefused)
{
    EXPECT_EQ(problemWith("home=/x\n").find("cannot be understood in line 1: "), 0U);
    const std::string noPair = problemWith("[driver]\nhome /x\n");
    EXPECT_NE(noPair.find("home /x"), std::string::npos) << noPair;
    EXPECT_EQ(noPair.find("cannot be understood in line 2: "), 0U) << noPair;
    EXPECT_EQ(problemWith("[driver]\nuser=a\nuser b").find("cannot be understood in line 3: "), 0U);
    EXPECT_EQ(problemWith("\n# ours\n[driver\n").find("cannot be understood in line 3: "), 0U);
    EXPECT_EQ(problemWith("[driver]\nhome=a\\qb\n").find("has a bad value at [driver] home (line 2): "), 0U);
    EXPECT_EQ(problemWith("[driver]\nuser=Zo\xEB\n"), "is no UTF-8 text in line 2; save it as UTF-8");
    EXPECT_EQ(problemWith(std::string("[driver]\n\0", 10)), "is no UTF-8 text in line 2; save it as UTF-8");
}

TEST_F(ConfigurationTest, FilesThatCannotBeReadAreNamed)
{
    EXPECT_EQ(problemAt(folder / "none"), "cannot be read: No such file or directory; check the name given");
    EXPECT_EQ(problemAt(folder.path()), "is a folder; name a file");
    EXPECT_EQ(problemAt("/dev/zero"), "is larger than 1 MiB and no configuration file; name another file");
    const std::string closed = writeFile(folder / "closed", "[driver]\n");
    chmod(closed.c_str(), 0);
    EXPECT_EQ(inProcess([&] {
                  becomeOrdinaryUser();
                  return problemAt(closed) == "cannot be read: permission denied; check its permissions" ? 0
                                                                                                         : 1;
              }),
              0);
}

TEST_F(ConfigurationTest, UsersOwnFileIsReadWhenItIsThere)
{
    EXPECT_EQ(quelm::userConfigurationFile(), folder / "config/quelm/quelm.conf");
    EXPECT_EQ(quelm::loadConfiguration(std::nullopt).file, "");
    std::filesystem::create_directories(folder / "config/quelm");
    writeFile(folder / "config/quelm/quelm.conf", "[driver]\nuser=anne\n");
    EXPECT_EQ(quelm::loadConfiguration(std::nullopt).user, "anne");
}

TEST_F(ConfigurationTest, NamedFileIsReadInstead)
{
    std::filesystem::create_directories(folder / "config/quelm");
    writeFile(folder / "config/quelm/quelm.conf", "[driver]\nuser=anne\n");
    const std::string named = writeFile(folder / "named", "[job]\npdl=pjl\n");
    const auto configuration = quelm::loadConfiguration(named);
    EXPECT_EQ(configuration.pdl, quelm::Pdl::pjl);
    EXPECT_FALSE(configuration.user);
    EXPECT_THROW(static_cast<void>(quelm::loadConfiguration(folder / "none")), quelm::Error);
}

TEST_F(ConfigurationTest, WrongFileOfTheUsersIsAnError)
{
    std::filesystem::create_directories(folder / "config/quelm/quelm.conf");
    EXPECT_THROW(static_cast<void>(quelm::loadConfiguration(std::nullopt)), quelm::Error);
}

TEST_F(ConfigurationTest, HomeFolderServesWithoutAnXdgFolder)
{
    unsetenv("XDG_CONFIG_HOME");
    EXPECT_EQ(quelm::userConfigurationFile(), folder / "home/.config/quelm/quelm.conf");
    setenv("XDG_CONFIG_HOME", "relative", 1);
    EXPECT_EQ(quelm::userConfigurationFile(), folder / "home/.config/quelm/quelm.conf");
    unsetenv("HOME");
    EXPECT_EQ(quelm::userConfigurationFile(), "");
    EXPECT_EQ(quelm::loadConfiguration(std::nullopt).file, "");
}

TEST_F(ConfigurationTest, TheDeviceAndItsCommunityAreRead)
{
    const auto device = read("[device]\nsnmp=fax.example:1161\nversion=1\ncommunity=sesame\ntimeout=2.5\n"
                             "retries=0\ndirectory-server-object=1.3.6.1.4.1.32473.1\n"
                             "directory-base-object=.1.3.6.1.4.1.32473.2\n")
                            .device;
    EXPECT_EQ(device.address, "fax.example:1161");
    EXPECT_EQ(device.version, quelm::SnmpVersion::v1);
    EXPECT_EQ(device.community, "sesame");
    EXPECT_EQ(device.timeout, std::chrono::milliseconds(2500));
    EXPECT_EQ(device.retries, 0);
    EXPECT_EQ(device.directoryServerObject, "1.3.6.1.4.1.32473.1");
    EXPECT_EQ(device.directoryBaseObject, ".1.3.6.1.4.1.32473.2");
}

TEST_F(ConfigurationTest, WithoutADeviceItsSettingsAreTheUsualOnes)
{
    const auto device = read("[job]\npdl=dsc\n").device;
    EXPECT_EQ(device.address, "");
    EXPECT_EQ(device.version, quelm::SnmpVersion::v2c);
    EXPECT_EQ(device.community, "public");
    EXPECT_EQ(device.timeout, std::chrono::seconds(3));
    EXPECT_EQ(read("[device]\nversion=2c\n").device.version, quelm::SnmpVersion::v2c);
}

TEST_F(ConfigurationTest, AUserOfVersion3IsRead)
{
    const auto device = read("[device]\nversion=3\nuser=anne\nauthentication=sha-256\n"
                             "authentication-passphrase=authentic7\nprivacy=aes\n"
                             "privacy-passphrase=\\sprivate 7\n")
                            .device;
    EXPECT_EQ(device.version, quelm::SnmpVersion::v3);
    EXPECT_EQ(device.user.name, "anne");
    EXPECT_EQ(device.user.authentication, "SHA-256");
    EXPECT_EQ(device.user.authenticationPassphrase, "authentic7");
    EXPECT_EQ(device.user.privacy, "AES");
    EXPECT_EQ(device.user.privacyPassphrase, " private 7");
}

TEST_F(ConfigurationTest, TheDirectorysLimitsAndItsSafetyAreRead)
{
    const auto directory = read("[directory]\nconnect-timeout=0.5\nsearch-timeout=30\nsize-limit=25\n"
                                "start-tls=true\ncertificate-authorities=ca.pem\n")
                               .directory;
    EXPECT_EQ(directory.connectTimeout, std::chrono::milliseconds(500));
    EXPECT_EQ(directory.searchTimeout, std::chrono::seconds(30));
    EXPECT_EQ(directory.sizeLimit, 25);
    EXPECT_TRUE(directory.startTls);
    EXPECT_EQ(directory.certificateAuthorities, folder / "ca.pem");
    EXPECT_FALSE(read("[directory]\nstart-tls=false\n").directory.startTls);
}

TEST_F(ConfigurationTest, HowLongTheOutboxKeepsJobsIsRead)
{
    EXPECT_EQ(read("[driver]\nuser=anne\n").outboxKeepDays, 30);
    EXPECT_EQ(read("[outbox]\nkeep-days=0\n").outboxKeepDays, 0);
    EXPECT_EQ(read("[outbox]\nkeep-days=3650\n").outboxKeepDays, 3650);
}

TEST_F(ConfigurationTest, ImpossibleValuesAreNamedWithWhatIsExpected)
{
    struct Wrong {
        const char* group;
        const char* key;
        const char* value;
        const char* expected;
    };
    const char* const seconds = "a number of seconds from 0.1 to 600";
    const char* const prefix = "at most four digits, \"*\", \"#\" or \",\"";
    const char* const queue = "NAME or NAME@HOST, such as fax or fax@print.example:631,";
    const char* const address = "HOST or HOST:PORT, such as fax.example:161 or [2001:db8::1]:161,";
    const char* const object = "the dotted number of an object, such as 1.3.6.1.2.1.1.1.0,";
    const Wrong wrongs[] = {
        {"job", "resolution", "best", "standard, fine or superfine"},
        {"job", "prefix", "01234", prefix},
        {"job", "prefix", "0 1", prefix},
        {"sender", "name", "a name of more than 31 characters", "one line of at most 31 characters"},
        {"destination A", "device", "a b", "HOST or HOST:PORT, such as fax.example or [2001:db8::1]:9100,"},
        {"destination A", "queue", "@print.example", queue},
        {"destination A", "queue", "fax@", queue},
        {"destination A", "queue", "two words", queue},
        {"destination A", "pdl", "pcl", "dsc or pjl"},
        {"device", "snmp", "a b", address},
        {"device", "snmp", "fax:0", address},
        {"device", "version", "2", "1, 2c or 3"},
        {"device", "user", "a-name-that-is-longer-than-a-user-s", "a user's name of at most 32 bytes"},
        {"device", "authentication", "SHA-1", "MD5, SHA, SHA-224, SHA-256, SHA-384 or SHA-512"},
        {"device", "privacy", "3DES", "DES or AES"},
        {"device", "timeout", "0", seconds},
        {"device", "timeout", "601", seconds},
        {"device", "timeout", "3s", seconds},
        {"device", "timeout", "nan", seconds},
        {"device", "timeout", "inf", seconds},
        {"device", "timeout", "1,5", seconds},
        {"device", "retries", "-1", "a number from 0 to 10"},
        {"device", "retries", "11", "a number from 0 to 10"},
        {"device", "retries", "1.5", "a number from 0 to 10"},
        {"device", "directory-server-object", "sysDescr.0", object},
        {"device", "directory-base-object", "1", object},
        {"directory", "connect-timeout", "0.05", seconds},
        {"directory", "search-timeout", "x", seconds},
        {"directory", "size-limit", "0", "a number from 1 to 1000000"},
        {"directory", "size-limit", "1000001", "a number from 1 to 1000000"},
        {"directory", "start-tls", "yes", "true or false"},
        {"outbox", "keep-days", "-1", "a number of days from 0 to 3650"},
        {"outbox", "keep-days", "3651", "a number of days from 0 to 3650"},
        {"outbox", "keep-days", "for ever", "a number of days from 0 to 3650"},
    };
    for (const Wrong& wrong : wrongs) {
        const std::string group = wrong.group;
        EXPECT_EQ(problemWith("[" + group + "]\n" + wrong.key + "=" + wrong.value + "\n"),
                  std::string("has \"") + wrong.value + "\" at [" + group + "] " + wrong.key +
                      " (line 2), where " + wrong.expected + " is expected");
    }
    EXPECT_EQ(read("[device]\nretries=3 \n").device.retries, 3) << "a blank at the end says nothing";
}

TEST_F(ConfigurationTest, WhatDoesNotFitTogetherIsTold)
{
    const auto ofVersion3 = [this](const std::string& lines) {
        return problemWith("[device]\nversion=3\n" + lines);
    };
    EXPECT_EQ(ofVersion3(""), "has version=3 at [device] without a user; add user=NAME");
    EXPECT_EQ(ofVersion3("user=a\ncommunity=sesame\n"),
              "has a community at [device], which version 3 does not have; remove it, or write version=2c");
    EXPECT_EQ(ofVersion3("user=a\nauthentication=MD5\n"),
              "has authentication at [device] without authentication-passphrase; write both or neither");
    EXPECT_EQ(ofVersion3("user=a\nauthentication-passphrase=authentic7\n"),
              "has authentication-passphrase at [device] without authentication; write both or neither");
    EXPECT_EQ(
        ofVersion3("user=a\nauthentication=MD5\nauthentication-passphrase=seven77\n"),
        "has fewer than 8 characters at [device] authentication-passphrase; devices take none so short");
    EXPECT_EQ(ofVersion3("user=a\nprivacy=AES\nprivacy-passphrase=private77\n"),
              "has privacy at [device] without authentication, which SNMP does not have; add authentication "
              "and authentication-passphrase");
    EXPECT_EQ(ofVersion3("user=a\nauthentication=MD5\nauthentication-passphrase=authentic7\nprivacy=AES\n"),
              "has privacy at [device] without privacy-passphrase; write both or neither");
    EXPECT_EQ(ofVersion3("user=a\nauthentication=MD5\nauthentication-passphrase=authentic7\n"
                         "privacy-passphrase=private77\n"),
              "has privacy-passphrase at [device] without privacy; write both or neither");
    for (const char* line : {"user=a", "authentication=MD5", "privacy=AES", "privacy-passphrase=private77"})
        EXPECT_EQ(
            problemWith(std::string("[device]\n") + line + "\n"),
            "has a user, authentication or privacy at [device], which only version 3 has; add version=3");
    EXPECT_EQ(problemWith("[device]\ncommunity=" + std::string(256, 'x') + "\n"),
              "has a community of more than 255 bytes at [device]; write the device's");
}

TEST_F(ConfigurationTest, ASecretThatOthersCanReachIsRefused)
{
    const std::string user = "[device]\nversion=3\nuser=a\nauthentication=MD5\nauthentication-passphrase=";
    for (const std::string& content : {std::string("[device]\ncommunity=sesame\n"), user + "authentic7\n"}) {
        for (const mode_t mode : {0640U, 0604U, 0620U, 0602U, 0610U, 0644U, 0666U})
            EXPECT_EQ(problemWith(content, mode),
                      "holds a secret, and others have access to it; run chmod 600 " +
                          (folder / "quelm.conf"));
        for (const mode_t mode : {0600U, 0400U, 0700U})
            EXPECT_EQ(problemWith(content, mode), "");
    }
}

TEST_F(ConfigurationTest, AFileWithoutASecretMayBeEverybodys)
{
    EXPECT_EQ(problemWith("[device]\nsnmp=fax.example\ncommunity=public\n[job]\npdl=dsc\n", 0666), "");
}

TEST_F(ConfigurationTest, ASecretOfAnotherUserIsRefused)
{
    const std::string file = writeFile(folder / "quelm.conf", "[device]\ncommunity=sesame\n");
    chmod(file.c_str(), 0600);
    const uid_t somebodyElse = geteuid() + 1;
    const bool given = chown(file.c_str(), somebodyElse, static_cast<gid_t>(-1)) == 0;
    // Only root can give a file away, and read what it gave away.
    EXPECT_EQ(given, geteuid() == 0);
    EXPECT_EQ(problemAt(file),
              given ? "holds a secret, and belongs to another user; copy it to a file of your own" : "");
}

TEST_F(ConfigurationTest, TheOpenedFileIsLookedAtAndNotItsName)
{
    // A link's own mode is open to everybody.
    writeFile(folder / "secret", "[device]\ncommunity=sesame\n");
    chmod((folder / "secret").c_str(), 0600);
    std::filesystem::create_symlink(folder / "secret", folder / "link");
    EXPECT_EQ(quelm::readConfiguration(folder / "link").device.community, "sesame");
    chmod((folder / "secret").c_str(), 0644);
    EXPECT_NE(problemAt(folder / "link"), "");
}

TEST_F(ConfigurationTest, DestinationsHaveNames)
{
    const auto configuration = read("[job]\ndestination=Head Office\n[destination Head Office]\n"
                                    "queue=fax@print.example:6310\npdl=pjl\n[destination Lab]\n"
                                    "device=10.0.0.7:9101\n[destination Here]\nqueue=fax\n");
    EXPECT_EQ(configuration.destination, "Head Office");
    ASSERT_EQ(configuration.destinations.size(), 3U);
    const auto& office = configuration.destinations[0];
    EXPECT_EQ(office.name, "Head Office");
    EXPECT_EQ(office.kind, quelm::NamedDestination::Kind::queue);
    EXPECT_EQ(office.place, "fax");
    EXPECT_EQ(office.server, "print.example:6310");
    EXPECT_EQ(office.pdl, quelm::Pdl::pjl);
    EXPECT_EQ(configuration.destinations[1].kind, quelm::NamedDestination::Kind::device);
    EXPECT_EQ(configuration.destinations[1].place, "10.0.0.7:9101");
    EXPECT_EQ(configuration.destinations[2].server, "");
    EXPECT_EQ(read("[destination A]\nqueue=fax@[2001:db8::1]:631\n").destinations[0].server,
              "[2001:db8::1]:631");
}

TEST_F(ConfigurationTest, ADestinationIsOnePlace)
{
    EXPECT_EQ(problemWith("\n[destination Lab]\npdl=dsc\n"),
              "names no place in [destination Lab] (line 2); write device, queue or file there");
    EXPECT_EQ(
        problemWith("[destination Lab]\nqueue=fax\ndevice=fax.example\n"),
        "has \"fax.example\" at [destination Lab] device (line 3), where nothing beside the other place "
        "of this destination is expected");
    EXPECT_EQ(problemWith("[destination ]\nqueue=fax\n"),
              "has a destination without a name in line 1; write [destination NAME]");
    EXPECT_EQ(problemWith("[destination  Lab]\nqueue=fax\n[destination Lab]\nqueue=fax\n"),
              "has a second destination \"Lab\" in line 3; give it another name");
}

TEST_F(ConfigurationTest, TheDefaultDestinationIsOneThatIsThere)
{
    EXPECT_EQ(problemWith("[job]\ndestination=Lab\n[destination A]\nqueue=a\n[destination B]\nqueue=b\n"),
              "has \"Lab\" at [job] destination (line 2), which is no destination; possible are A, B");
    EXPECT_EQ(problemWith("[job]\ndestination=Lab\n"),
              "has \"Lab\" at [job] destination (line 2), and no destination is configured; add [destination "
              "Lab]");
}

TEST_F(ConfigurationTest, WhatFillsTheDialogsIsRead)
{
    const auto configuration =
        read("[sender]\nname=Zoë\nnumber=+44 20 7946 0000\norganization=Acme\nphone=1\n"
             "email=z@acme.example\n[job]\nprefix=0,\nresolution=superfine\n"
             "[phonebook]\nshared=/srv/fax/office.xdb\n");
    EXPECT_EQ(configuration.sender.name, "Zoë");
    EXPECT_EQ(configuration.sender.number, "+44 20 7946 0000");
    EXPECT_EQ(configuration.sender.organization, "Acme");
    EXPECT_EQ(configuration.sender.phone, "1");
    EXPECT_EQ(configuration.sender.email, "z@acme.example");
    EXPECT_EQ(configuration.dialingPrefix, "0,");
    EXPECT_EQ(configuration.resolution, "superfine");
    EXPECT_EQ(configuration.sharedPhonebook, "/srv/fax/office.xdb");
}
