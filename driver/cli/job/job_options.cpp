// The option set of a fax job, and what each option's value may be.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/cli/job/job_options.h"

#include "base/command_line/help_texts.h"
#include "base/command_line/parser_messages.h"
#include "base/error.h"
#include "base/texts.h"
#include "base/translation.h"
#include "driver/cli/job/directory_dialog.h"
#include "driver/cli/job/reading_options.h"
#include "driver/cli/job/recipient_input.h"
#include "driver/jobs/attribute_lines.h"

#include <CLI/CLI.hpp>

#include <algorithm>
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
        for (const auto& [word, value] : choices)
            if (word == given)
                return store(value);
        throw UnknownWord(name, given, words);
    };
    command.add_option_function<std::string>(name, choose, description)->type_name(words);
}

/// The dialog lists Superfine before Fine.
Choices<int> resolutions() { return {{"standard", 0}, {"fine", 2}, {"superfine", 1}}; }

const std::string& notEmpty(const std::string& name, const std::string& given)
{
    if (given.empty())
        throw CLI::ValidationError(name.substr(name.rfind(',') + 1), localized("is empty"));
    return given;
}

/// A pair of flags: `yes` asks for something, `no` for the opposite of what the user has saved.
void addSwitch(CLI::App& command, const std::string& yes, const std::string& no, std::optional<bool>& value,
               const std::string& yesDescription, const std::string& noDescription)
{
    const auto set = [&value, yes, no](bool to) {
        if (value && *value != to)
            throw CLI::ValidationError(yes, localized("stands beside %s", no));
        value = to;
    };
    command.add_flag_callback(
        yes, [set] { set(true); }, yesDescription);
    command.add_flag_callback(
        no, [set] { set(false); }, noDescription);
}

/// Takes a text as it stands.
CLI::Option* addText(CLI::App& command, const std::string& name, std::optional<std::string>& value,
                     const std::string& type, const std::string& description)
{
    const auto take = [&value](const std::string& given) { value = given; };
    return command.add_option_function<std::string>(name, take, description)->type_name(type);
}

/// Takes a text that names something; an empty one is refused.
CLI::Option* addName(CLI::App& command, const std::string& name, std::optional<std::string>& value,
                     const std::string& type, const std::string& description)
{
    const auto take = [&value, name](const std::string& given) { value = notEmpty(name, given); };
    return command.add_option_function<std::string>(name, take, description)->type_name(type);
}

/// The same for an option that may be repeated.
CLI::Option* addNames(CLI::App& command, const std::string& name, std::vector<std::string>& values,
                      const std::string& type, const std::string& description)
{
    const auto take = [&values, name](const std::vector<std::string>& given) {
        for (const auto& one : given)
            notEmpty(name, one);
        values = given;
    };
    return command.add_option_function<std::vector<std::string>>(name, take, description)
        ->type_name(type)
        ->allow_extra_args(false);
}

/// The options of which one says what card is charged.
void addCardOptions(CLI::App& command, JobOptions& options)
{
    const OptionSection section(command, localized("Credit card"));
    addCardNumberOptions(command, options);
    auto* kept = command.add_flag("--kept-credit-card", options.keptCreditCard,
                                  localized("Charge the card that the fax dialog keeps"));
    for (const char* other : {"--credit-card", "--credit-card-file"})
        command.get_option(other)->excludes(kept);
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
                               localized("\"%s\" is no time of day; write HH:MM, such as 17:30", given));
}

