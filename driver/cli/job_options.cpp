// The option set of a fax job, and what each option's value may be.
#include "driver/cli/job_options.h"

#include "driver/core/error.h"

#include <CLI/CLI.hpp>

#include <charconv>
#include <functional>
#include <utility>

namespace quelm {
namespace {

template <typename Value>
using Choices = std::vector<std::pair<std::string, Value>>;

/// An option that takes one of a few words.
template <typename Value>
void addChoice(CLI::App& command, const std::string& name, const Choices<Value>& choices,
               const std::function<void(Value)>& store, const std::string& description)
{
    std::string words;
    for (const auto& [word, value] : choices)
        words += (words.empty() ? "" : "|") + word;
    const auto choose = [name, words, choices, store](const std::string& given) {
        for (const auto& [word, value] : choices) {
            if (word == given)
                return store(value);
        }
        throw CLI::ValidationError(name, "\"" + given + "\" is none of " + words);
    };
    command.add_option_function<std::string>(name, choose, description)->type_name(words);
}

/// A pair of flags: `yes` asks for something, `no` for the opposite of what the user has saved.
void addSwitch(CLI::App& command, const std::string& yes, const std::string& no, std::optional<bool>& value,
               const std::string& yesDescription, const std::string& noDescription)
{
    const auto set = [&value, yes, no](bool to) {
        if (value && *value != to)
            throw CLI::ValidationError(yes, "stands beside " + no);
        value = to;
    };
    command.add_flag_callback(
        yes, [set] { set(true); }, yesDescription);
    command.add_flag_callback(
        no, [set] { set(false); }, noDescription);
}

/// Takes a text as it stands, but only of these characters (any, when there are none).
void addText(CLI::App& command, const std::string& name, std::optional<std::string>& value,
             const std::string& type, const std::string& description, const std::string& characters = {})
{
    const auto take = [&value, name, characters](const std::string& given) {
        if (!characters.empty() &&
            (given.empty() || given.find_first_not_of(characters) != std::string::npos))
            throw CLI::ValidationError(name, "\"" + given + "\" is no number to dial");
        value = given;
    };
    command.add_option_function<std::string>(name, take, description)->type_name(type);
}

/// An option of the driver that this build cannot serve: taken, so that it can be refused by name.
void addUnavailable(CLI::App& command, const std::string& name, std::vector<std::string>& unavailable)
{
    command
        .add_option_function<std::vector<std::string>>(
            name, [&unavailable, name](const std::vector<std::string>&) { unavailable.push_back(name); })
        ->allow_extra_args(false)
        ->group("");
}

TimeOfDay timeOfDay(const std::string& given)
{
    const auto number = [](std::string_view digits, int most) {
        int value = -1;
        const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), value);
        const bool whole = result.ec == std::errc() && result.ptr == digits.data() + digits.size();
        return whole && value >= 0 && value <= most ? value : -1;
    };
    const std::string_view text = given;
    const auto colon = text.find(':');
    if (colon == 1 || colon == 2) {
        const TimeOfDay time{number(text.substr(0, colon), 23), number(text.substr(colon + 1), 59)};
        if (time.hour >= 0 && time.minute >= 0 && text.size() == colon + 3)
            return time;
    }
    throw CLI::ValidationError("--send-at",
                               "\"" + given + "\" is no time of day; write HH:MM, such as 17:30");
}

void addRecipientOptions(CLI::App& command, JobOptions& options)
{
    command.add_option("--to", options.to, "Add a recipient; repeat for more")
        ->type_name("NAME=NUMBER")
        ->allow_extra_args(false);
    addText(command, "--recipients", options.recipients, "FILE.csv",
            "Add the recipients of a CSV file with the columns name, number, organization, phone, email "
            "and mailbox");
    addChoice<Duplicates>(
        command, "--duplicates",
        {{"ask", Duplicates::ask}, {"add", Duplicates::add}, {"skip", Duplicates::skip}},
        [&options](Duplicates policy) { options.duplicates = policy; },
        "What to do with a recipient that the job holds already (ask)");
    command.add_option("--entry", options.entries, "Add an entry of the phonebook; repeat for more")
        ->type_name("NAME")
        ->allow_extra_args(false);
    command.add_option("--group", options.groups, "Add the members of a phonebook group; repeat for more")
        ->type_name("NAME")
        ->allow_extra_args(false);
    addText(command, "--shared", options.shared, "PHONEBOOK",
            "Take --entry and --group from this phonebook instead of the user's own");
    addUnavailable(command, "--directory", options.unavailable);
}

void addCoverOptions(CLI::App& command, JobOptions& options)
{
    addSwitch(command, "--cover", "--no-cover", options.cover, "Send a cover sheet first",
              "Send no cover sheet");
    addText(command, "--note", options.note, "TEXT", "Note on the cover sheet");
    addSwitch(command, "--show-recipients", "--hide-recipients", options.showRecipients,
              "Name the recipients on the cover sheet", "Leave the recipients off the cover sheet");
    addText(command, "--custom-text", options.customText, "TEXT",
            "Text on the cover sheet in place of the recipients' names");
    addSwitch(command, "--show-sender", "--hide-sender", options.showSender,
              "Name the sender on the cover sheet", "Leave the sender off the cover sheet");
    for (const auto& field : senderFields)
        addText(command, field.option, options.*field.text, "TEXT", field.description);
}

void addSendingOptions(CLI::App& command, JobOptions& options)
{
    // The dialog lists Superfine before Fine.
    addChoice<int>(
        command, "--resolution", {{"standard", 0}, {"fine", 2}, {"superfine", 1}},
        [&options](int index) { options.resolution = index; }, "Resolution of the pages");
    addChoice<int>(
        command, "--speed", {{"4800", 0}, {"14.4", 1}, {"super-g3", 2}},
        [&options](int index) { options.speed = index; }, "Highest speed of the transmission");
    addSwitch(command, "--confirmation", "--no-confirmation", options.confirmation,
              "Print a confirmation sheet", "Print no confirmation sheet");
    command
        .add_option_function<std::string>(
            "--send-at", [&options](const std::string& given) { options.sendAt = timeOfDay(given); },
            "Send at a time of day, on the 24-hour clock")
        ->type_name("HH:MM");
    addText(command, "--prefix", options.prefix, "DIGITS", "Dialled ahead of every fax number",
            "0123456789*#,");
    addText(command, "--credit-card", options.creditCard, "NUMBER", "Credit card that the call is charged to",
            "0123456789 -");
}

} // namespace

void addJobOptions(CLI::App& command, JobOptions& options)
{
    addRecipientOptions(command, options);
    addCoverOptions(command, options);
    addSendingOptions(command, options);
    addChoice<Pdl>(
        command, "--pdl", {{"dsc", Pdl::dsc}, {"pjl", Pdl::pjl}}, [&options](Pdl pdl) { options.pdl = pdl; },
        "How the job carries its attributes (dsc)");
    addText(command, "--output", options.output, "FILE", "Where to write; - is standard output");
    for (const auto* name : {"--device", "--queue"})
        addUnavailable(command, name, options.unavailable);
}

void refuseUnavailableOptions(const JobOptions& options)
{
    if (!options.unavailable.empty())
        throw Error(options.unavailable.front() +
                    " is not available in this build; use --to or --recipients, and --output");
}

} // namespace quelm
