// The sample directory as drivers search it.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/agent/sample_directory.h"

#include "base/error.h"
#include "base/net/listening_sockets.h"
#include "device/agent/sample_people.h"
#include "driver/directory/directory_session.h"
#include "tests/servers/listeners.h"
#include "tests/servers/server_process.h"
#include "tests/servers/slapd_server.h" // hasIpv6
#include "tests/support/processes.h"
#include "tests/support/temporary_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <sys/stat.h>

#include <set>
#include <thread>

namespace {

using quelm::device::SampleDirectory;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;
using Names = std::vector<std::string>;

/// Keeps the last line about what went wrong.
struct Report : quelm::DirectoryReport {
    std::string failure;

    void failed(const std::string& line) override { failure = line; }
    void succeeded() override {}
    void searched(quelm::SearchExtent /*extent*/) override {}
    void noticed(const std::string& /*line*/) override {}
};

/// The values of an attribute that a search at this address finds.
Names found(const std::string& address, const std::string& filter, const std::string& attribute)
{
    Report report;
    quelm::DirectorySession session(report);
    session.setAddress(address);
    session.setBase("dc=example");
    Names values;
    quelm::DirectoryQuery query;
    query.base = "dc=example";
    query.filter = filter;
    if (!session.open({}) || !session.bind({}) || !session.search(query, {}))
        return {report.failure};
    while (const auto entry = session.next())
        if (const std::string* value = entry->find(attribute))
            values.push_back(*value);
    return values;
}

class SampleDirectoryTest : public testing::Test {
protected:
    TemporaryFolder folder;
    std::string place = folder / "directory of \"ours\"";
};

TEST_F(SampleDirectoryTest, PeopleAreFoundByTheBeginningOfTheirSurnameInEveryScript)
{
    const SampleDirectory directory(place);
    EXPECT_EQ(directory.settings().base, "dc=example");
    const std::string address = directory.settings().server;
    EXPECT_THAT(found(address, "(sn=*)", "sn"), SizeIs(quelm::device::samplePeople().size()));
    EXPECT_THAT(found(address, "(sn=müll*)", "cn"), ElementsAre("Jürgen Müller", "Anton Müller"));
    EXPECT_THAT(found(address, "(sn=παπα*)", "givenName"), SizeIs(2));
    EXPECT_THAT(found(address, "(sn=щерб*)", "facsimileTelephoneNumber"),
                Contains(StartsWith("+1 555 0104 2")));
    EXPECT_THAT(found(address, "(sn=Nobody*)", "cn"), IsEmpty());
}

TEST_F(SampleDirectoryTest, PeopleHaveWhatTheDeviceNamesForThem)
{
    const SampleDirectory directory(place);
    const auto settings = directory.settings();
    const auto valueOf = [&](const std::string& attribute) {
        return found(settings.server, "(cn=Jürgen Müller)", attribute);
    };
    EXPECT_THAT(valueOf(settings.nameAttribute), ElementsAre("Jürgen Müller"));
    EXPECT_THAT(valueOf(settings.faxAttribute), ElementsAre("+1 555 0101 201"));
    EXPECT_THAT(valueOf(settings.phoneAttribute), ElementsAre("+1 555 0101 101"));
    EXPECT_THAT(valueOf(settings.mailAttribute), ElementsAre("mueller.01@lindenhof.example"));
    EXPECT_THAT(valueOf(settings.cityAttribute), ElementsAre("Mühlstadt"));
    EXPECT_THAT(valueOf("o"), ElementsAre("Lindenhof Papier"));
}

TEST_F(SampleDirectoryTest, ThereIsAGroupForEachOrganization)
{
    const SampleDirectory directory(place);
    const auto groups = found(directory.settings().server, "(objectClass=groupOfNames)", "cn");
    std::set<std::string> organizations;
    for (const auto& person : quelm::device::samplePeople())
        organizations.insert(person.organization);
    EXPECT_EQ(std::set(groups.begin(), groups.end()), organizations);
    EXPECT_THAT(found(directory.settings().server,
                      "(&(cn=Lindenhof Papier)(member=cn=Jürgen Müller,ou=people,dc=example))", "cn"),
                SizeIs(1));
}

TEST_F(SampleDirectoryTest, BothLoopbackAddressesServe)
{
    const SampleDirectory directory(place);
    for (const std::string& address : directory.addresses())
        EXPECT_THAT(found(address, "(sn=Kjær)", "sn"), SizeIs(2)) << address;
    EXPECT_THAT(directory.addresses(), SizeIs(servers::hasIpv6() ? 2 : 1));
}

TEST_F(SampleDirectoryTest, ItsFolderIsForItsOwnerAloneAndMadeAnew)
{
    std::filesystem::create_directory(place);
    writeFile(place + "/left", "from before");
    const SampleDirectory directory(place);
    EXPECT_FALSE(std::filesystem::exists(place + "/left"));
    struct stat status {};
    ASSERT_EQ(stat(place.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0700U);
}

TEST_F(SampleDirectoryTest, TheServerEndsWithIt)
{
    pid_t server = 0;
    std::uint16_t port = 0;
    {
        const SampleDirectory directory(place);
        server = directory.process();
        const std::string address = directory.settings().server;
        port = static_cast<std::uint16_t>(std::stoi(address.substr(address.find(':') + 1)));
        EXPECT_TRUE(isRunning(server));
    }
    EXPECT_FALSE(isRunning(server));
    const SampleDirectory again(place, port);
    EXPECT_EQ(again.settings().server, "127.0.0.1:" + std::to_string(port));
}

TEST_F(SampleDirectoryTest, TheServerEndsWhenTheProgramIsKilled)
{
    const std::string note = folder / "server";
    const pid_t program = fork();
    if (program == 0) {
        {
            const SampleDirectory directory(place);
            writeFile(note, std::to_string(directory.process()) + "\n");
            pause();
        }
        _exit(0);
    }
    const pid_t server = processIdIn(note);
    ASSERT_NE(server, 0);
    ASSERT_TRUE(isRunning(server));
    kill(program, SIGKILL);
    waitpid(program, nullptr, 0);
    const bool ended = soon([&] { return !isRunning(server); });
    EXPECT_TRUE(ended);
    if (!ended)
        kill(server, SIGKILL);
}

TEST_F(SampleDirectoryTest, WithoutTheServersPackageThePackageIsNamed)
{
    try {
        const SampleDirectory directory(place, 0, {folder / ""});
        FAIL() << "there is no server to run";
    } catch (const quelm::Error& error) {
        EXPECT_STREQ(
            error.what(),
            "there is no directory server on this machine; install slapd, the server of OpenLDAP, or do "
            "without --with-directory");
    }
    EXPECT_FALSE(std::filesystem::exists(place));
}

TEST_F(SampleDirectoryTest, APortThatSomebodyElseHasIsNamed)
{
    const SampleDirectory first(place);
    const std::string address = first.settings().server;
    try {
        const SampleDirectory second(
            folder / "second", static_cast<std::uint16_t>(std::stoi(address.substr(address.find(':') + 1))));
        FAIL() << "two servers at one port";
    } catch (const quelm::Error& error) {
        EXPECT_THAT(error.what(),
                    StartsWith(address + ": cannot listen there: another program has this port"));
    }
}

TEST_F(SampleDirectoryTest, AnotherProgramThatTakesThePortMeanwhileIsNotTakenForTheServer)
{
    const auto script = [&](const std::string& name, const std::string& line) {
        const std::string file = writeFile(folder / name, "#!/bin/sh\n" + line + "\n");
        chmod(file.c_str(), S_IRWXU);
    };
    script("slapadd", "exit 0");
    script("slapd", "echo begun; while [ ! -e '" + (folder / "taken") + "' ]; do sleep 0.01; done; exit 1");
    const auto port = static_cast<std::uint16_t>(servers::unusedPort(servers::Transport::tcp));
    const std::jthread other([&] {
        EXPECT_TRUE(soon([&] { return contentOf(place + "/slapd.log") == "begun\n"; }));
        const auto listening = quelm::listenOn({"127.0.0.1"}, port);
        constexpr int shortly = 200; // milliseconds, for a connection that does not come
        pollfd waiting{listening.front().socket.get(), POLLIN, 0};
        EXPECT_EQ(::poll(&waiting, 1, shortly), 0) << "nobody asks another program";
        writeFile(folder / "taken", "");
    });
    EXPECT_THROW(SampleDirectory(place, port, {folder / ""}), quelm::Error);
}

TEST_F(SampleDirectoryTest, AServerThatDoesNotStartIsReportedWithItsOwnWords)
{
    const auto script = [&](const std::string& name, const std::string& line) {
        const std::string file = writeFile(folder / name, "#!/bin/sh\n" + line + "\n");
        chmod(file.c_str(), S_IRWXU);
    };
    script("slapadd", "exit 0");
    script("slapd", "echo 'no memory for threads'; exit 1");
    try {
        const SampleDirectory directory(place, 0, {folder / ""});
        FAIL() << "it does not run";
    } catch (const quelm::Error& error) {
        EXPECT_STREQ(error.what(), "the directory server slapd did not start: no memory for threads");
    }
    script("slapadd", "echo 'disk full' >&2; exit 1");
    try {
        const SampleDirectory directory(place, 0, {folder / ""});
        FAIL() << "nothing was filled in";
    } catch (const quelm::Error& error) {
        EXPECT_STREQ(error.what(), "the sample directory could not be filled: disk full");
    }
}

} // namespace
