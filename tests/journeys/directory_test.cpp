// The device's directory, from the device's settings to the job, with real servers.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "tests/journeys/journey.h"
#include "tests/servers/listeners.h"
#include "tests/servers/slapd_server.h"
#include "tests/servers/snmpd_server.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <chrono>
#include <memory>
#include <sstream>

namespace journeys {
namespace {

using servers::person;
using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using testing::SizeIs;
using testing::StartsWith;

std::vector<std::string> linesOf(const std::string& text)
{
    std::vector<std::string> lines;
    std::istringstream input(text);
    for (std::string line; std::getline(input, line);)
        lines.push_back(line);
    return lines;
}

class DirectoryJourney : public Journey {
protected:
    /// Starts a directory with these people, which gives at most so many of them (0 is no limit), and a
    /// device that names it.
    void serve(std::vector<servers::DirectoryRecord> people, int sizeLimit = 0)
    {
        servers::SlapdSettings settings;
        settings.records = std::move(people);
        settings.sizeLimit = sizeLimit;
        directory = std::make_unique<servers::SlapdServer>(settings);
        nameDirectory(directory->address());
    }

    /// Starts a device that names this directory server.
    void nameDirectory(const std::string& address)
    {
        servers::SnmpdSettings settings;
        settings.objects = servers::directorySettings(address, servers::SlapdServer::base());
        device = std::make_unique<servers::SnmpdServer>(settings);
    }

    /// Runs a command with the device and short time limits.
    Result run(Arguments arguments, const std::string& input = {}) const
    {
        const auto configuration = file("quelm.conf", "[device]\nsnmp = " + device->address() +
                                                          "\ntimeout = 1\n\n[directory]\nconnect-timeout = "
                                                          "1\nsearch-timeout = 2\n");
        arguments.insert(arguments.begin(), {"--config", configuration});
        return driver(arguments, input);
    }

    Result search(const std::string& prefix) const { return run({"directory", "search", "--", prefix}); }

    /// The people that a search prints, which must succeed.
    std::vector<std::string> found(const std::string& prefix) const
    {
        const auto result = search(prefix);
        EXPECT_EQ(result.status, 0) << result.errors;
        return linesOf(result.output);
    }

    /// What a script in the open phonebook dialog, on the directory, answers.
    std::string inDialog(const std::string& actions) const
    {
        const auto result = run({"script", "-"}, "call T40InvokeFaxDialog\npress \"AddPBFaxRcpt\"\n"
                                                 "choose \"Current PB Type\" 2\n" +
                                                     actions);
        EXPECT_EQ(result.status, 0) << result.errors;
        return result.output;
    }

    /// The same for a search with this text, and the status that it ends with.
    std::string statusOf(const std::string& text) const
    {
        const auto answers = inDialog("type \"Search String\" \"" + text +
                                      "\"\npress \"Search Button\"\nshow \"Search Status\"\n");
        const std::string mark = "widget \"Search Status\"";
        const auto at = answers.find(" text \"", answers.find(mark));
        EXPECT_NE(at, std::string::npos) << answers;
        return answers.substr(at + 7, answers.find('"', at + 7) - at - 7);
    }

