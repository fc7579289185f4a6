// What scripts rely on: answers as data, silence, dry runs, exit statuses, and messages for people.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "tests/journeys/journey.h"
#include "tests/servers/print_listener.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace journeys {
namespace {

using Json = nlohmann::json;
using servers::Manner;
using servers::PrintListener;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

class ScriptingJourney : public Journey {
protected:
    /// The one JSON document that a command answers.
    Json answer(const Arguments& arguments, int status = 0, const std::string& input = {}) const
    {
        auto all = arguments;
        all.emplace_back("--json");
        const auto result = driver(all, input);
        EXPECT_EQ(result.status, status) << result.errors;
        lastErrors = result.errors;
        return Json::parse(result.output);
    }

    /// The JSON objects of the lines that a command answers.
    std::vector<Json> lines(const Arguments& arguments, int status = 0, const std::string& input = {}) const
    {
        auto all = arguments;
        all.emplace_back("--json");
        const auto result = driver(all, input);
        EXPECT_EQ(result.status, status) << result.errors;
        std::vector<Json> objects;
        std::istringstream text(result.output);
        for (std::string line; std::getline(text, line);)
            objects.push_back(Json::parse(line));
        return objects;
    }

    Arguments fax(const Arguments& options) const
    {
        Arguments all{"fax", letter, "--to", "Ann=555-1234"};
        all.insert(all.end(), options.begin(), options.end());
        return all;
    }

    std::string letter = document("letter.ps", "Hello");
    mutable std::string lastErrors; ///< of the last answer
};

TEST_F(ScriptingJourney, AFaxAnswersWhatBecameOfItAndItsNumberIsWhatTheOutboxTakes)
{
    PrintListener device(Manner::takesAll);
    const Json sent = answer(fax({"--device", device.address(), "--quiet"}));
    EXPECT_EQ(lastErrors, "");
    EXPECT_EQ(sent["state"], "handed over");
    EXPECT_EQ(sent["number"], 1);
    EXPECT_EQ(sent["held"], false);
    EXPECT_EQ(sent["queueJob"], nullptr);
    EXPECT_EQ(sent["due"], nullptr);
    EXPECT_EQ(sent["destination"], Json({{"kind", "device"}, {"address", device.address()}}));
    EXPECT_EQ(sent["recipients"][0]["number"], "555-1234");
    EXPECT_EQ(sent["pages"], 1);
    EXPECT_EQ(sent["warnings"], Json::array());
    EXPECT_EQ(answer({"outbox", "show", std::to_string(sent["number"].get<int>())})["state"], "handed over");

    const Json waiting = answer(fax({"--device", device.address(), "--outbox"}));
    EXPECT_EQ(waiting["state"], "waiting");
    EXPECT_EQ(waiting["number"], 2);
    EXPECT_NE(waiting["due"], nullptr);
    EXPECT_THAT(waiting["sender"].get<std::string>(), HasSubstr("outbox run"));
    const Json cancelled = answer({"outbox", "cancel", "2"});
    ASSERT_EQ(cancelled.size(), 1U);
    EXPECT_EQ(cancelled[0]["state"], "cancelled");
    EXPECT_EQ(cancelled[0]["error"], nullptr);
}

TEST_F(ScriptingJourney, AFileAndAPreviewAreAnsweredToo)
{
    const Json file = answer(
        fax({"-o", path("job"), "--cover", "--cover-preview", path("cover.png"), "--to", "Bob=5551234"}));
    EXPECT_EQ(file["place"], path("job"));
    EXPECT_EQ(file["number"], nullptr);
    EXPECT_EQ(file["coverPicture"], path("cover.png"));
    EXPECT_EQ(file["warnings"].size(), 1U) << "a number that stands twice";
    EXPECT_TRUE(exists("job"));
    const Json preview = answer({"fax", "--to", "Ann=1", "--cover", "--cover-preview", path("other.png")});
    EXPECT_EQ(preview["state"], nullptr);
    EXPECT_EQ(preview["document"], nullptr);
    EXPECT_EQ(preview["coverPicture"], path("other.png"));
}

TEST_F(ScriptingJourney, AFailureIsAnObjectAndItsLineStaysOnStandardError)
{
    const auto expectFailureJson = [this](const Arguments& arguments, int status, const std::string& words) {
        const Json failure = answer(arguments, status);
        EXPECT_EQ(failure.size(), 2U);
        EXPECT_EQ(failure["status"], status);
        EXPECT_THAT(failure["error"].get<std::string>(), HasSubstr(words));
        EXPECT_EQ(lastErrors, "quelm-driver: " + failure["error"].get<std::string>() + "\n");
    };
    expectFailureJson({"fax", path("none.ps"), "--to", "A=1", "-o", path("job")}, 1, "none.ps");
    expectFailureJson(fax({"-o", "-"}), 2, "--output -");
    expectFailureJson({"fax", "--to", "Ann=1", "--cover", "--cover-preview", "-"}, 2, "--cover-preview -");
    expectFailureJson({"attributes", "--bogus"}, 2, "--bogus");
    expectFailureJson({"attributes"}, 1, "no recipients");
    expectFailureJson({"outbox", "show", "7"}, 1, "7");
    expectFailureJson({"phonebook", "show", "Nobody"}, 1, "Nobody");
    expectFailureJson({"phonebook", "list", "--format", "csv"}, 2, "--format csv");
    expectFailureJson({"device", "info"}, 2, "--device-snmp");
    expectFailureJson({"directory", "search", "S"}, 1, "--device-snmp");
    expectFailureJson({"script", path("none")}, 1, "none");
}

TEST_F(ScriptingJourney, AnAnswerThatCannotBeWrittenSaysThatTheJobIsDone)
{
    Request request;
    request.arguments = fax({"--output", path("job"), "--json"});
    request.outputFile = "/dev/full";
    const auto result = driver(request);
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.errors, HasSubstr("what the command was to do is done all the same"));
    EXPECT_TRUE(exists("job"));
    request.arguments = {"phonebook", "add", "Ann", "5", "--json"};
    EXPECT_THAT(driver(request).errors, HasSubstr("is done all the same"));
    EXPECT_EQ(answer({"phonebook", "list"})["entries"].size(), 1U);
}

