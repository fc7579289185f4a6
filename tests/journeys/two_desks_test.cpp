// Two desks, one print server with a class of two devices, one directory and one configuration for all.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "tests/journeys/fax_pages.h"
#include "tests/journeys/journey.h"
#include "tests/journeys/office_network.h"
#include "tests/servers/slapd_server.h"
#include "tests/support/build_paths.h"
#include "tests/support/processes.h"

#include <gmock/gmock.h>

#include <array>
#include <filesystem>
#include <memory>
#include <regex>
#include <thread>

namespace journeys {
namespace {

namespace fs = std::filesystem;

using servers::ServerProcess;
using testing::HasSubstr;

class TwoDesks : public Journey {
protected:
    TwoDesks()
    {
        // The server's programs work as users of their own.
        for (auto place = folder; place.string().size() > fs::temp_directory_path().string().size();
             place = place.parent_path())
            fs::permissions(place, fs::perms(0755));
        network = std::make_unique<OfficeNetwork>(2, path("network.log"));
        startDirectory();
        startPrintServer();
        for (std::size_t i = 0; i < devices.size(); ++i)
            startDevice(i);
    }

    /// The first block of the administrator's guide that holds these words, with the addresses of this
    /// office.
    std::string fromGuide(const std::string& words) const
    {
        const auto guide = contentOf(build_paths::inProject("docs/administration.md"));
        const std::regex block("```[a-z]+\n([^`]*)```");
        for (std::sregex_iterator found(guide.begin(), guide.end(), block), end; found != end; ++found) {
            std::string text = (*found)[1];
            if (text.find(words) == std::string::npos)
                continue;
            const auto put = [&text](const char* name, const std::string& address) {
                text = std::regex_replace(text, std::regex(name), address);
            };
            put("fax-1\\.example", OfficeNetwork::firstDevice);
            put("fax-2\\.example", OfficeNetwork::secondDevice);
            put("(print|directory)\\.example", OfficeNetwork::server);
            put("/srv/fax", folder.string());
            return text;
        }
        ADD_FAILURE() << "the guide has no block with " << words;
        return "";
    }

    void administer(const std::string& commands) const
    {
        servers::runProgram({{servers::systemProgram("sh"), "-ec", commands},
                             path("administration.log"),
                             {"CUPS_SERVER=" + path("print/socket"),
                              "PATH=" + build_paths::stageFolder() + ":/usr/sbin:/usr/bin:/sbin:/bin",
                              "HOME=" + home.string()}});
    }

    Request atDesk(int desk, const std::string& name, const Arguments& arguments) const
    {
        const auto own = path("desk" + std::to_string(desk));
        Arguments all{build_paths::inStage("quelm-driver"),
                      "--home",
                      home.string(),
                      "--user",
                      name,
                      "--now",
                      "2026-03-04T05:06"};
        all.insert(all.end(), arguments.begin(), arguments.end());
        Request request;
        request.arguments = network->atDesk(desk, all);
        request.environment = {"HOME=" + own,
                               "XDG_CONFIG_HOME=" + own + "/config",
                               "XDG_CONFIG_DIRS=" + path("xdg"),
                               "XDG_STATE_HOME=" + own + "/state",
                               "XDG_DATA_HOME=" + own + "/data",
                               "XDG_CACHE_HOME=" + own + "/cache",
                               "XDG_RUNTIME_DIR=" + own,
                               "LC_ALL=C.UTF-8",
                               "LANGUAGE=",
                               "CUPS_SERVER=127.0.0.1:1",
                               "LSAN_OPTIONS=print_suppressions=0:suppressions=" + leaks()};
        return request;
    }

    /// Sends the faxes of a desk, one behind the other.
    void sendAll(int desk, const std::string& name, const std::vector<Arguments>& faxes) const
    {
        for (const auto& fax : faxes) {
            const auto result = runProgram(atDesk(desk, name, fax));
            EXPECT_EQ(result.status, 0) << result.errors;
            EXPECT_THAT(result.errors, HasSubstr("queue fax, job"));
        }
    }

    /// The files that a number has received, at whatever device.
    std::vector<std::string> received(const std::string& number) const
    {
        std::vector<std::string> files;
        for (std::size_t i = 0; i < devices.size(); ++i)
            if (const auto place = stateOf(i) + "/received/" + number; fs::exists(place))
                for (const auto& entry : fs::directory_iterator(place))
                    if (entry.path().extension() == ".tif")
                        files.push_back(entry.path());
        return files;
    }
    std::size_t numbersAt(std::size_t device) const
    {
        const auto place = fs::path(stateOf(device)) / "received";
        return fs::exists(place) ? static_cast<std::size_t>(std::distance(fs::directory_iterator(place), {}))
                                 : 0;
    }
    /// Waits until all calls that were to be made have ended.
    bool haveEnded(std::size_t jobs) const
    {
        return soon([&] {
            std::size_t done = 0;
            for (std::size_t i = 0; i < devices.size(); ++i) {
                const auto said = contentOf(logOf(i));
                for (auto at = said.find(": done, "); at != std::string::npos;
                     at = said.find(": done, ", at + 1))
                    ++done;
            }
            return done >= jobs;
        });
    }

