// The command `phonebook`: looks at phonebooks and changes them, without the component.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/command_line/json_answer.h"
#include "base/error.h"
#include "base/log.h"
#include "base/standard_output.h"
#include "base/terminal/progress_line.h"
#include "base/texts.h"
#include "base/translation.h"
#include "driver/cli/commands.h"
#include "driver/cli/driver_setup.h"
#include "driver/cli/import_json.h"
#include "driver/cli/phonebook_json.h"
#include "driver/config/installation.h"
#include "driver/config/user_place.h"
#include "driver/phonebook/actions.h"
#include "driver/phonebook/entry_check.h"
#include "driver/phonebook/import.h"
#include "driver/store/former_phonebook.h"

namespace quelm {
namespace {

PhonebookPlace placeOf(const CommandLine& line)
{
    if (!line.phonebook.phonebook.empty())
        return {line.phonebook.phonebook, false};
    const auto setup = setUpDriver(line);
    const auto user = resolveUser(setup.driver.user);
    const auto place = prepareUserPlace(setup.driver.home, resolveHome(setup.driver.home), user);
    auto phonebook = personalPhonebook(place.location, user);
    takeOverPhonebook(place.formerPhonebook, phonebook.path);
    return phonebook;
}

Doing doingOf(const PhonebookRequest& request) { return request.dryRun ? Doing::dryRun : Doing::really; }

void warn(const std::vector<std::string>& warnings)
{
    for (const auto& warning : warnings)
        log(Severity::warning, warning);
}

/// For what the user asked to see.
void print(const Outcome& outcome)
{
    writeAnswer(outcome.done);
    warn(outcome.warnings);
}

/// For what is done by now, and stays so whether he hears of it or not.
void confirm(const Outcome& outcome)
{
    writeConfirmation(outcome.done);
    warn(outcome.warnings);
}

/// Tells of a change that was made, or would be.
void confirm(const Outcome& outcome, const CommandLine& line)
{
    const Doing doing = doingOf(line.phonebook);
    if (line.json && doing == Doing::dryRun)
        writeJsonAnswer(changeJson(outcome, doing));
    else if (line.json)
        writeJsonResult(changeJson(outcome, doing));
    else if (doing == Doing::dryRun)
        writeAnswer(outcome.done);
    else
        writeConfirmation(outcome.done);
    warn(outcome.warnings);
}

void list(const PhonebookPlace& place, const CommandLine& line)
{
    if (!line.json)
        return print(listPhonebook(place, line.phonebook.asCsv));
    if (line.phonebook.asCsv)
        throw UsageError(localized("%s stands beside %s", "--json", "--format csv"));
    writeJsonAnswer(phonebookJson(place.path, phonebookItems(place)));
}

void show(const PhonebookPlace& place, const CommandLine& line)
{
    if (!line.json)
        return print(showItem(place, line.phonebook.name));
    const auto items = phonebookItems(place);
    writeJsonAnswer(itemJson(phonebookItem(place, line.phonebook.name), items));
}

/// What stands on the command line itself has to be a name, a number and so on.
template <typename Content>
const Content& typed(const Content& content)
{
    if (const auto problem = problemWith(tidied(content)))
        throw UsageError("\"" + oneLine(content.name) + "\": " + oneLine(*problem));
    return content;
}

void import(const PhonebookPlace& place, const CommandLine& line)
{
    const auto& request = line.phonebook;
    ImportReport report;
    {
        ProgressLine progress(localized("Importing"));
        auto options = request.import;
        options.dryRun = request.dryRun;
        options.progress = [&progress](std::size_t done, std::size_t total) { progress.show(done, total); };
        report = importFile(place, request.file, options);
    }
    const auto failure = report.accepted ? "" : importFailure(report);
    if (line.json && (request.dryRun || !report.accepted))
        writeJsonAnswer(importJson(report, failure));
    else if (line.json)
        writeJsonResult(importJson(report, failure));
    for (const auto& refusal : refusalLines(report))
        writeUnderProgramName(refusal);
    if (!report.accepted)
        throw Error(failure);
    if (line.json)
        return warn(report.strayMembers);
    const Outcome outcome{importSummary(report), report.strayMembers};
    if (request.dryRun)
        print(outcome);
    else
        confirm(outcome);
}

void exportTo(const PhonebookPlace& place, const CommandLine& line)
{
    const auto& request = line.phonebook;
    const bool toStandardOutput = request.file == "-";
    const auto format = request.format ? request.format : formatByName(request.file);
    if (!format)
        throw UsageError(
            toStandardOutput
                ? localized("say with --format what to write to standard output")
                : localized("%s: ends in none of .vcf, .csv and .ldif; say --format", request.file));
    if (toStandardOutput && line.json)
        throw UsageError(localized("--json and the export cannot both go to standard output; name a file"));
    if (toStandardOutput && !request.dryRun)
        return print(exportText(place, *format));
    ExportCount count;
    const auto doing = doingOf(request);
    const auto file = toStandardOutput ? localized("standard output") : request.file;
    const auto outcome = exportFile(place, file, *format, doing, &count);
    if (!line.json)
        return doing == Doing::dryRun ? print(outcome) : confirm(outcome);
    const auto json = exportJson(request.file, *format, count, doing);
    if (doing == Doing::dryRun)
        writeJsonAnswer(json);
    else
        writeJsonResult(json);
    warn(outcome.warnings);
}

} // namespace

void runPhonebookCommand(const CommandLine& line)
{
    const auto& request = line.phonebook;
    const auto place = placeOf(line);
    switch (request.action) {
    case PhonebookAction::list:
        return list(place, line);
    case PhonebookAction::show:
        return show(place, line);
    case PhonebookAction::add:
        return confirm(addEntry(place, typed(request.entry), request.replace, doingOf(request)), line);
    case PhonebookAction::addGroup:
        return confirm(addGroup(place, typed(PhonebookGroup{request.name, request.members}), request.replace,
                                doingOf(request)),
                       line);
    case PhonebookAction::remove:
        return confirm(removeItem(place, request.name, doingOf(request)), line);
    case PhonebookAction::import:
        return import(place, line);
    case PhonebookAction::exportTo:
        return exportTo(place, line);
    case PhonebookAction::none:
        break;
    }
    throw UsageError(localized("say what to do with the phonebook; see quelm-driver phonebook --help"));
}

} // namespace quelm
