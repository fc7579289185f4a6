// The command `phonebook` as it is parsed.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/error.h"
#include "driver/cli/command_line.h"
#include "tests/support/failure_line.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace quelm {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

CommandLine parsed(std::vector<const char*> arguments)
{
    arguments.insert(arguments.begin(), {"quelm-driver", "phonebook"});
    return parseCommandLine(static_cast<int>(arguments.size()), arguments.data());
}

std::string refusal(const std::vector<const char*>& arguments)
{
    return test::failureLine<UsageError>([&] { parsed(arguments); });
}

TEST(PhonebookOptions, EveryActionIsKnown)
{
    EXPECT_EQ(parsed({"list"}).phonebook.action, PhonebookAction::list);
    EXPECT_EQ(parsed({"show", "Ann"}).phonebook.action, PhonebookAction::show);
    EXPECT_EQ(parsed({"add", "Ann", "1"}).phonebook.action, PhonebookAction::add);
    EXPECT_EQ(parsed({"add-group", "Team", "Ann"}).phonebook.action, PhonebookAction::addGroup);
    EXPECT_EQ(parsed({"remove", "[Team]"}).phonebook.action, PhonebookAction::remove);
    EXPECT_EQ(parsed({"import", "-"}).phonebook.action, PhonebookAction::import);
    EXPECT_EQ(parsed({"export", "a.csv"}).phonebook.action, PhonebookAction::exportTo);
    EXPECT_EQ(parsed({"list"}).command, Command::phonebook);
    EXPECT_THAT(refusal({}), HasSubstr("see quelm-driver"));
}

TEST(PhonebookOptions, TextsAreTakenAsTheyStand)
{
    const auto add = parsed({"add", "[Ann, B]", "+1 (555)", "--organization", "[a,b]", "--phone", "2",
                             "--email=", "--replace"})
                         .phonebook;
    EXPECT_EQ(add.entry, (PhonebookEntry{"[Ann, B]", "+1 (555)", "[a,b]", "2", ""}));
    EXPECT_TRUE(add.replace);
    const auto group = parsed({"add-group", "Team", "Ann B", "Cid"}).phonebook;
    EXPECT_EQ(group.name, "Team");
    EXPECT_THAT(group.members, ElementsAre("Ann B", "Cid"));
    EXPECT_FALSE(group.replace);
    EXPECT_EQ(parsed({"show", "[Team]"}).phonebook.name, "[Team]");
}

TEST(PhonebookOptions, OptionsOfEveryCommandMayStandBehind)
{
    const auto line = parsed({"list", "--user", "ann", "--file", "b.xdb"});
    EXPECT_EQ(line.driver.user, "ann");
    EXPECT_EQ(line.phonebook.phonebook, "b.xdb");
}

TEST(PhonebookOptions, FormatsAreChecked)
{
    EXPECT_TRUE(parsed({"list", "--format", "csv"}).phonebook.asCsv);
    EXPECT_FALSE(parsed({"list", "--format", "text"}).phonebook.asCsv);
    EXPECT_EQ(parsed({"export", "a", "--format", "vcard3"}).phonebook.format, FileFormat::vcard3);
    EXPECT_EQ(parsed({"export", "a", "--format", "vcard4"}).phonebook.format, FileFormat::vcard4);
    EXPECT_EQ(parsed({"export", "a", "--format", "csv"}).phonebook.format, FileFormat::csv);
    EXPECT_EQ(parsed({"export", "a"}).phonebook.format, std::nullopt);
    EXPECT_THAT(refusal({"list", "--format", "vcard3"}), HasSubstr("\"vcard3\" is none of text|csv"));
    EXPECT_THAT(refusal({"export", "a", "--format", "text"}), HasSubstr("is none of vcard3|vcard4|csv|ldif"));
}

TEST(PhonebookOptions, ASharedPhonebookIsOnlyRead)
{
    EXPECT_EQ(parsed({"export", "a.csv", "--shared", "b.xdb"}).phonebook.phonebook, "b.xdb");
    EXPECT_THAT(refusal({"add", "Ann", "1", "--shared", "b.xdb"}), HasSubstr("--shared"));
    EXPECT_THAT(refusal({"list", "--shared", "b", "--file", "c"}), HasSubstr("--file"));
    EXPECT_THAT(refusal({"list", "--file", ""}), HasSubstr("--file"));
}

TEST(PhonebookOptions, AnImportIsToldHowToReadAndWhatToDoWithNames)
{
    const auto plain = parsed({"import", "a.csv"}).phonebook.import;
    EXPECT_TRUE(plain.settling.categoryGroups);
    EXPECT_FALSE(plain.settling.rename);
    EXPECT_EQ(plain.reading.separator, std::nullopt);
    const auto request = parsed({"import", "a.csv", "--charset", "cp1252", "--separator", "tab", "--rename",
                                 "--no-groups", "--skip-bad", "--dry-run"})
                             .phonebook;
    EXPECT_EQ(request.import.reading.charset, "cp1252");
    EXPECT_EQ(request.import.reading.separator, '\t');
    EXPECT_TRUE(request.import.settling.rename);
    EXPECT_FALSE(request.import.settling.categoryGroups);
    EXPECT_TRUE(request.import.skipBad);
    EXPECT_TRUE(request.dryRun);
    EXPECT_THAT(refusal({"import", "a.csv", "--charset", "klingon"}),
                HasSubstr("\"klingon\" is no charset; say one such as UTF-8"));
    EXPECT_THAT(refusal({"import", "a.csv", "--separator", "ab"}), HasSubstr("\"ab\" parts no fields"));
    EXPECT_EQ(parsed({"export", "a", "--format", "ldif"}).phonebook.format, FileFormat::ldif);
}

} // namespace
} // namespace quelm
