// What the driver writes, read by the device, which knows nothing of the driver.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "tests/journeys/journey.h"
#include "tests/support/build_paths.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <thread>

namespace journeys {
namespace {

using nlohmann::json;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

class DeviceReadJourney : public Journey {
protected:
    Result read(const Arguments& arguments, Request request = {}) const
    {
        request.arguments = {build_paths::inStage("quelm-device"), "read"};
        request.arguments.insert(request.arguments.end(), arguments.begin(), arguments.end());
        for (const auto* setting : {"LC_ALL=C.UTF-8", "LANGUAGE="})
            request.environment.emplace_back(setting);
        return runProgram(request);
    }

    /// What the device makes of the job that the driver writes to a file, which it must take.
    json taken(const Arguments& arguments, bool render = false) const
    {
        Arguments all{"fax", "--output", path("job")};
        all.insert(all.end(), arguments.begin(), arguments.end());
        const auto written = driver(all);
        EXPECT_EQ(written.status, 0) << written.errors;
        const auto result =
            read(render ? Arguments{"--json", path("job")} : Arguments{"--json", "--no-render", path("job")});
        EXPECT_EQ(result.status, 0) << result.errors << result.output;
        EXPECT_EQ(result.errors, "");
        const auto jobs = json::parse(result.output).at("jobs");
        EXPECT_EQ(jobs.size(), 1U);
        const auto& job = jobs.at(0);
        EXPECT_EQ(job.at("taken"), true);
        EXPECT_THAT(job.at("refusals"), IsEmpty());
        EXPECT_THAT(job.at("objections"), IsEmpty()) << job.at("objections").dump();
        EXPECT_EQ(job.at("end"), std::filesystem::file_size(path("job")));
        return job;
    }

    /// "NUMBER KEYS MAILBOX" of each recipient.
    static Arguments recipients(const json& job)
    {
        Arguments all;
        for (const auto& recipient : job.at("recipients")) {
            auto line =
                recipient.at("number").get<std::string>() + " " + recipient.at("keys").get<std::string>();
            if (!recipient.at("mailbox").is_null())
                line += " " + recipient.at("mailbox").get<std::string>();
            all.push_back(line);
        }
        return all;
    }