TEST_F(ScriptingJourney, AttributesAreLines)
{
    const Json json = answer({"attributes", "--to", "555-1234", "--resolution", "fine"});
    std::string text;
    for (const auto& line : json["lines"])
        text += line.get<std::string>() + "\n";
    auto expected = attributeText({"--to", "555-1234", "--resolution", "fine"});
    std::erase(expected, '\r');
    EXPECT_EQ(text, expected);
    EXPECT_EQ(json["recipients"][0]["name"], "555-1234");
    EXPECT_EQ(json["file"], nullptr);
    EXPECT_EQ(answer({"attributes", "--to", "555-1234", "-o", path("lines")})["file"], path("lines"));
    EXPECT_EQ(content("lines"), attributeText({"--to", "555-1234"}));
}

TEST_F(ScriptingJourney, ABareNumberStandsOnTheCoverSheetAndNothingElse)
{
    ASSERT_EQ(driver({"fax", letter, "--to", "+1 (555) 123-4567", "--cover", "--show-recipients", "--output",
                      path("job")})
                  .status,
              0);
    const auto cover = pages(path("job")).at(0);
    EXPECT_THAT(cover, HasSubstr("To:Name:1555123")) << "the number as far as a name may hold it";
    EXPECT_THAT(content("job"), HasSubstr("PHONE \"+15551234567\""));
}

TEST_F(ScriptingJourney, PhonebooksAreData)
{
    EXPECT_EQ(answer({"phonebook", "add", "Ann", "555", "--dry-run"}), Json({{"action", "added"},
                                                                             {"kind", "entry"},
                                                                             {"name", "Ann"},
                                                                             {"dryRun", true},
                                                                             {"warnings", Json::array()}}));
    EXPECT_EQ(answer({"phonebook", "list"})["entries"], Json::array());
    EXPECT_EQ(answer({"phonebook", "add", "Ann", "555"})["dryRun"], false);
    EXPECT_EQ(answer({"phonebook", "add", "Ann", "556", "--replace"})["action"], "replaced");
    EXPECT_EQ(answer({"phonebook", "add-group", "Team", "Ann"})["kind"], "group");
    EXPECT_EQ(answer({"phonebook", "show", "[Team]"}),
              Json({{"kind", "group"}, {"name", "Team"}, {"members", {"Ann"}}, {"missing", Json::array()}}));
    const Json removal = answer({"phonebook", "remove", "Ann", "--dry-run"});
    EXPECT_EQ(removal["action"], "removed");
    EXPECT_EQ(removal["warnings"].size(), 1U);
    EXPECT_EQ(answer({"phonebook", "list"})["entries"][0]["number"], "556");
    EXPECT_EQ(answer({"phonebook", "list"})["groups"][0]["members"], Json({"Ann"}));
}

