// What the command line's options become.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/cli/command_line.h"

#include "base/command_line/command_view.h"
#include "tests/support/failure_line.h"

#include <CLI/CLI.hpp>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

namespace quelm {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

CommandLine parsed(const std::vector<const char*>& arguments)
{
    std::vector<const char*> argv{"quelm-driver"};
    argv.insert(argv.end(), arguments.begin(), arguments.end());
    return parseCommandLine(static_cast<int>(argv.size()), argv.data());
}

std::string refusal(const std::vector<const char*>& arguments)
{
    return test::failureLine<UsageError>([&] { parsed(arguments); });
}

TEST(CommandLine, KnowsItsCommands)
{
    EXPECT_EQ(parsed({}).command, Command::none);
    EXPECT_EQ(parsed({"attributes"}).command, Command::attributes);
    EXPECT_EQ(parsed({"device", "info"}).command, Command::deviceInfo);
    const auto fax = parsed({"fax", "letter.ps"});
    EXPECT_EQ(fax.command, Command::fax);
    EXPECT_EQ(fax.document, "letter.ps");
    const auto script = parsed({"script", "-"});
    EXPECT_EQ(script.command, Command::script);
    EXPECT_EQ(script.script, "-");
}

TEST(CommandLine, AFaxCanWaitGoNowOrBeSummedUp)
{
    EXPECT_TRUE(parsed({"fax", "a.ps", "--send-now"}).job.sendNow);
    EXPECT_TRUE(parsed({"fax", "a.ps", "--outbox"}).job.toOutbox);
    const auto dry = parsed({"fax", "a.ps", "--dry-run", "--json"});
    EXPECT_TRUE(dry.job.dryRun);
    EXPECT_TRUE(dry.job.asJson);
    EXPECT_THAT(refusal({"fax", "a.ps", "--send-now", "--send-at", "1:00"}), HasSubstr("stands beside"));
    EXPECT_THAT(refusal({"fax", "a.ps", "--dry-run", "--cover-preview", "a.png"}),
                HasSubstr("stands beside"));
    EXPECT_THAT(refusal({"attributes", "--outbox"}), HasSubstr("--outbox"));
}

TEST(CommandLine, TakesADocumentNamedLikeACommand)
{
    EXPECT_EQ(parsed({"fax", "script"}).document, "script");
}

TEST(CommandLine, TakesTheDriversOptionsBeforeAndBehindTheCommand)
{
    for (const auto& line : {parsed({"--home", "/h", "--user", "ann", "--component", "c.so", "--config",
                                     "q.conf", "--now", "2024-02-29T12:30", "attributes"}),
                             parsed({"attributes", "--home", "/h", "--user=ann", "--component", "c.so",
                                     "--config", "q.conf", "--now", "2024-02-29T12:30"})}) {
        EXPECT_EQ(line.driver.home, "/h");
        EXPECT_EQ(line.driver.user, "ann");
        EXPECT_EQ(line.driver.component, "c.so");
        EXPECT_EQ(line.config, "q.conf");
        EXPECT_EQ(line.driver.now, "2024-02-29T12:30");
    }
}

TEST(CommandLine, LeavesOptionsThatWereNotGivenEmpty)
{
    const auto job = parsed({"attributes"}).job;
    EXPECT_TRUE(job.to.empty());
    EXPECT_FALSE(job.recipients || job.cover || job.note || job.showRecipients || job.customText ||
                 job.showSender);
    EXPECT_FALSE(job.senderName || job.senderNumber || job.senderOrganization || job.senderPhone ||
                 job.senderEmail);
    EXPECT_FALSE(job.confirmation || job.resolution || job.speed || job.sendAt || job.prefix ||
                 job.creditCard);
    EXPECT_FALSE(job.duplicates || job.pdl || job.output);
    EXPECT_THAT(job.directory, IsEmpty());
}

TEST(CommandLine, CollectsRecipientsWithoutSwallowingTheDocument)
{
    const auto line = parsed({"fax", "--to", "Ann=1", "letter.ps", "--to", "[Bob,Cid]=2"});
    EXPECT_THAT(line.job.to, ElementsAre("Ann=1", "[Bob,Cid]=2"));
    EXPECT_EQ(line.document, "letter.ps");
}

TEST(CommandLine, MapsResolutionsToTheDialogsOrder)
{
    EXPECT_EQ(parsed({"attributes", "--resolution", "standard"}).job.resolution, 0);
    EXPECT_EQ(parsed({"attributes", "--resolution", "superfine"}).job.resolution, 1);
    EXPECT_EQ(parsed({"attributes", "--resolution", "fine"}).job.resolution, 2);
    EXPECT_THAT(refusal({"attributes", "--resolution", "1"}),
                HasSubstr("\"1\" is none of standard|fine|superfine"));
}

TEST(CommandLine, MapsSpeedsToTheDialogsOrder)
{
    EXPECT_EQ(parsed({"attributes", "--speed", "4800"}).job.speed, 0);
    EXPECT_EQ(parsed({"attributes", "--speed", "14.4"}).job.speed, 1);
    EXPECT_EQ(parsed({"attributes", "--speed", "super-g3"}).job.speed, 2);
    EXPECT_THAT(refusal({"attributes", "--speed", "fast"}), HasSubstr("--speed"));
}

TEST(CommandLine, ReadsTimesOfDay)
{
    const std::tuple<const char*, int, int> times[] = {
        {"00:05", 0, 5}, {"0:05", 0, 5}, {"9:30", 9, 30}, {"12:30", 12, 30}, {"23:59", 23, 59}};
    for (const auto& [text, hour, minute] : times) {
        const auto time = parsed({"attributes", "--send-at", text}).job.sendAt;
        ASSERT_TRUE(time) << text;
        EXPECT_EQ(time->hour, hour) << text;
        EXPECT_EQ(time->minute, minute) << text;
    }
}

TEST(CommandLine, RefusesWhatIsNoTimeOfDay)
{
    for (const auto* text :
         {"24:00", "12:60", "12", "12:5", "12:345", ":30", "123:30", "-1:30", "1a:30", "+1:30", "", "12:"})
        EXPECT_THAT(refusal({"attributes", "--send-at", text}), HasSubstr("is no time of day")) << text;
}

TEST(CommandLine, SwitchesHaveTheirOpposites)
{
    const auto on =
        parsed({"attributes", "--cover", "--show-recipients", "--show-sender", "--confirmation"}).job;
    EXPECT_EQ(on.cover, true);
    EXPECT_EQ(on.showRecipients, true);
    EXPECT_EQ(on.showSender, true);
    EXPECT_EQ(on.confirmation, true);
    const auto off =
        parsed({"attributes", "--no-cover", "--hide-recipients", "--hide-sender", "--no-confirmation"}).job;
    EXPECT_EQ(off.cover, false);
    EXPECT_EQ(off.showRecipients, false);
    EXPECT_EQ(off.showSender, false);
    EXPECT_EQ(off.confirmation, false);
    EXPECT_THAT(refusal({"attributes", "--cover", "--no-cover"}), HasSubstr("--cover"));
}

TEST(CommandLine, KeepsTextsAsTheyStand)
{
    const auto job =
        parsed({"attributes", "--note", "Call me (soon)", "--custom-text", "-x-", "--sender-name", "A",
                "--sender-number", "1", "--sender-organization", "O", "--sender-phone", "2", "--sender-email",
                "e@x", "--recipients", "l.csv", "--output", "-"})
            .job;
    EXPECT_EQ(job.note, "Call me (soon)");
    EXPECT_EQ(job.customText, "-x-");
    EXPECT_EQ(job.senderName, "A");
    EXPECT_EQ(job.senderNumber, "1");
    EXPECT_EQ(job.senderOrganization, "O");
    EXPECT_EQ(job.senderPhone, "2");
    EXPECT_EQ(job.senderEmail, "e@x");
    EXPECT_EQ(job.recipients, "l.csv");
    EXPECT_EQ(job.output, "-");
}

TEST(CommandLine, AnEmptyTextIsATextInBothSpellings)
{
    for (const auto& line :
         {parsed({"attributes", "--note=", "--cover"}), parsed({"attributes", "--note", "", "--cover"})}) {
        EXPECT_EQ(line.job.note, "");
        EXPECT_EQ(line.job.cover, true);
    }
    EXPECT_EQ(parsed({"fax", "--", "--note="}).document, "--note=");
}

TEST(CommandLine, EveryCommandAnswersInJsonAndQuietlyWhereverThatIsSaid)
{
    for (const std::vector<const char*>& command : {std::vector<const char*>{"fax", "a.ps"},
                                                    {"attributes"},
                                                    {"script", "-"},
                                                    {"phonebook", "list"},
                                                    {"device", "info"},
                                                    {"directory", "search", "S"},
                                                    {"outbox", "list"}}) {
        EXPECT_FALSE(parsed(command).json || parsed(command).quiet);
        auto behind = command;
        behind.insert(behind.end(), {"--json", "--quiet", "--json"});
        auto ahead = command;
        ahead.insert(ahead.begin(), {"--quiet", "--json", "--quiet"});
        for (const auto& line : {parsed(behind), parsed(ahead)}) {
            EXPECT_TRUE(line.json);
            EXPECT_TRUE(line.quiet);
            EXPECT_TRUE(line.job.asJson);
            EXPECT_TRUE(line.outbox.asJson);
            EXPECT_TRUE(line.outbox.quiet);
        }
    }
}

TEST(CommandLine, TheDesktopAnswersInWindowsAlone)
{
    EXPECT_EQ(refusal({"--json"}), "--json needs a command; see quelm-driver --help");
    EXPECT_EQ(refusal({"--quiet", "letter.ps"}), "--quiet needs a command; see quelm-driver --help");
}

TEST(CommandLine, TheDriversOptionGivenLastCounts)
{
    EXPECT_EQ(parsed({"--home", "/a", "attributes", "--home", "/b"}).driver.home, "/b");
}

TEST(CommandLine, EveryCommandTakesADevice)
{
    for (const auto& line :
         {parsed({"attributes", "--device-snmp", "fax:161"}),
          parsed({"--device-snmp=fax:161", "script", "-"}),
          parsed({"fax", "a.ps", "--device-snmp", "fax:161"}),
          parsed({"device", "info", "--device-snmp", "fax:161"}),
          parsed({"device", "--device-snmp", "fax:161", "info"}), parsed({"--device-snmp", "fax:161"})})
        EXPECT_EQ(line.driver.device.address, "fax:161");
    EXPECT_EQ(parsed({"attributes"}).driver.device.address, "");
}

TEST(CommandLine, ADeviceIsAskedForSomething)
{
    EXPECT_THAT(refusal({"device"}), HasSubstr("see quelm-driver"));
    EXPECT_THAT(refusal({"device", "reboot"}), HasSubstr("see quelm-driver"));
    EXPECT_THAT(parsed({"device", "info", "--help"}).information, HasSubstr("info"));
}

TEST(CommandLine, TellsNoNumberOfACreditCard)
{
    for (const char* number : {"4111x", "", "4111\n"})
        EXPECT_EQ(refusal({"attributes", "--credit-card", number}),
                  "--credit-card: this is no number to dial; see quelm-driver attributes --help")
            << number;
    EXPECT_THAT(refusal({"attributes", "--credit-card", "4111", "--credit-card", "4222"}),
                Not(HasSubstr("4")));
}

TEST(CommandLine, ChargesOneCardAtMost)
{
    const auto job = parsed({"attributes", "--credit-card-file", "card"}).job;
    EXPECT_EQ(job.creditCardFile, "card");
    EXPECT_FALSE(job.creditCard || job.keptCreditCard);
    EXPECT_TRUE(parsed({"fax", "--kept-credit-card", "a.ps"}).job.keptCreditCard);
    const std::vector<std::vector<const char*>> options{
        {"--credit-card", "4111"}, {"--credit-card-file", "card"}, {"--kept-credit-card"}};
    for (const auto& first : options) {
        for (const auto& second : options) {
            if (first == second)
                continue;
            std::vector<const char*> all{"attributes"};
            all.insert(all.end(), first.begin(), first.end());
            all.insert(all.end(), second.begin(), second.end());
            EXPECT_THAT(refusal(all), testing::AllOf(HasSubstr("stands beside"), Not(HasSubstr("4111"))));
        }
    }
}

TEST(CommandLine, TakesOnlyWhatCanBeDialled)
{
    const auto job = parsed({"attributes", "--prefix", "9*#,", "--credit-card", "1234 5678-9"}).job;
    EXPECT_EQ(job.prefix, "9*#,");
    EXPECT_EQ(job.creditCard, "1234 5678-9");
    for (const auto* text : {"9x", "", "\"", " 9"})
        EXPECT_THAT(refusal({"attributes", "--prefix", text}), HasSubstr("is no number to dial")) << text;
    EXPECT_THAT(refusal({"attributes", "--credit-card", "12\";"}), HasSubstr("is no number to dial"));
    EXPECT_EQ(parsed({"attributes", "--credit-card", "4111,#*1"}).job.creditCard, "4111,#*1");
}

TEST(CommandLine, KnowsTheFormsOfAJobAndTheDuplicatePolicies)
{
    EXPECT_EQ(parsed({"attributes", "--pdl", "dsc"}).job.pdl, Pdl::dsc);
    EXPECT_EQ(parsed({"attributes", "--pdl", "pjl"}).job.pdl, Pdl::pjl);
    EXPECT_EQ(parsed({"attributes", "--duplicates", "ask"}).job.duplicates, Duplicates::ask);
    EXPECT_EQ(parsed({"attributes", "--duplicates", "add"}).job.duplicates, Duplicates::add);
    EXPECT_EQ(parsed({"attributes", "--duplicates", "skip"}).job.duplicates, Duplicates::skip);
    EXPECT_THAT(refusal({"attributes", "--pdl", "pcl"}), HasSubstr("\"pcl\" is none of dsc|pjl"));
}

TEST(CommandLine, KnowsThePlacesThatTakeAJob)
{
    const auto job = parsed({"fax", "a", "--device", "[::1]:9101", "--queue", "fax"}).job;
    EXPECT_EQ(job.device, (NetworkAddress{"::1", 9101}));
    EXPECT_EQ(job.queue, "fax");
    EXPECT_FALSE(parsed({"fax", "a"}).job.device);
    EXPECT_THAT(refusal({"fax", "a", "--device", "fax:port"}), HasSubstr("\"fax:port\" is no address"));
}

TEST(CommandLine, KnowsTheDirectory)
{
    EXPECT_THAT(parsed({"attributes", "--directory", "Smi", "--directory", "Jo"}).job.directory,
                ElementsAre("Smi", "Jo"));
    EXPECT_THAT(refusal({"attributes", "--directory", ""}), HasSubstr("--directory: is empty"));
    const auto line = parsed({"directory", "search", "Smith, A"});
    EXPECT_EQ(line.command, Command::directorySearch);
    EXPECT_EQ(line.directoryPrefix, "Smith, A");
    EXPECT_THAT(refusal({"directory"}), HasSubstr("search"));
    EXPECT_THAT(refusal({"directory", "search"}), HasSubstr("PREFIX"));
}

TEST(CommandLine, RefusesWrongUsageInOneLine)
{
    const std::vector<std::vector<const char*>> wrong = {
        {"send", "a"},
        {"fax"},
        {"fax", "a", "b"},
        {"phonebook", "list", "a"},
        {"script"},
        {"attributes", "a"},
        {"attributes", "--bogus"},
        {"--now"},
        {"attributes", "--to"},
        {"attributes", "--output", "a", "--output", "b"},
        {"--home", "", "attributes"},
    };
    for (const auto& arguments : wrong) {
        const auto line = refusal(arguments);
        EXPECT_THAT(line, HasSubstr("see quelm-driver"));
        EXPECT_EQ(line.find('\n'), std::string::npos) << line;
    }
}

TEST(CommandLine, SaysWhatIsWrong)
{
    const auto reason = [](const std::vector<const char*>& arguments) {
        const auto line = refusal(arguments);
        return line.substr(0, line.find(';'));
    };
    EXPECT_EQ(reason({"fax"}), "DOCUMENT is missing");
    EXPECT_EQ(reason({"phonebook", "add", "Ann"}), "NUMBER is missing");
    EXPECT_EQ(reason({"device"}), "device needs one of info");
    EXPECT_THAT(reason({"phonebook"}), StartsWith("phonebook needs one of list|show|"));
    EXPECT_EQ(reason({"attributes", "--to"}), "--to needs a value: [NAME=]NUMBER");
    EXPECT_EQ(reason({"phonebook", "list", "--user"}), "--user needs a value: NAME");
    EXPECT_EQ(reason({"attributes", "--bogus"}), "there is no option --bogus here");
    EXPECT_EQ(reason({"phonebook", "list", "a", "b"}), "\"b\" is one word too many");
    EXPECT_EQ(reason({"fax", "a", "b"}), "\"b\" is one word too many");
    EXPECT_EQ(reason({"phonebook", "list", "--file", "a", "--shared", "b"}), "--file stands beside --shared");
    EXPECT_EQ(reason({"attributes", "--cover", "--no-cover"}), "--cover: stands beside --no-cover");
    EXPECT_EQ(reason({"--home", "", "attributes"}), "--home: is empty");
}

TEST(CommandLine, ALoneWordIsADocumentForTheDesktop)
{
    const auto line = parsed({"--user", "ann", "letter.ps"});
    EXPECT_EQ(line.command, Command::none);
    EXPECT_EQ(line.document, "letter.ps");
    EXPECT_EQ(line.driver.user, "ann");
    EXPECT_EQ(parsed({"--", "fax"}).document, "fax");
}

TEST(DesktopCommandLine, TakesTheDriversOptionsAndADocument)
{
    const std::vector<const char*> arguments = {"quelm-desktop", "--home=/opt/quelm", "fax", "--user", "ann"};
    const auto line = parseDesktopCommandLine(static_cast<int>(arguments.size()), arguments.data());
    EXPECT_EQ(line.command, Command::none);
    EXPECT_EQ(line.document, "fax");
    EXPECT_EQ(line.driver.home, "/opt/quelm");
    EXPECT_EQ(line.driver.user, "ann");
    EXPECT_EQ(line.information, "");
}

TEST(DesktopCommandLine, NeedsNothing)
{
    const char* program = "quelm-desktop";
    EXPECT_EQ(parseDesktopCommandLine(1, &program).document, "");
}

TEST(DesktopCommandLine, RefusesMoreThanOneDocumentAndOptionsOfCommands)
{
    const std::vector<std::vector<const char*>> wrong = {{"a", "b"}, {"--to", "Ann=1"}, {"--user"}};
    for (auto arguments : wrong) {
        arguments.insert(arguments.begin(), "quelm-desktop");
        const auto line = test::failureLine<UsageError>(
            [&] { parseDesktopCommandLine(static_cast<int>(arguments.size()), arguments.data()); });
        EXPECT_THAT(line, HasSubstr("see quelm-desktop --help"));
    }
}

TEST(DesktopCommandLine, PrintsItsOwnHelpAndVersion)
{
    for (const auto* option : {"--help", "--version"}) {
        const std::vector<const char*> arguments = {"quelm-desktop", option};
        EXPECT_THAT(parseDesktopCommandLine(2, arguments.data()).information, HasSubstr("quelm-desktop"));
    }
}

TEST(CommandLine, PrintsHelpAndVersion)
{
    EXPECT_THAT(parsed({"--help"}).information, HasSubstr("attributes"));
    EXPECT_THAT(parsed({"fax", "--help"}).information, HasSubstr("--resolution"));
    EXPECT_THAT(parsed({"fax", "--help"}).information, HasSubstr("DOCUMENT"));
    EXPECT_THAT(parsed({"--version"}).information, StartsWith("quelm-driver "));
    EXPECT_THAT(parsed({"fax", "--version"}).information, StartsWith("quelm-driver "));
}

TEST(CommandLine, BothJobCommandsHaveTheSameOptionsButThoseForJobsThatGoOut)
{
    CommandLine line;
    const auto program = driverProgram(line);
    const auto optionsOf = [&program](const std::string& command) {
        std::vector<std::string> labels;
        for (const auto& option : viewOf(commandAt(*program, command)).options)
            labels.push_back(labelOf(option) + ": " + option.section + ": " + option.description);
        return labels;
    };
    auto fax = optionsOf("fax");
    const auto goingOut = std::erase_if(fax, [](const std::string& label) {
        return label.starts_with("--cover-preview FILE.png:") || label.starts_with("--outbox:") ||
               label.starts_with("--dry-run:");
    });
    EXPECT_EQ(goingOut, 3U);
    EXPECT_EQ(fax, optionsOf("attributes"));
}

TEST(CommandLine, APreviewOfTheCoverPageAloneNeedsNoDocument)
{
    const auto alone = parsed({"fax", "--cover-preview", "a.png"});
    EXPECT_EQ(alone.job.coverPreview, "a.png");
    EXPECT_FALSE(alone.hasDocument);
    EXPECT_TRUE(parsed({"fax", "--cover-preview", "-", "letter.ps"}).hasDocument);
    EXPECT_THAT(refusal({"fax", "--cover-preview=a", "", "--to", "A=1"}), StartsWith("DOCUMENT: is empty"));
    EXPECT_FALSE(parsed({"fax", "letter.ps", "--output", "job"}).job.coverPreview);
    EXPECT_TRUE(parsed({"fax", "letter.ps", "--output", "job"}).hasDocument);
}

TEST(CommandLine, APreviewBesideADestinationNeedsTheDocumentAsEver)
{
    const auto missing = refusal({"fax", "--output", "job"});
    EXPECT_EQ(missing, "DOCUMENT is missing; see quelm-driver fax --help");
    EXPECT_EQ(refusal({"fax", "--cover-preview", "a", "--output", "job"}), missing);
    EXPECT_EQ(refusal({"fax", "--output", "job", "--cover-preview", "a"}), missing);
    EXPECT_EQ(refusal({"fax", "--cover-preview", "a", "--device", "fax.example"}), missing);
    EXPECT_EQ(refusal({"fax", "--cover-preview", "a", "--queue", "fax"}), missing);
}

TEST(CommandLine, APreviewNeedsAFileAndIsForFaxesAlone)
{
    EXPECT_EQ(refusal({"fax", "letter.ps", "--cover-preview="}),
              "--cover-preview: is empty; see quelm-driver fax --help");
    EXPECT_EQ(refusal({"fax", "letter.ps", "--cover-preview"}),
              "--cover-preview needs a value: FILE.png; see quelm-driver fax --help");
    EXPECT_EQ(refusal({"attributes", "--cover-preview", "a"}),
              "there is no option --cover-preview here; see quelm-driver attributes --help");
}

} // namespace
} // namespace quelm