    std::string letter = document("letter.ps", "Hello");
    std::unique_ptr<servers::SlapdServer> directory;
    std::unique_ptr<servers::SnmpdServer> device;
};

TEST_F(DirectoryJourney, ASearchListsThoseWhoseSurnameBeginsWithTheText)
{
    serve({person("Smith", "Bob", "555-2", "555-3", "bob@acme.example"), person("Jones", "Cid", "555-4"),
           person("Smithers", "Anne", "555-1")});
    EXPECT_THAT(found("Smi"),
                ElementsAre("Smith, Bob      555-2  555-3  bob@acme.example", "Smithers, Anne  555-1"));
    EXPECT_THAT(found("jon"), ElementsAre("Jones, Cid  555-4"));
    EXPECT_THAT(found(""), SizeIs(3));
}

TEST_F(DirectoryJourney, ASearchThatFindsNobodySaysSo)
{
    serve({person("Smith", "Bob", "555-2")});
    const auto result = search("Jo");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.errors, "quelm-driver: nobody in the directory has a surname that begins like this\n");
}

TEST_F(DirectoryJourney, TheWholeNameNarrowsASearch)
{
    serve({person("Smith", "Bob", "555-2"), person("Smith", "Anne", "555-1"),
           person("Smithers", "Al", "555-3")});
    EXPECT_THAT(found("Smith, a"), ElementsAre("Smith, Anne  555-1"));
}

TEST_F(DirectoryJourney, ResultsKeepTheDirectorysOrderAndAccentedAndRightToLeftNames)
{
    serve({person("Özdemir", "Zoë", "555-1"), person("לוי", "דנה", "555-2"),
           person("Ôlafsdóttir", "Ása", "555-3"), person("Ángeles", "", "555-4")});
    EXPECT_THAT(found(""), ElementsAre(StartsWith("Özdemir, Zoë "), StartsWith("לוי, דנה "),
                                       StartsWith("Ôlafsdóttir, Ása "), StartsWith("Ángeles, ")));
    EXPECT_THAT(found("לו"), ElementsAre("לוי, דנה  555-2"));
    EXPECT_THAT(found("özd"), ElementsAre("Özdemir, Zoë  555-1"));
    EXPECT_THAT(attributes({"--directory", "לו", "--device-snmp", device->address()}),
                Contains(HasSubstr("\"5552\"")));
}

TEST_F(DirectoryJourney, TheDialogCountsWhatItFound)
{
    auto people = servers::persons(5);
    people.push_back(person("Lone", "Ann", "1"));
    serve(std::move(people));
    EXPECT_EQ(statusOf("Nobody"), "No Records Found");
    EXPECT_EQ(statusOf("Lone"), "1 Record Found");
    EXPECT_EQ(statusOf("Surname000"), "5 Records Found");
    EXPECT_EQ(statusOf(""), "6 Records Found");
}

TEST_F(DirectoryJourney, AThousandResultsAreAllListedAndLeaveTheStatusAtSearching)
{
    serve(servers::persons(1000));
    const auto result = search("");
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(linesOf(result.output), SizeIs(1000));
    EXPECT_EQ(result.errors, "") << "nobody was left out";
    EXPECT_EQ(statusOf(""), "Searching...");
}

TEST_F(DirectoryJourney, MoreThanAThousandResultsAreCutThere)
{
    serve(servers::persons(1001));
    const auto result = search("");
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(linesOf(result.output), SizeIs(1000));
    EXPECT_THAT(result.errors, HasSubstr("1000"));
    EXPECT_EQ(statusOf(""), "1000+ Records Found");
}

TEST_F(DirectoryJourney, TheCommandTakesAStarForAStarAndTheDialogForAPattern)
{
    serve({person("*Star", "Ann", "1"), person("Smith", "Bob", "2"), person("Smooth", "Cid", "3")});
    EXPECT_THAT(found("*"), ElementsAre("*Star, Ann  1"));
    EXPECT_EQ(statusOf("S*th"), "2 Records Found");
    EXPECT_EQ(search("a)(sn=").status, 0);
    EXPECT_EQ(statusOf("a)"), "Timeout Exceeded!");
}

TEST_F(DirectoryJourney, AFaxGoesToTheOneThatMatches)
{
    serve({person("Smith", "Bob", "555-2"), person("Jones", "Cid", "555-4")});
    const auto result = run({"fax", letter, "--to", "Ann=555-9", "--directory", "Smi", "--directory", "Jon",
                             "--output", path("job")});
    EXPECT_EQ(result.status, 0) << result.errors;
    EXPECT_THAT(content("job"),
                AllOf(HasSubstr("PHONE \"5559\""), HasSubstr("PHONE \"5552\""), HasSubstr("PHONE \"5554\"")));
}

TEST_F(DirectoryJourney, AFaxIsNotWrittenWhenSeveralMatchOrNobodyOrTheOneHasNoNumber)
{
    serve({person("Smith", "Bob", "555-2"), person("Smithers", "Anne", "555-1"), person("Jones", "Cid")});
    const auto faxTo = [this](const std::string& prefix) {
        return run({"fax", letter, "--directory", prefix, "--output", path("job")});
    };
    expectFailure(
        faxTo("Smi"), 1,
        "--directory Smi: 2 people match (Smith, Bob; Smithers, Anne); write more of the name, such as "
        "\"Smith, Bob\"");
    expectFailure(faxTo("Sno"), 1,
                  "--directory Sno: nobody in the directory has a surname that begins like this");
    expectFailure(faxTo("Jon"), 1,
                  "--directory Jon: Jones, Cid has no fax number in the directory; give it with --to");
    EXPECT_FALSE(exists("job"));
}

TEST_F(DirectoryJourney, AFaxIsNotWrittenForTheOnlyOneOfAPartOfTheDirectory)
{
    const auto fax = [this] { return run({"fax", letter, "--directory", "Smi", "--output", path("job")}); };
    const std::string reason = "--directory Smi: the search ended early, and others may match; ";
    const std::vector<servers::DirectoryRecord> smiths{person("Smith", "Bob", "555-2"),
                                                       person("Smithers", "Anne", "555-1"),
                                                       person("Smith", "Zed", "555-3")};
    serve(smiths, 1);
    auto result = fax();
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.errors, HasSubstr(reason));
    serve(smiths);
    servers::ServingListener proxy(servers::cuttingProxy(directory->port(), 200, servers::Cut::close));
    nameDirectory(proxy.address());
    result = fax();
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.errors, HasSubstr(reason));
    EXPECT_FALSE(exists("job"));
}