    /// Expects that the number has received one fax, of the pages that these options make without any
    /// configuration.
    void expectPages(const std::string& number, Arguments options) const
    {
        const auto files = received(number);
        ASSERT_EQ(files.size(), 1U) << number;
        options.insert(options.begin(), {"--now", "2026-03-04T05:06", "fax"});
        options.insert(options.end(), {"--to", "Somebody=" + number, "--output", path("expected.job")});
        const auto result = driver(options);
        ASSERT_EQ(result.status, 0) << result.errors;
        EXPECT_EQ(pagesIn(files.front()), renderedPages(path("expected.job"), "204x98", path("expected.tif")))
            << number;
    }

    void startDevice(std::size_t i)
    {
        servers::ServerCommand command;
        command.arguments = network->atServer(
            {build_paths::inStage("quelm-device"), "serve", "--state", stateOf(i), "--no-panel", "--no-snmp",
             "--address", i == 0 ? OfficeNetwork::firstDevice : OfficeNetwork::secondDevice});
        command.outputFile = logOf(i);
        command.environment = {"LC_ALL=C.UTF-8", "LANGUAGE="};
        const auto before = contentOf(logOf(i)).size();
        devices[i] = std::make_unique<ServerProcess>(command, [this, i, before] {
            return contentOf(logOf(i)).find("ready\n", before) != std::string::npos;
        });
    }

    std::string printServerSaid() const { return contentOf(path("print/log")); }

    std::unique_ptr<OfficeNetwork> network;
    std::array<std::unique_ptr<ServerProcess>, 2> devices;

private:
    std::string stateOf(std::size_t device) const { return path("device" + std::to_string(device)); }
    std::string logOf(std::size_t device) const { return stateOf(device) + ".log"; }

    void startPrintServer()
    {
        for (const char* name : {"root", "cache", "state", "spool", "temporary"})
            fs::create_directories(path(std::string("print/") + name));
        const auto place = path("print/");
        file("print/files.conf",
             "ServerRoot " + place + "root\nCacheDir " + place + "cache\nStateDir " + place +
                 "state\nRequestRoot " + place + "spool\nTempDir " + place + "temporary\nServerKeychain " +
                 place + "root/ssl\nAccessLog " + place + "log\nErrorLog " + place + "log\nPageLog " + place +
                 "log\nPrintcap\nUser lp\nGroup lp\nSystemGroup root\nLogFileGroup root\n");
        file("print/cupsd.conf",
             std::string("LogLevel debug\nMaxLogSize 0\nBrowsing No\nWebInterface No\n") +
                 "JobRetryInterval 1\nListen " + OfficeNetwork::server + ":631\nListen " + place +
                 "socket\n<Location />\nOrder allow,deny\nAllow 10.77.0.0/24\n" +
                 "</Location>\n<Policy default>\n<Limit All>\nOrder deny,allow\n</Limit>\n" + "</Policy>\n");
        servers::ServerCommand command;
        command.arguments = network->atServer(
            {servers::systemProgram("cupsd"), "-f", "-c", place + "cupsd.conf", "-s", place + "files.conf"});
        command.outputFile = place + "output";
        printServer_ = std::make_unique<ServerProcess>(
            command, [place] { return fs::exists(place + "socket") && fs::exists(place + "log"); });
    }