TEST_F(ScriptingJourney, ADryRunOfThePhonebookSaysWhatWouldBeAndChangesNothing)
{
    EXPECT_EQ(driver({"phonebook", "add", "Ann", "555", "--dry-run"}).output,
              "the entry \"Ann\" would be added\n");
    const auto book = home / "db/phonebook/user/ann.xdb";
    EXPECT_FALSE(std::filesystem::exists(book));
    expectFailure(driver({"phonebook", "add", "Ann", "555", "--dry-run", "--file", path("no/book.xdb")}), 1,
                  "book.xdb");
    ASSERT_EQ(driver({"phonebook", "add", "Ann", "555"}).status, 0);
    const auto before = driver({"phonebook", "list"}).output;
    EXPECT_EQ(driver({"phonebook", "remove", "Ann", "--dry-run"}).output,
              "the entry \"Ann\" would be removed\n");
    EXPECT_EQ(driver({"phonebook", "add", "Ann", "6", "--replace", "--dry-run"}).output,
              "the entry \"Ann\" would be replaced\n");
    EXPECT_EQ(driver({"phonebook", "add-group", "Team", "Ann", "--dry-run"}).output,
              "the group \"Team\" would be added\n");
    expectFailure(driver({"phonebook", "add", "Ann", "6", "--dry-run"}), 1, "already");
    expectFailure(driver({"phonebook", "remove", "Bob", "--dry-run"}), 1, "Bob");
    EXPECT_EQ(driver({"phonebook", "list"}).output, before);
}

TEST_F(ScriptingJourney, ADryRunOfTheOutboxSaysWhatWouldBeAndChangesNothing)
{
    PrintListener device(Manner::takesAll);
    ASSERT_EQ(driver(fax({"--device", device.address(), "--outbox"})).status, 0);
    ASSERT_EQ(
        driver(fax({"--device", device.address(), "--send-at", "00:00", "--now", "2026-01-01T12:00"})).status,
        0);
    const auto before = driver({"outbox", "list", "--json", "--now", "2026-01-01T12:00"}).output;
    const auto would = " (letter.ps) for 1 recipient would go to device " + device.address() + " now\n";
    EXPECT_EQ(driver({"outbox", "send", "1", "2", "--dry-run"}).output, "job 1" + would + "job 2" + would);
    EXPECT_EQ(driver({"outbox", "cancel", "1", "--dry-run"}).output,
              "job 1 (letter.ps) would be cancelled\n");
    EXPECT_EQ(driver({"outbox", "run", "--dry-run", "--now", "2026-01-02T00:00"}).output, "job 2" + would);
    expectFailure(driver({"outbox", "resend", "1", "--dry-run"}), 1, "it waits");
    expectFailure(driver({"outbox", "cancel", "9", "--dry-run"}), 1, "9");
    const Json both = answer({"outbox", "send", "1", "9", "--dry-run"}, 1);
    EXPECT_EQ(both[0]["error"], nullptr);
    EXPECT_EQ(both[0]["state"], "waiting");
    EXPECT_EQ(both[1].size(), 2U) << "a number and why";
    EXPECT_EQ(driver({"outbox", "list", "--json", "--now", "2026-01-01T12:00"}).output, before);
    EXPECT_EQ(device.connections(), 0);
}