void addSendingOptions(CLI::App& command, JobOptions& options)
{
    const OptionSection section(command, localized("Transmission"));
    addChoice<int>(
        command, "--resolution", resolutions(), [&options](int index) { options.resolution = index; },
        localized("Resolution of the pages"));
    addChoice<int>(
        command, "--speed", {{"4800", 0}, {"14.4", 1}, {"super-g3", 2}},
        [&options](int index) { options.speed = index; }, localized("Highest speed of the transmission"));
    addSwitch(command, "--confirmation", "--no-confirmation", options.confirmation,
              localized("Print a confirmation sheet"), localized("Print no confirmation sheet"));
    command
        .add_option_function<std::string>(
            "--send-at", [&options](const std::string& given) { options.sendAt = timeOfDay(given); },
            localized("Send at a time of day, on the 24-hour clock"))
        ->type_name("HH:MM");
    command
        .add_flag("--send-now", options.sendNow,
                  localized("Send at once, whatever time the fax dialog keeps"))
        ->excludes(command.get_option("--send-at"));
    command
        .add_option_function<std::string>(
            "--prefix",
            [&options](const std::string& given) {
                if (given.empty() || given.find_first_not_of("0123456789*#,") != std::string::npos)
                    throw CLI::ValidationError("--prefix", localized("\"%s\" is no number to dial", given));
                options.prefix = given;
            },
            localized("Dialled ahead of every fax number"))
        ->type_name("DIGITS");
    addCardOptions(command, options);
}

} // namespace

std::optional<int> resolutionIndex(const std::string& word)
{
    for (const auto& [known, index] : resolutions())
        if (known == word)
            return index;
    return std::nullopt;
}

void addRecipientOptions(CLI::App& command, JobOptions& options)
{
    const OptionSection section(command, localized("Recipients"));
    command
        .add_option_function<std::vector<std::string>>(
            "--to",
            [&options](const std::vector<std::string>& given) {
                std::for_each(given.begin(), given.end(), recipientFromOption);
                options.to = given;
            },
            localized("Add a recipient: a name and a fax number, or a number alone; repeat for more"))
        ->type_name("[NAME=]NUMBER")
        ->allow_extra_args(false);
    addName(command, "--recipients", options.recipients, "FILE.csv",
            localized("Add the recipients of a CSV file: with the columns name, number, organization, phone, "
                      "email and mailbox, or as an address book exports it"));
    addReadingOptions(command, options.recipientsReading.text, "--recipients-charset",
                      "--recipients-separator");
    command.add_flag("--rename", options.recipientsReading.rename,
                     localized("Change the names of --recipients that are not allowed"));
    addChoice<Duplicates>(
        command, "--duplicates",
        {{"ask", Duplicates::ask}, {"add", Duplicates::add}, {"skip", Duplicates::skip}},
        [&options](Duplicates policy) { options.duplicates = policy; },
        localized("What to do with a recipient that the job holds already (ask)"));
    addNames(command, "--entry", options.entries, "NAME",
             localized("Add an entry of the phonebook; repeat for more"));
    addNames(command, "--group", options.groups, "NAME",
             localized("Add the members of a phonebook group; repeat for more"));
    addName(command, "--shared", options.shared, "PHONEBOOK",
            localized("Take --entry and --group from this phonebook instead of the user's own"));
    command
        .add_flag("--from-shared", options.fromShared,
                  localized("Take them from the shared phonebook that the fax dialog shows"))
        ->excludes(command.get_option("--shared"));
    const auto takePrefixes = [&options](const std::vector<std::string>& given) {
        for (const auto& prefix : given)
            if (notEmpty("--directory", prefix).size() > longestPrefix)
                throw CLI::ValidationError(
                    "--directory",
                    localized("the beginning of a name is longer than %d bytes", longestPrefix));
        options.directory = given;
    };
    command
        .add_option_function<std::vector<std::string>>(
            "--directory", takePrefixes,
            localized("Add the one person of the device's directory whose \"SURNAME, GIVEN NAME\" begins "
                      "like this; repeat for more"))
        ->type_name("PREFIX")
        ->allow_extra_args(false);
}

