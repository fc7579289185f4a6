// What an administrator configures for all: it reaches the jobs of users who chose nothing else.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "tests/journeys/journey.h"
#include "tests/servers/cupsd_server.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <filesystem>
#include <fstream>

namespace journeys {
namespace {

namespace fs = std::filesystem;

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

class ConfiguredJourney : public Journey {
protected:
    const std::string letter = document("letter.ps", "Hello");
    const std::string own = home.parent_path() / "home";
    const std::string forAll = own + "/machine/quelm/quelm.conf";
    const std::string forOne = own + "/config/quelm/quelm.conf";

    /// Writes a file outside the work folder.
    static std::string write(const std::string& path, const std::string& content)
    {
        fs::create_directories(fs::path(path).parent_path());
        std::ofstream(path, std::ios::binary) << content;
        return path;
    }
    void keep(const std::string& values) const
    {
        write(own + "/config/quelm/features/ann.ini", "[features]\n" + values);
    }

    /// The job of a letter with a cover sheet that names its sender.
    std::string job(const Arguments& options = {}) const
    {
        Arguments all{"fax",           letter,     "--to",          "Ann=1", "--cover",
                      "--show-sender", "--output", path("the.job"), "--now", "2026-03-04T05:06"};
        all.insert(all.end(), options.begin(), options.end());
        const auto result = driver(all);
        EXPECT_EQ(result.status, 0) << result.errors;
        return content("the.job");
    }
};

constexpr const char* sender = "[sender]\nname=Reception\nnumber=555\norganization=Acme\nphone=556\n"
                               "email=fax@acme.example\n";

TEST_F(ConfiguredJourney, TheSenderIsOnTheCoverSheetOfWhoeverTypedNoOther)
{
    write(forAll, sender);
    EXPECT_THAT(job(), AllOf(HasSubstr("(Reception)"), HasSubstr("(555)"), HasSubstr("(Acme)"),
                             HasSubstr("(556)"), HasSubstr("(fax@acme.example)")));
    write(forOne, "[sender]\nname=Ann at the desk\n");
    EXPECT_THAT(job(), AllOf(HasSubstr("(Ann at the desk)"), HasSubstr("(Acme)")));
    keep("Sender Fax Name=Ann Lee\n");
    EXPECT_THAT(job(), AllOf(HasSubstr("(Ann Lee)"), HasSubstr("(Acme)"), Not(HasSubstr("at the desk"))));
    EXPECT_THAT(job({"--sender-name", "Bob"}),
                AllOf(HasSubstr("(Bob)"), HasSubstr("(Acme)"), Not(HasSubstr("Ann Lee"))));
}

TEST_F(ConfiguredJourney, ThePrefixIsDialledUnlessTheUserUntickedIt)
{
    write(forAll, "[job]\nprefix=0,\n");
    EXPECT_THAT(attributeText({"--to", "Ann=1"}), HasSubstr("DESTINATION_PHONE \"0,,1\""));
    keep("LanFax Dialing Prefix Info=9\n");
    EXPECT_THAT(attributeText({"--to", "Ann=1"}), HasSubstr("DESTINATION_PHONE \"9,1\""));
    keep("LanFax Dialing Prefix=0\n");
    EXPECT_THAT(attributeText({"--to", "Ann=1"}), HasSubstr("DESTINATION_PHONE \"1\""));
    EXPECT_THAT(attributeText({"--to", "Ann=1", "--prefix", "7"}), HasSubstr("DESTINATION_PHONE \"7,1\""));
}

TEST_F(ConfiguredJourney, TheResolutionIsThatOfJobsForWhichNobodyChoseAnother)
{
    const auto usual = attributeText({"--to", "Ann=1"});
    write(forAll, "[job]\nresolution=superfine\n");
    const auto configured = attributeText({"--to", "Ann=1"});
    EXPECT_NE(configured, usual);
    EXPECT_EQ(configured, attributeText({"--to", "Ann=1", "--resolution", "superfine"}));
    EXPECT_EQ(attributeText({"--to", "Ann=1", "--resolution", "standard"}), usual);
    keep("LanFax Resolution=0\n");
    EXPECT_EQ(attributeText({"--to", "Ann=1"}), usual);
}

TEST_F(ConfiguredJourney, TheSharedPhonebookIsTheOneThatTheDialogOpens)
{
    const auto book = path("office.xdb");
    ASSERT_EQ(driver({"phonebook", "add", "Dora", "4", "--file", book}).status, 0);
    write(forAll, "[phonebook]\nshared=" + book + "\n");
    const auto answers = script({"call T40InvokeFaxDialog", "press \"AddPBFaxRcpt\"",
                                 "choose \"Current PB Type\" 1", "rows \"Fax PB List\""});
    EXPECT_THAT(answers, testing::Contains(HasSubstr("Dora")));
    expectFailure(driver({"attributes", "--entry", "Dora"}), 1, "is no entry of the phonebook");
    const Arguments shared{"attributes", "--from-shared", "--entry", "Dora"};
    EXPECT_THAT(driver(shared).output, HasSubstr("DESTINATION_PHONE \"4\""));
    const auto other = path("other.xdb");
    ASSERT_EQ(driver({"phonebook", "add", "Dora", "5", "--file", other}).status, 0);
    keep("LanFax Shared PB Name=" + other + "\n");
    EXPECT_THAT(driver(shared).output, HasSubstr("DESTINATION_PHONE \"5\"")) << "the user chose another";
    keep("");
    fs::remove(forAll);
    expectFailure(driver(shared), 1, "no shared phonebook is chosen");
}

TEST_F(ConfiguredJourney, NothingOfItIsKeptAsTheUsersOwn)
{
    write(forAll, std::string(sender) + "[job]\nprefix=0\n");
    ASSERT_EQ(driver({"script", "-"}, "call T40InvokeFaxDialog\npress \"LanFax OK Button\"\n").status, 0);
    write(forAll, "[sender]\nname=New Reception\n");
    EXPECT_THAT(job(), AllOf(HasSubstr("(New Reception)"), Not(HasSubstr("Acme")),
                             HasSubstr("DESTINATION_PHONE \"1\"")));
}

TEST_F(ConfiguredJourney, AJobWithoutADestinationGoesToTheDefaultOne)
{
    const auto office = path("office.job");
    write(forAll, "[job]\ndestination=Office\n[destination Office]\nfile=" + office +
                      "\npdl=pjl\n"
                      "[destination Lab]\nfile=" +
                      path("lab.job") + "\n");
    const Arguments fax{"fax", letter, "--to", "Ann=1"};
    const auto with = [&fax](const Arguments& options) {
        auto all = fax;
        all.insert(all.end(), options.begin(), options.end());
        return all;
    };
    EXPECT_EQ(driver(fax).status, 0);
    EXPECT_THAT(content("office.job"), HasSubstr("@PJL ENTER LANGUAGE"));
    EXPECT_EQ(driver(with({"--destination", "Lab"})).status, 0);
    EXPECT_THAT(content("lab.job"), Not(HasSubstr("@PJL")));
    fs::remove(office);
    EXPECT_EQ(driver(with({"--output", path("here.job")})).status, 0);
    EXPECT_FALSE(exists("office.job"));
    const auto plan = driver(with({"--dry-run", "--json"}));
    EXPECT_EQ(nlohmann::json::parse(plan.output)["destination"]["path"], office);
    EXPECT_FALSE(exists("office.job"));
    EXPECT_EQ(driver({"fax", "--to", "Ann=1", "--cover", "--cover-preview", path("cover.png")}).status, 0);
    EXPECT_FALSE(exists("office.job")) << "a preview alone sends nothing";
    expectFailure(driver(with({"--destination", "Nowhere"})), 2, "possible are Office, Lab");
    expectFailure(driver(with({"--destination", "Lab", "--queue", "q"})), 2, "give one of");
    EXPECT_NE(driver({"attributes", "--to", "Ann=1", "--destination", "Lab"}).status, 0);
}

TEST_F(ConfiguredJourney, AConfiguredQueueIsThatOfItsServer)
{
    const servers::CupsdServer server({{servers::PrinterQueue{"fax"}}});
    write(forAll, "[job]\ndestination=Office\n[destination Office]\nqueue=fax@" + server.address() + "\n");
    Request request;
    request.arguments = {"fax", letter, "--to", "Ann=1"};
    request.environment = {"CUPS_SERVER=127.0.0.1:1"}; // where there is none
    const auto result = driver(request);
    EXPECT_EQ(result.status, 0) << result.errors;
    EXPECT_THAT(server.printed(1).content, HasSubstr("DESTINATION_PHONE \"1\""));
}

TEST_F(ConfiguredJourney, AKeptJobGoesToANamedDestinationThatTakesItsForm)
{
    write(forAll, "[destination A]\nfile=" + path("a.job") + "\n[destination B]\nfile=" + path("b.job") +
                      "\npdl=pjl\n");
    const auto device = path("first.job");
    ASSERT_EQ(
        driver({"fax", letter, "--to", "Ann=1", "--output", device, "--outbox", "--send-at", "04:05"}).status,
        0);
    ASSERT_EQ(driver({"outbox", "send", "1"}).status, 0);
    EXPECT_EQ(driver({"outbox", "resend", "1", "--destination", "A"}).status, 0);
    EXPECT_EQ(content("a.job"), content("first.job"));
    expectFailure(driver({"outbox", "resend", "1", "--destination", "B"}), 1,
                  "is not in the form that the destination \"B\" takes");
    EXPECT_EQ(driver({"outbox", "resend", "1", "--to", "Bob=2", "--destination", "B"}).status, 0);
    EXPECT_THAT(content("b.job"), AllOf(HasSubstr("@PJL ENTER"), HasSubstr("DESTINATION_PHONE \"2\"")));
    expectFailure(driver({"outbox", "resend", "1", "--destination", "C"}), 2, "possible are A, B");
}

TEST_F(ConfiguredJourney, ABrokenFileOfTheAdministratorsIsNamedWithItsLine)
{
    write(forAll, "[job]\nprefix=0\nresolution=best\n");
    const auto result = driver({"attributes", "--to", "Ann=1"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(
        result.errors,
        "quelm-driver: the configuration file \"" + forAll +
            "\" has \"best\" at [job] resolution (line 3), where standard, fine or superfine is expected\n");
    EXPECT_EQ(driver({"attributes", "--to", "Ann=1", "--config", write(path("own.conf"), "")}).status, 0)
        << "a named file stands alone";
}

TEST_F(ConfiguredJourney, ShowingItNamesTheFileAndLineOfEachValueAndNoSecret)
{
    write(forAll, "[job]\n\nprefix=0\n[destination Office]\nqueue=fax@print.example\n");
    write(forOne, "[device]\ncommunity=sesame\n[job]\nresolution=fine\n");
    fs::permissions(forOne, fs::perms(0600));
    const auto shown = driver({"config", "show"});
    EXPECT_EQ(shown.status, 0) << shown.errors;
    EXPECT_THAT(
        shown.output,
        AllOf(
            testing::ContainsRegex(forOne + " +read\n"), testing::ContainsRegex(forAll + " +read\n"),
            testing::ContainsRegex("\n\\[job\\] prefix +0 +" + forAll + ":3\n"),
            testing::ContainsRegex("\n\\[job\\] resolution +fine +" + forOne + ":4\n"),
            testing::ContainsRegex("\n\\[job\\] pdl +dsc +default\n"),
            testing::ContainsRegex("\n\\[destination Office\\] queue +fax@print.example +" + forAll + ":5\n"),
            testing::ContainsRegex("\n\\[device\\] community +[*]{5} +" + forOne + ":2\n"),
            Not(HasSubstr("sesame"))));
    const auto answer = driver({"config", "show", "--json"});
    EXPECT_THAT(answer.output, Not(HasSubstr("sesame")));
    const auto json = nlohmann::json::parse(answer.output);
    EXPECT_EQ(json["files"][0], nlohmann::json({{"file", forOne}, {"read", true}}));
    const auto holds = [&json](const nlohmann::json& value) {
        return std::ranges::find(json["values"], value) != json["values"].end();
    };
    EXPECT_TRUE(holds({{"group", "job"}, {"key", "prefix"}, {"value", "0"}, {"file", forAll}, {"line", 3}}));
    EXPECT_TRUE(holds(
        {{"group", "sender"}, {"key", "name"}, {"value", nullptr}, {"file", nullptr}, {"line", nullptr}}));
}

TEST_F(ConfiguredJourney, CheckingItSaysAllThatIsWrong)
{
    EXPECT_THAT(driver({"config", "check"}).output, HasSubstr("there is no configuration file"));
    write(forAll, "[job]\nprefix=0\n");
    EXPECT_EQ(driver({"config", "check"}).output, "1 configuration file, nothing is wrong\n");
    write(forAll, "[job]\nprefix=01234\ndestination=Lab\n");
    write(forOne, "[job]\nresolution=best\n");
    const auto result = driver({"config", "check"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(std::ranges::count(result.errors, '\n'), 3) << result.errors;
    EXPECT_THAT(result.errors,
                AllOf(HasSubstr("[job] prefix (line 2)"), HasSubstr("[job] destination (line 3)"),
                      HasSubstr("[job] resolution (line 2)")));
    const auto json = driver({"config", "check", "--json"});
    EXPECT_EQ(json.status, 1);
    EXPECT_EQ(nlohmann::json::parse(json.output)["problems"].size(), 3U);
    expectFailure(driver({"config", "check", forOne}), 1, "[job] resolution (line 2)");
    expectFailure(driver({"config", "check", path("none")}), 1, "cannot be read");
    expectFailure(driver({"config"}), 2, "config needs one of show|check");
}

} // namespace
} // namespace journeys
