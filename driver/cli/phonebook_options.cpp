// The actions on phonebooks and their options.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/cli/phonebook_options.h"

#include "base/command_line/parser_messages.h"
#include "base/translation.h"
#include "driver/cli/job/reading_options.h"

#include <CLI/CLI.hpp>

namespace quelm {
namespace {

/// Makes one action known. `onlyReads`: then a shared phonebook will do.
CLI::App& addAction(CLI::App& command, PhonebookRequest& request, PhonebookAction action, const char* name,
                    const std::string& description, bool onlyReads)
{
    CLI::App& added = *command.add_subcommand(name, description);
    added.callback([&request, action] { request.action = action; });
    const auto addPath = [&](const char* option, const std::string& text) {
        return added
            .add_option_function<std::string>(
                option,
                [&request, option](const std::string& path) {
                    if (path.empty())
                        throw CLI::ValidationError(option, localized("is empty"));
                    request.phonebook = path;
                },
                text)
            ->type_name("PHONEBOOK");
    };
    auto* const file = addPath("--file", localized("This phonebook in place of the user's own"));
    if (onlyReads)
        addPath("--shared", localized("A phonebook of others, which is only read"))->excludes(file);
    return added;
}

void addText(CLI::App& action, const char* name, std::string& value, const std::string& description)
{
    action.add_option(name, value, description)->type_name("TEXT");
}

void addName(CLI::App& action, std::string& name, const std::string& description)
{
    action.add_option("NAME", name, description)->required()->type_name("");
}

void addReplace(CLI::App& action, PhonebookRequest& request)
{
    action.add_flag("--replace", request.replace, localized("Put it in the place of the one of that name"));
}

constexpr const char* vcardFormats = "vcard3|vcard4|csv|ldif";
constexpr const char* listFormats = "text|csv";

void addFormats(CLI::App& action, PhonebookRequest& request)
{
    action
        .add_option_function<std::string>(
            "--format",
            [&request](const std::string& given) {
                if (given == "vcard3")
                    request.format = FileFormat::vcard3;
                else if (given == "vcard4")
                    request.format = FileFormat::vcard4;
                else if (given == "csv")
                    request.format = FileFormat::csv;
                else if (given == "ldif")
                    request.format = FileFormat::ldif;
                else
                    throw UnknownWord("--format", given, vcardFormats);
            },
            localized("How to write it; by default .vcf is vcard4, .csv csv and .ldif ldif"))
        ->type_name(vcardFormats);
}

void addImport(CLI::App& action, PhonebookRequest& request)
{
    action
        .add_option("FILE", request.file,
                    localized("vCard, CSV or LDIF, of whatever program; - is standard input"))
        ->required()
        ->type_name("");
    auto& options = request.import;
    action.add_flag(
        "--rename", options.settling.rename,
        localized("Import names that are not allowed, or that two people have, under names like them"));
    action.add_flag("--skip-bad", options.skipBad,
                    localized("Leave out what cannot be used, and import the rest"));
    action.add_flag("!--no-groups", options.settling.categoryGroups,
                    localized("Make no groups of the people's categories"));
    addReadingOptions(action, options.reading, "--charset", "--separator");
}

} // namespace

void addPhonebookActions(CLI::App& command, PhonebookRequest& request)
{
    command.require_subcommand(1);
    const auto add = [&](PhonebookAction action, const char* name, const std::string& text,
                         bool onlyReads) -> CLI::App& {
        return addAction(command, request, action, name, text, onlyReads);
    };

    auto& list = add(PhonebookAction::list, "list", localized("List the entries and groups"), true);
    list.add_option_function<std::string>(
            "--format",
            [&request](const std::string& given) {
                if (given != "text" && given != "csv")
                    throw UnknownWord("--format", given, listFormats);
                request.asCsv = given == "csv";
            },
            localized("Columns to read, or CSV with all fields (text)"))
        ->type_name(listFormats);

    auto& show = add(PhonebookAction::show, "show", localized("Show all fields of an entry or group"), true);
    addName(show, request.name, localized("Name of an entry, or of a group: NAME or [NAME]"));

    auto& entry = add(PhonebookAction::add, "add", localized("Add an entry"), false);
    addName(entry, request.entry.name, localized("Name"));
    entry.add_option("NUMBER", request.entry.number, localized("Fax number"))->required()->type_name("");
    addText(entry, "--organization", request.entry.organization, localized("Organization"));
    addText(entry, "--phone", request.entry.phone, localized("Phone number"));
    addText(entry, "--email", request.entry.email, localized("E-mail address"));
    addReplace(entry, request);

    auto& group = add(PhonebookAction::addGroup, "add-group", localized("Add a group of entries"), false);
    addName(group, request.name, localized("Name of the group"));
    group.add_option("MEMBER", request.members, localized("Name of an entry; one or more"))
        ->required()
        ->type_name("");
    addReplace(group, request);

    auto& removal = add(PhonebookAction::remove, "remove", localized("Remove an entry or group"), false);
    addName(removal, request.name, localized("Name of an entry, or of a group: NAME or [NAME]"));

    addImport(add(PhonebookAction::import, "import", localized("Bring in a vCard, CSV or LDIF file"), false),
              request);

    auto& exported =
        add(PhonebookAction::exportTo, "export", localized("Write a vCard, CSV or LDIF file"), true);
    exported.add_option("FILE", request.file, localized("File to write; - is standard output"))
        ->required()
        ->type_name("");
    addFormats(exported, request);

    for (auto* action : command.get_subcommands({}))
        action->fallthrough();
    for (const char* action : {"add", "add-group", "remove", "import", "export"})
        command.get_subcommand(action)->add_flag("--dry-run", request.dryRun,
                                                 localized("Say what would be done, and change nothing"));
}

} // namespace quelm