TEST_F(ScriptingJourney, TheOutboxAnswersWithItsJobs)
{
    PrintListener device(Manner::takesAll);
    ASSERT_EQ(driver(fax({"--device", device.address(), "--outbox"})).status, 0);
    const auto run = lines({"outbox", "run"});
    ASSERT_EQ(run.size(), 1U);
    EXPECT_EQ(run[0]["number"], 1);
    EXPECT_EQ(run[0]["state"], "handed over");
    EXPECT_EQ(run[0]["error"], nullptr);
    EXPECT_EQ(lines({"outbox", "run"}).size(), 0U);
    const Json planned = answer({"outbox", "resend", "1", "--dry-run"});
    EXPECT_EQ(planned["number"], 1);
    const Json again = answer({"outbox", "resend", "1", "--quiet"});
    EXPECT_EQ(lastErrors, "");
    EXPECT_EQ(again["number"], 2);
    EXPECT_EQ(again["sentBefore"], 1);
    const Json anew = answer({"outbox", "resend", "1", "--to", "555-9876"});
    EXPECT_EQ(anew["number"], 3);
    EXPECT_EQ(anew["recipients"][0]["number"], "555-9876");
    EXPECT_EQ(answer({"outbox", "resend", "1", "--to", "555-9876", "--dry-run"})["recipients"].size(), 1U);
    EXPECT_EQ(answer({"outbox", "list"}).size(), 3U);
    EXPECT_EQ(answer({"outbox", "show", "3", "1"})[0]["number"], 3);
    EXPECT_THAT(driver({"outbox", "show", "3", "1"}).output, HasSubstr("\n\njob"));
    const Json failed = answer({"outbox", "cancel", "1", "2"}, 1);
    EXPECT_THAT(failed[1]["error"].get<std::string>(), HasSubstr("handed over already"));
}

TEST_F(ScriptingJourney, QuietSaysNothingButWhatFails)
{
    PrintListener device(Manner::takesAll);
    const auto expectSilence = [this](const Arguments& arguments) {
        auto all = arguments;
        all.emplace_back("--quiet");
        const auto result = driver(all);
        EXPECT_EQ(result.status, 0) << result.errors;
        EXPECT_EQ(result.output, "");
        EXPECT_EQ(result.errors, "");
    };
    // A summary, a confirmation and a warning: of a number that stands twice.
    expectSilence(fax({"--device", device.address(), "--to", "Bob=555-1234"}));
    expectSilence(fax({"--output", path("job"), "--to", "Bob=555-1234"}));
    expectSilence(fax({"--device", device.address(), "--outbox"}));
    expectSilence({"outbox", "cancel", "2"});
    expectSilence({"phonebook", "add", "Ann", "555"});
    expectSilence({"phonebook", "remove", "Ann"});
    EXPECT_THAT(driver({"outbox", "list", "--quiet"}).output, Not(IsEmpty())) << "what was asked for";
    expectFailure(driver({"outbox", "cancel", "2", "--quiet"}), 1, "it was cancelled");
    Request asked;
    asked.arguments = fax({"--quiet", "--to", "Ann=555-1234", "-o", path("other")});
    asked.inputIsTerminal = true;
    asked.errorsAreTerminal = false;
    expectFailure(driver(asked), 1, "--duplicates");
}

TEST_F(ScriptingJourney, AScriptAnswersALineForEachStep)
{
    const auto answers = lines({"script", "-"}, 1,
                               "call T40InvokeFaxDialog\nwindows\nshow \"LanFax Send Speed\"\n\n"
                               "rows \"LanFax Recipient List\"\npress \"No Such\"\nwindows\n");
    ASSERT_EQ(answers.size(), 5U);
    EXPECT_EQ(answers[0], Json({{"line", 1}, {"ok", true}}));
    EXPECT_EQ(answers[1]["windows"][0]["name"], "Lan Fax Window");
    EXPECT_EQ(answers[2]["widget"]["items"].size(), 3U);
    EXPECT_EQ(answers[3]["line"], 5);
    EXPECT_EQ(answers[4]["status"], 1);
    EXPECT_THAT(answers[4]["error"].get<std::string>(), EndsWith(":6: there is no widget \"No Such\""));
}