    /// A directory of people, and what tells desks of it.
    void startDirectory()
    {
        const auto place = path("directory/");
        fs::create_directories(place + "data");
        std::string schemas;
        for (const char* schema : {"core", "cosine", "inetorgperson"})
            schemas += std::string("include /etc/ldap/schema/") + schema + ".schema\n";
        const auto settings = file("directory/slapd.conf",
                                   schemas + "pidfile " + place + "pid\nmodulepath /usr/lib/ldap\n" +
                                       "moduleload back_mdb\ndatabase mdb\nsuffix dc=example\ndirectory " +
                                       place + "data\nmaxsize 67108864\ndbnosync\n");
        const auto people =
            file("directory/people.ldif",
                 "dn: dc=example\nobjectClass: dcObject\nobjectClass: organization\ndc: example\n"
                 "o: Example\n\ndn: cn=Smith Bob,dc=example\nobjectClass: inetOrgPerson\n"
                 "cn: Smith Bob\nsn: Smith\ngivenName: Bob\nfacsimileTelephoneNumber: 555201\n");
        servers::runProgram(
            {{servers::systemProgram("slapadd"), "-q", "-f", settings, "-l", people}, place + "log", {}});
        servers::ServerCommand directory;
        directory.arguments = network->atServer({servers::systemProgram("slapd"), "-f", settings, "-h",
                                                 std::string("ldap://") + OfficeNetwork::server, "-d", "0"});
        directory.outputFile = place + "log";
        directory_ =
            std::make_unique<ServerProcess>(directory, [place] { return fs::exists(place + "pid"); });

        const std::string objects = "1.3.6.1.4.1.32473.8.74.6.2.1.9.7.155.";
        file("directory/snmpd.conf", std::string("agentaddress udp:") + OfficeNetwork::server +
                                         ":161\nrocommunity public 10.77.0.0/24\noverride " + objects +
                                         "114.11 octet_str \"" + OfficeNetwork::server + ":389\"\noverride " +
                                         objects + "118.1 octet_str \"dc=example\"\n");
        servers::ServerCommand teller;
        teller.arguments = network->atServer({servers::systemProgram("snmpd"), "-f", "-Le", "-I", "-smux"});
        teller.outputFile = place + "snmpd.log";
        teller.environment = {"HOME=" + place, "SNMPCONFPATH=" + place,
                              "SNMP_PERSISTENT_DIR=" + place + "state", "MIBS=", "MIBDIRS=" + place + "none"};
        teller_ = std::make_unique<ServerProcess>(teller, [place] {
            return contentOf(place + "snmpd.log").find("NET-SNMP version") != std::string::npos;
        });
    }

    std::unique_ptr<ServerProcess> printServer_;
    std::unique_ptr<ServerProcess> directory_;
    std::unique_ptr<ServerProcess> teller_;
};

TEST_F(TwoDesks, FaxThroughOneServerToAClassOfDevicesThatMayBeOff)
{
    administer(fromGuide("lpadmin -p fax-1"));
    fs::create_directories(path("xdg/quelm"));
    file("xdg/quelm/quelm.conf", fromGuide("[destination Office]"));
    administer(fromGuide("phonebook add \"Front Desk\""));
    EXPECT_THAT(contentOf(path("administration.log")), HasSubstr("Front Desk  +44 20 7946 0000"));
    ASSERT_EQ(driver({"phonebook", "add", "Dora", "555101", "--file", path("office.xdb")}).status, 0);
    administer(fromGuide("mv /srv/fax/office.xdb.new"));

    const auto ann = document("ann.ps", "From Ann");
    const auto ben = document("ben.ps", "From Ben");
    const Arguments cover{"--cover", "--show-sender", "--hide-recipients"};
    Arguments annToDora{"fax", ann, "--from-shared", "--entry", "Dora"};
    annToDora.insert(annToDora.end(), cover.begin(), cover.end());
    std::thread otherDesk([&] {
        sendAll(1, "ben", {{"fax", ben, "--directory", "Smith"}, {"fax", ben, "--to", "Eve=555202"}});
    });
    sendAll(0, "ann", {annToDora, {"fax", ann, "--to", "Cid=555102"}});
    otherDesk.join();
    ASSERT_TRUE(haveEnded(4)) << printServerSaid();

    EXPECT_EQ(numbersAt(0) + numbersAt(1), 4U) << "nobody else received anything";
    EXPECT_GE(numbersAt(0), 1U);
    EXPECT_GE(numbersAt(1), 1U);
    Arguments withSender{ann};
    withSender.insert(withSender.end(), cover.begin(), cover.end());
    withSender.insert(withSender.end(), {"--sender-name", "Reception", "--sender-organization", "Acme Ltd",
                                         "--sender-number", "+44 20 7946 0000"});
    expectPages("555101", withSender);
    expectPages("555102", {ann});
    expectPages("555201", {ben});
    expectPages("555202", {ben});

    // With both devices off the server keeps the job, and tries again until one is back.
    for (auto& device : devices)
        device.reset();
    const auto before = printServerSaid().size();
    sendAll(0, "ann", {{"fax", ann, "--to", "Fay=555103"}});
    ASSERT_TRUE(soon([&] {
        return printServerSaid().find("queuing on next printer in class", before) != std::string::npos;
    })) << printServerSaid().substr(before);
    startDevice(1);
    ASSERT_TRUE(soon([&] { return received("555103").size() == 1; })) << printServerSaid().substr(before);
    ASSERT_TRUE(haveEnded(5));
    expectPages("555103", {ann});
}

} // namespace
} // namespace journeys