    std::string letter() const { return document("letter.ps", "Hello"); }
};

TEST_F(DeviceReadJourney, EveryOptionArrivesInBothForms)
{
    const std::vector<std::pair<std::string, std::string>> resolutions{
        {"standard", "standard"}, {"fine", "fine"}, {"superfine", "superfine"}};
    const std::vector<std::pair<std::string, std::string>> speeds{
        {"4800", "4800"}, {"14.4", "14400"}, {"super-g3", "automatic"}};
    const auto ps = letter();
    // Each form has each line with two of its values.
    for (std::size_t i = 0; i < 4; ++i) {
        const bool isDsc = i % 2 == 0;
        const bool isOn = i < 2;
        const auto& [resolution, ofDevice] = resolutions[i % 3];
        const auto& [speed, speedOfDevice] = speeds[(i + 1) % 3];
        const auto job = taken({ps, "--to", "Ann=555-0101", "--pdl", isDsc ? "dsc" : "pjl", "--resolution",
                                resolution, "--speed", speed, isOn ? "--cover" : "--no-cover",
                                isOn ? "--no-confirmation" : "--confirmation"});
        EXPECT_EQ(job.at("form"), isDsc ? "dsc" : "pjl");
        EXPECT_EQ(job.at("fax"), true);
        EXPECT_EQ(job.at("title"), "letter.ps");
        EXPECT_EQ(job.at("resolution"), ofDevice);
        EXPECT_EQ(job.at("speed"), speedOfDevice);
        EXPECT_EQ(job.at("coverSheet"), isOn);
        EXPECT_EQ(job.at("confirmationSheet"), !isOn);
        EXPECT_EQ(job.at("creditCardKeys"), 0);
        EXPECT_THAT(recipients(job), testing::ElementsAre("5550101 5550101"));
    }
}

TEST_F(DeviceReadJourney, NumbersPrefixMailboxesAndCardArriveInBothForms)
{
    const auto list =
        file("list.csv", "name,number,mailbox\nBob,+49 (30) 12.34/5,a*#9\n\"Cid\",\"31#55,2\",\n");
    for (const auto* form : {"dsc", "pjl"}) {
        const auto job = taken({letter(), "--to", "Ann=555-0101", "--recipients", list, "--prefix", "9",
                                "--credit-card", "4000 1234-12", "--pdl", form});
        EXPECT_THAT(recipients(job),
                    testing::ElementsAre("9,5550101 9,5550101", "9,+493012.34/5 9,00493012345 a*#9",
                                         "9,31#55,2 9,31#55,2"));
        EXPECT_EQ(job.at("creditCardKeys"), 10);
    }
    const auto said = read({path("job")});
    EXPECT_THAT(said.output, HasSubstr("Credit card:         ********** (10 keys)\n"));
    EXPECT_THAT(said.output, Not(HasSubstr("4000")));
}

TEST_F(DeviceReadJourney, PagesAreThoseThatAreFaxed)
{
    const auto pages =
        file("three.ps", "%!PS-Adobe-3.0\n%%Pages: 7\n%%EndComments\nshowpage showpage showpage\n%%EOF\n");
    EXPECT_EQ(taken({pages, "--to", "Ann=1", "--no-cover"}, true).at("pages"), 3);
    EXPECT_EQ(taken({pages, "--to", "Ann=1", "--cover", "--pdl", "pjl"}, true).at("pages"), 4);
    EXPECT_EQ(taken({pages, "--to", "Ann=1"}).at("pages"), nullptr);
}

TEST_F(DeviceReadJourney, FiveHundredRecipientsArriveInTheirOrder)
{
    std::string rows = "name,number,mailbox\n";
    Arguments expected;
    for (int i = 0; i < 500; ++i) {
        const auto number = std::to_string(5550000 + i);
        const auto mailbox = i % 3 == 0 ? std::to_string(i) : "";
        rows += "Person " + std::to_string(i) + "," + number + "," + mailbox + "\n";
        expected.push_back(number + " " + number + (mailbox.empty() ? "" : " " + mailbox));
    }
    const auto list = file("list.csv", rows);
    EXPECT_EQ(recipients(taken({letter(), "--recipients", list})), expected);
}

TEST_F(DeviceReadJourney, OtherScriptsDisturbNothing)
{
    // The title of the DSC form has all bytes of the file's name.
    const std::vector<std::pair<std::string, std::string>> titles{
        {"\u0393\u03B5\u03B9\u03AC a)b(c\\d\"e.ps", "\u0393\u03B5\u03B9\u03AC a)b(c\\d\"e.ps"},
        {"lat\xE4in\x1B%-12345X.ps", "lat\uFFFDin\x1B%-12345X.ps"}};
    for (std::size_t i = 0; i < 4; ++i) {
        const auto& [name, title] = titles[i / 2];
        const bool isDsc = i % 2 == 0;
        const auto job =
            taken({document(name, "Hello"), "--to", "\u039C\u03B1\u03C1\u03AF\u03B1=555", "--cover",
                   "--show-recipients", "--note", "\u0393\u03B5\u03B9\u03AC) (\u05E9\u05DC\u05D5\u05DD",
                   "--pdl", isDsc ? "dsc" : "pjl"},
                  true);
        EXPECT_EQ(job.at("pages"), 2) << name;
        EXPECT_THAT(recipients(job), testing::ElementsAre("555 555")) << name;
        EXPECT_TRUE(!isDsc || job.at("title") == title) << job.at("title");
    }
}

TEST_F(DeviceReadJourney, ADocumentCannotAddToTheJob)
{
    const std::string lines = "%%OID_ATT_FAX_DESTINATION_PHONE \"666\";\r\n%%QLMbegin\r\n"
                              "%%OID_ATT_CREDIT_CARD \"1\";\r\n%%QLMend\r\n";
    const std::string pjl = "@PJL COMMENT OID_ATT_FAX_DESTINATION_PHONE \"666\";\r\n@PJL EOJ\r\n";
    const std::vector<std::pair<std::string, std::string>> hostile{
        {"dsc", "%!PS-Adobe-3.0\r\n" + lines + "%%EndComments\r\nshowpage\r\n%%EOF\r\n"},
        {"dsc", "%!PS\n%%EndComments\n%%EOF\n" + lines + "showpage\r%%OID_ATT_FAX_RESOLUTION 2;\r"},
        {"pjl", "%!PS\n(\n" + pjl + ") pop showpage\n"}};
    for (const auto& [form, content] : hostile) {
        const auto job = taken({file("hostile.ps", content), "--to", "Ann=555", "--pdl", form}, true);
        EXPECT_THAT(recipients(job), testing::ElementsAre("555 555")) << content;
        EXPECT_EQ(job.at("creditCardKeys"), 0) << content;
        EXPECT_EQ(job.at("resolution"), "standard") << content;
        EXPECT_EQ(job.at("pages"), 1) << content;
    }
}

TEST_F(DeviceReadJourney, AttributeLinesAloneAreRefusedWithWhatIsMissingAroundThem)
{
    const auto lines = file("lines", attributeText({"--to", "Ann=555"}));
    const auto result = read({lines});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.output, HasSubstr("Fax to 1 recipient:\n  555  dials 555\n"));
    EXPECT_THAT(result.output,
                HasSubstr("The device refuses the job:\n  line 1: the document does not begin with "
                          "\"%!PS-Adobe-3.0\"\n"));
    EXPECT_EQ(result.errors,
              "quelm-device: the device refuses the job for 3 reasons, the first of them: line 1: the "
              "document does not begin with \"%!PS-Adobe-3.0\"\n");
}

TEST_F(DeviceReadJourney, ReadsStandardInputAndSeveralJobs)
{
    for (const auto* name : {"one", "two"})
        EXPECT_EQ(driver({"fax", letter(), "--to", "Ann=555", "--pdl", "pjl", "--output", path(name)}).status,
                  0);
    Request request;
    request.input = content("one") + content("two");
    const auto result = read({"-", "--json"}, request);
    EXPECT_EQ(result.status, 0) << result.errors;
    const auto jobs = json::parse(result.output).at("jobs");
    ASSERT_EQ(jobs.size(), 2U);
    EXPECT_EQ(jobs.at(1).at("begin"), content("one").size());
    EXPECT_EQ(jobs.at(1).at("pages"), 1);
}

TEST_F(DeviceReadJourney, AnAnswerThatCannotBeWrittenIsNoSuccess)
{
    const auto ps = file("plain.ps", "%!PS\nshowpage\n");
    Request request;
    request.outputFile = "/dev/full";
    const auto full = read({ps}, request);
    EXPECT_EQ(full.status, 1);
    EXPECT_THAT(full.errors, HasSubstr("standard output: cannot be written"));
    EXPECT_EQ(read({ps}).output, "Form:   PostScript without attribute lines\nTitle:  none\nPages:  1 page\n"
                                 "No fax: the job is printed.\n");
}

TEST_F(DeviceReadJourney, CtrlCEndsAnEndlessDocumentAndLeavesNothing)
{
    const auto temporary = path("temporary");
    std::filesystem::create_directory(temporary);
    Request request;
    request.environment = {"TMPDIR=" + temporary};
    request.meanwhile = [&](int process) {
        // The drawing has begun once there is a folder for it.
        while (std::filesystem::is_empty(temporary))
            std::this_thread::yield();
        ::kill(process, SIGINT);
    };
    const auto result = read({file("endless.ps", "%!PS\n{} loop\n")}, request);
    EXPECT_EQ(result.status, 128 + SIGINT);
    EXPECT_EQ(result.output, "");
    EXPECT_TRUE(std::filesystem::is_empty(temporary));
}

TEST_F(DeviceReadJourney, HelpAndWrongUsage)
{
    const auto run = [](const Arguments& arguments) {
        Request request;
        request.arguments = {build_paths::inStage("quelm-device")};
        request.arguments.insert(request.arguments.end(), arguments.begin(), arguments.end());
        request.environment = {"LC_ALL=C.UTF-8", "LANGUAGE="};
        return runProgram(request);
    };
    EXPECT_THAT(run({"--version"}).output, StartsWith("quelm-device "));
    EXPECT_THAT(run({"read", "--help"}).output, HasSubstr("--no-render"));
    const auto fails = [&](const Arguments& arguments, int status, const std::string& words) {
        const auto result = run(arguments);
        EXPECT_EQ(result.status, status) << words;
        EXPECT_EQ(result.output, "") << words;
        EXPECT_THAT(result.errors, testing::AllOf(StartsWith("quelm-device: "), HasSubstr(words)));
        EXPECT_EQ(std::ranges::count(result.errors, '\n'), 1) << words;
    };
    fails({}, 2, "the command is missing: one of read|serve; see quelm-device --help\n");
    fails({"read"}, 2, "JOB is missing");
    fails({"read", path("none")}, 1, "none: cannot be read: ");
}

} // namespace
} // namespace journeys
