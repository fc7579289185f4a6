// Every option and place of the command line with a value that it cannot have: wrong usage, in one line that
// names it.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/cli/command_line.h"
#include "driver/cli/driver_setup.h"
#include "driver/cli/job/given_target.h"
#include "tests/support/failure_line.h"

#include <CLI/CLI.hpp>
#include <gmock/gmock.h>

#include <algorithm>
#include <set>
#include <string>
#include <vector>

namespace quelm {
namespace {

using testing::HasSubstr;
using testing::Not;

struct WrongValue {
    std::vector<std::string> arguments; ///< the option's or place's value last
    std::string named;                  ///< what the line names
};

void PrintTo(const WrongValue& value, std::ostream* out)
{
    for (const auto& argument : value.arguments)
        *out << argument << ' ';
}

std::string refusal(const std::vector<std::string>& arguments)
{
    std::vector<const char*> argv{"quelm-driver"};
    for (const auto& argument : arguments)
        argv.push_back(argument.c_str());
    return test::failureLine<UsageError>([&] {
        const auto line = parseCommandLine(static_cast<int>(argv.size()), argv.data());
        const auto setup =
            setUpForOneCommand(line); // the options that every command takes are looked at there
        static_cast<void>(givenTarget(line.job, setup.destinations));
    });
}

std::vector<WrongValue> wrongValues()
{
    std::vector<WrongValue> all;
    const auto add = [&all](const std::vector<std::string>& command, const std::string& option,
                            const std::vector<std::string>& values) {
        for (const auto& value : values) {
            auto arguments = command;
            arguments.push_back(option);
            arguments.push_back(value);
            all.push_back({arguments, option});
        }
    };
    const std::vector<std::string> fax{"fax", "a.ps"};
    add(fax, "--home", {""});
    add(fax, "--user", {""});
    add(fax, "--component", {""});
    add(fax, "--config", {""});
    add(fax, "--now", {"", "yesterday", "2024-13-01T00:00", "2024-02-30T10:00", "2024-01-01"});
    add(fax, "--device-snmp", {"", ":161", "host:0", "host:99999", "[::1"});
    add(fax, "--to", {"", "Ann", "=5", "Ann=", "Ann B", "+"});
    add(fax, "--recipients", {""});
    add(fax, "--recipients-charset", {"", "no-such-charset", "UTF-8//IGNORE"});
    add(fax, "--recipients-separator", {"", "ab", "x", "\""});
    const std::vector<std::string> import{"phonebook", "import", "a.csv"};
    add(import, "--charset", {"", "no-such-charset"});
    add(import, "--separator", {"", "7", " "});
    add(fax, "--entry", {""});
    add(fax, "--group", {""});
    add(fax, "--shared", {""});
    add(fax, "--directory", {"", std::string(300, 'x')});
    add(fax, "--duplicates", {"", "maybe", "ADD"});
    add(fax, "--resolution", {"", "coarse"});
    add(fax, "--speed", {"", "9600"});
    add(fax, "--send-at", {"", "25:00", "12:60", "12", "1:2", "12:00:00", "-1:00"});
    add(fax, "--prefix", {"", "x", "9 "});
    add(fax, "--credit-card", {"", "x"});
    add(fax, "--credit-card-file", {""});
    add(fax, "--pdl", {"", "pcl"});
    add(fax, "--output", {""});
    add(fax, "--device", {"", "host:0", "host:x", ":9100"});
    add(fax, "--queue", {"", "a\nb"});
    add(fax, "--destination", {"", "nowhere"});
    add(fax, "--cover-preview", {""});
    add({"outbox"}, "show", {"", "0", "-1", "x", "1.5", "99999999999"});
    add({"outbox"}, "cancel", {"", "0", "x"});
    add({"outbox"}, "send", {"", "0", "x"});
    add({"outbox"}, "resend", {"", "0", "x"});
    add({"phonebook", "list"}, "--format", {"", "xml"});
    add({"phonebook", "list"}, "--file", {""});
    add({"phonebook", "list"}, "--shared", {""});
    add({"phonebook", "export", "-"}, "--format", {"", "xml"});
    add({"phonebook", "import", "-"}, "--charset", {"", "no-such-charset"});
    add({"phonebook", "import", "-"}, "--separator", {"", "ab"});
    // Places are named in capitals.
    for (auto& value : all)
        if (value.arguments.front() == "outbox")
            value.named = "NUMBER";
    for (const auto& command : std::vector<std::vector<std::string>>{{"fax", ""}, {"script", ""}})
        all.push_back({command, command.front() == "fax" ? "DOCUMENT" : "FILE"});
    return all;
}

class WrongValueTest : public testing::TestWithParam<WrongValue> {};

TEST_P(WrongValueTest, IsWrongUsageThatNamesWhatIsMeant)
{
    const auto line = refusal(GetParam().arguments);
    EXPECT_THAT(line, HasSubstr(GetParam().named));
    EXPECT_THAT(line, Not(HasSubstr("\n")));
}

INSTANTIATE_TEST_SUITE_P(EveryOption, WrongValueTest, testing::ValuesIn(wrongValues()));

/// The options of a command and of all below it that take a value of a certain form.
void collect(const CLI::App& command, std::set<std::string>& options)
{
    for (const auto* option : command.get_options())
        if (!option->get_positional() && option->get_expected_max() > 0 && option->get_type_name() != "TEXT")
            options.insert("--" + option->get_lnames().front());
    for (const auto* below : command.get_subcommands([](const CLI::App*) { return true; }))
        collect(*below, options);
}

TEST(WrongValues, NoOptionThatTakesMoreThanAnyTextIsLeftOut)
{
    CommandLine line;
    std::set<std::string> options;
    collect(*driverProgram(line), options);
    const auto tried = wrongValues();
    for (const auto& option : options)
        EXPECT_TRUE(std::ranges::any_of(tried, [&](const auto& value) { return value.named == option; }))
            << option;
}

} // namespace
} // namespace quelm