/// Its number is told in no message.
void addCoverOptions(CLI::App& command, JobOptions& options)
{
    const OptionSection section(command, localized("Cover sheet"));
    addSwitch(command, "--cover", "--no-cover", options.cover, localized("Send a cover sheet first"),
              localized("Send no cover sheet"));
    addText(command, "--note", options.note, "TEXT", localized("Note on the cover sheet"));
    addSwitch(command, "--show-recipients", "--hide-recipients", options.showRecipients,
              localized("Name the recipients on the cover sheet"),
              localized("Leave the recipients off the cover sheet"));
    addText(command, "--custom-text", options.customText, "TEXT",
            localized("Text on the cover sheet in place of the recipients' names"));
    addSwitch(command, "--show-sender", "--hide-sender", options.showSender,
              localized("Name the sender on the cover sheet"),
              localized("Leave the sender off the cover sheet"));
    for (const auto& field : senderFields)
        addText(command, field.option, options.*field.text, "TEXT", translated(field.description));
}

void addCardNumberOptions(CLI::App& command, JobOptions& options)
{
    const OptionSection section(command, localized("Credit card"));
    const auto takeNumber = [&options](const std::string& given) {
        if (!isDialText(given))
            throw CLI::ValidationError("--credit-card", localized("this is no number to dial"));
        options.creditCard = given;
    };
    auto* number = command
                       .add_option_function<std::string>("--credit-card", takeNumber,
                                                         localized("Credit card that the call is charged to"))
                       ->type_name("NUMBER");
    auto* file = addName(command, "--credit-card-file", options.creditCardFile, "FILE",
                         localized("The same, from the first line of a file; - is standard input"));
    number->excludes(file);
}

void addDestinationOptions(CLI::App& command, JobOptions& options)
{
    const OptionSection section(command, localized("Destination"));
    addName(command, "-o,--output", options.output, "FILE",
            localized("Where to write; - is standard output"));
    const auto takeDevice = [&options](const std::string& given) {
        try {
            options.device = parseNetworkAddress(given);
        } catch (const Error& error) {
            throw CLI::ValidationError("--device", error.what());
        }
    };
    command
        .add_option_function<std::string>("--device", takeDevice,
                                          localized("The device that takes the job on a TCP port (9100)"))
        ->type_name("HOST[:PORT]");
    const auto takeQueue = [&options](const std::string& given) {
        if (!isPlainText(notEmpty("--queue", given)))
            throw CLI::ValidationError("--queue", localized("holds a control character; lpstat -e lists the "
                                                            "queues"));
        options.queue = given;
    };
    command
        .add_option_function<std::string>("--queue", takeQueue,
                                          localized("The CUPS queue that takes the job"))
        ->type_name("NAME");
    addName(command, "--destination", options.destination, "NAME",
            localized("The destination of the configuration that takes the job"));
}

void addJobOptions(CLI::App& command, JobOptions& options)
{
    addRecipientOptions(command, options);
    addCoverOptions(command, options);
    addSendingOptions(command, options);
    const OptionSection section(command, localized("Destination"));
    addChoice<Pdl>(
        command, "--pdl", {{"dsc", Pdl::dsc}, {"pjl", Pdl::pjl}}, [&options](Pdl pdl) { options.pdl = pdl; },
        localized("How the job carries its attributes (dsc)"));
    addDestinationOptions(command, options);
}

void addHandoverOptions(CLI::App& command, JobOptions& options)
{
    const OptionSection section(command, localized("Destination"));
    command.add_flag("--outbox", options.toOutbox,
                     localized("Put the job into the outbox, which sends it; see quelm-driver outbox"));
    auto* dryRun = command.add_flag("--dry-run", options.dryRun,
                                    localized("Say what would happen, and neither send nor keep anything"));
    dryRun->excludes(command.get_option("--cover-preview"));
}

void addCoverPreviewOption(CLI::App& command, JobOptions& options, CLI::Option& document)
{
    const OptionSection section(command, localized("Cover sheet"));
    // Called when the options ahead of it have been taken, and before it is seen what is missing.
    const auto take = [&options, &document](const std::string& given) {
        options.coverPreview = notEmpty("--cover-preview", given);
        if (!options.output && !options.device && !options.queue && !options.destination)
            document.required(false);
    };
    command
        .add_option_function<std::string>(
            "--cover-preview", take,
            localized("Draw the cover page into a picture (PNG), before anything is sent; alone, nothing is "
                      "sent; - is standard output"))
        ->type_name("FILE.png");
}

} // namespace quelm