TEST_F(DirectoryJourney, ADuplicateFromTheDirectoryIsAddedUnlessItIsToBeSkipped)
{
    serve({person("Smith", "Bob", "555-2")});
    const auto numbers = [this](const Arguments& more) {
        Arguments all{"attributes", "--directory", "Smi", "--directory", "Smi"};
        all.insert(all.end(), more.begin(), more.end());
        const auto lines = linesOf(run(all).output);
        return std::ranges::count_if(
            lines, [](const auto& line) { return line.find("PHONE") != std::string::npos; });
    };
    EXPECT_EQ(numbers({}), 2);
    EXPECT_EQ(numbers({"--duplicates", "skip"}), 1);
}

TEST_F(DirectoryJourney, AServerKilledInMidSearchLeavesWhatItHadSent)
{
    serve(servers::persons(500));
    servers::ServingListener proxy(servers::cuttingProxy(directory->port(), 20000, servers::Cut::close));
    nameDirectory(proxy.address());
    const auto result = search("");
    EXPECT_EQ(result.status, 0) << result.errors;
    const auto people = linesOf(result.output);
    EXPECT_GT(people.size(), 10U);
    EXPECT_LT(people.size(), 500U);
    EXPECT_THAT(people.front(), StartsWith("Surname0001, "));
    EXPECT_THAT(result.errors, HasSubstr(proxy.address()));
}

TEST_F(DirectoryJourney, AServerThatNeverAnswersCostsItsTimeLimitsAndASearchFails)
{
    const servers::SilentListener silent;
    nameDirectory(silent.address());
    const auto start = std::chrono::steady_clock::now();
    expectFailure(search("Smi"), 1, silent.address());
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(15));
    expectFailure(run({"fax", letter, "--directory", "Smi", "--output", path("job")}), 1, silent.address());
    EXPECT_FALSE(exists("job"));
}

TEST_F(DirectoryJourney, AServerThatIsNotThereSwitchesTheDirectoryOff)
{
    serve({person("Smith", "Bob", "555-2")});
    directory->process().stop();
    expectFailure(search("Smi"), 1, directory->address());
    const auto answers =
        run({"script", "-"}, "call T40InvokeFaxDialog\nshow \"LDAP PB Status\"\nshow \"LDAP PB Type\"\n"
                             "show \"LDAP More Info Button\"\n");
    EXPECT_THAT(answers.output, AllOf(HasSubstr("text \"Unavailable\""), HasSubstr("sensitive no")));
}

TEST_F(DirectoryJourney, AServerThatComesBackServesTheNextSearch)
{
    serve({person("Smith", "Bob", "555-2")});
    directory->process().stop();
    EXPECT_EQ(search("Smi").status, 1);
    directory->start();
    EXPECT_THAT(found("Smi"), ElementsAre("Smith, Bob  555-2"));
}

TEST_F(DirectoryJourney, ADeviceWithoutASearchBaseSwitchesTheDirectoryOff)
{
    serve({person("Smith", "Bob", "555-2")});
    servers::SnmpdSettings settings;
    settings.objects = {{servers::directoryServerObject, directory->address()}};
    device = std::make_unique<servers::SnmpdServer>(settings);
    expectFailure(search("Smi"), 1, "directory");
    const auto answers =
        run({"script", "-"}, "call T40InvokeFaxDialog\npress \"AddPBFaxRcpt\"\nshow \"LDAP PB Status\"\n"
                             "show \"Current PB Type\"\n");
    EXPECT_THAT(answers.output, AllOf(HasSubstr("text \"Unavailable\""), HasSubstr("value 0")));
}

TEST_F(DirectoryJourney, WithoutADeviceTheDirectoryIsExplained)
{
    expectFailure(driver({"directory", "search", "Smi"}), 1, "--device-snmp HOST");
    expectFailure(driver({"fax", letter, "--directory", "Smi", "--output", path("job")}), 1,
                  "--device-snmp HOST");
}

} // namespace
} // namespace journeys