TEST_F(ScriptingJourney, WhatAScriptCanNameIsListed)
{
    const Json list = answer({"script", "--list"});
    EXPECT_GT(list["widgets"].size(), 100U);
    EXPECT_THAT(list["functions"].dump(), HasSubstr("\"T40InvokeFaxDialog\""));
    const auto text = driver({"script", "--list"});
    EXPECT_THAT(text.output, StartsWith("widget \"Lan Fax Window\" kind DialogWindow "));
    EXPECT_THAT(text.output, HasSubstr("\nfunction T40InvokeFaxDialog\n"));
    EXPECT_EQ(driver({"script", "--dry-run", "-"}, "windows\n\nwindows\n").output,
              "standard input: 2 steps; nothing is done\n");
    expectFailure(driver({"script", "--dry-run", "-"}, "windows\nwindow\n"), 1, ":2: ");
    expectFailure(driver(Arguments{"script", "--list", path("x")}), 2, "--list");
}

/// All names in the component's dialog definition that no text on the screen is.
std::set<std::string> widgetNames(const Json& list)
{
    std::set<std::string> names;
    for (const auto& widget : list["widgets"]) {
        const auto name = widget["name"].get<std::string>();
        if (name.find(' ') != std::string::npos && name != widget["label"] &&
            name != widget.value("text", ""))
            names.insert(name);
    }
    return names;
}

/// No message shows the name of a widget.
void expectNone(const std::set<std::string>& names, const std::string& message)
{
    EXPECT_GT(names.size(), 100U);
    for (const auto& name : names)
        EXPECT_THAT(message, Not(HasSubstr(name)));
}

TEST_F(ScriptingJourney, AWrongValueIsWrongUsageAlsoWhereTheDialogsAreAsked)
{
    const auto names = widgetNames(answer({"script", "--list"}));
    const std::string longText(300, 'x');
    const std::vector<std::pair<Arguments, std::string>> wrong{
        {{"--note", longText, "--cover"}, "--note: "},
        {{"--note", "\xff", "--cover"}, "--note: "},
        {{"--note", "x"}, "--note needs --cover"},
        {{"--sender-email", longText, "--cover", "--show-sender"}, "--sender-email: "},
        {{"--prefix", "12345"}, "--prefix: "},
        {{"--to", "A@=5"}, "--to A@=5: "},
        {{"--to", longText + "=5"}, "--to x"},
        {{"--to", "Ann=" + std::string(60, '5')}, "--to Ann="},
        {{"--shared", path("book")}, "--shared"},
    };
    for (const auto& [options, named] : wrong) {
        Arguments all = options;
        all.insert(all.end(), {"--output", path("job")});
        const auto result = driver(fax(all));
        expectFailure(result, 2, named);
        expectNone(names, result.errors);
    }
    EXPECT_FALSE(exists("job"));
}

TEST_F(ScriptingJourney, WhatAFileHoldsFailsTheJob)
{
    const auto listed = driver({"attributes", "--recipients", file("list.csv", "name,number\nA@,5\n")});
    EXPECT_EQ(listed.status, 1);
    EXPECT_THAT(listed.errors, HasSubstr("list.csv:2"));
    const auto card = file("card", std::string(40, '1'));
    std::filesystem::permissions(card, std::filesystem::perms::owner_read);
    expectFailure(driver({"attributes", "--to", "A=1", "--credit-card-file", card}), 1,
                  "--credit-card-file: ");
}

TEST_F(ScriptingJourney, NoMessageShowsTheNameOfAWidget)
{
    const auto names = widgetNames(answer({"script", "--list"}));
    for (const auto& options :
         std::vector<Arguments>{{"--kept-credit-card"},
                                {"--recipients", file("list.csv", "name,number,mailbox\nAnn,5,123456\n")},
                                {"--entry", "Nobody"}}) {
        Arguments all = options;
        all.insert(all.end(), {"--output", path("job")});
        const auto result = driver(fax(all));
        EXPECT_EQ(result.status, 1) << options[0];
        expectNone(names, result.errors);
    }
    const auto kept = home.parent_path() / "home/config/quelm/features/ann.ini";
    std::filesystem::create_directories(kept.parent_path());
    for (const char* value : {"LanFax Resolution=7", "LanFax Cover Sheet Notes=a \xff",
                              "LanFax Credit Card Info=\xff", "SendAtHr=99", "LanFax Send Time=x"}) {
        std::ofstream(kept) << "[features]\n" << value << "\n";
        const auto result = driver(fax({"--output", path("job")}));
        EXPECT_EQ(result.status, 1) << value;
        expectNone(names, result.errors);
    }
}

} // namespace
} // namespace journeys
