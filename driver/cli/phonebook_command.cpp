// The command `phonebook`: looks at phonebooks and changes them, without the component.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/error.h"
#include "base/log.h"
#include "base/standard_output.h"
#include "base/terminal/progress_line.h"
#include "base/translation.h"
#include "driver/cli/commands.h"
#include "driver/cli/driver_setup.h"
#include "driver/config/installation.h"
#include "driver/config/user_place.h"
#include "driver/phonebook/actions.h"
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

void import(const PhonebookPlace& place, const PhonebookRequest& request)
{
    ImportReport report;
    {
        ProgressLine progress(localized("Importing"));
        auto options = request.import;
        options.progress = [&progress](std::size_t done, std::size_t total) { progress.show(done, total); };
        report = importFile(place, request.file, options);
    }
    for (const auto& refusal : refusalLines(report))
        writeUnderProgramName(refusal);
    if (!report.accepted)
        throw Error(importFailure(report));
    confirm({importSummary(report), report.strayMembers});
}

void exportTo(const PhonebookPlace& place, const PhonebookRequest& request)
{
    const bool toStandardOutput = request.file == "-";
    const auto format = request.format ? request.format : formatByName(request.file);
    if (!format)
        throw UsageError(
            toStandardOutput
                ? localized("say with --format what to write to standard output")
                : localized("%s: ends in none of .vcf, .csv and .ldif; say --format", request.file));
    if (toStandardOutput)
        print(exportText(place, *format));
    else
        confirm(exportFile(place, request.file, *format));
}

} // namespace

void runPhonebookCommand(const CommandLine& line)
{
    const auto& request = line.phonebook;
    const auto place = placeOf(line);
    switch (request.action) {
    case PhonebookAction::list:
        return print(listPhonebook(place, request.asCsv));
    case PhonebookAction::show:
        return print(showItem(place, request.name));
    case PhonebookAction::add:
        return confirm(addEntry(place, request.entry, request.replace));
    case PhonebookAction::addGroup:
        return confirm(addGroup(place, {request.name, request.members}, request.replace));
    case PhonebookAction::remove:
        return confirm(removeItem(place, request.name));
    case PhonebookAction::import:
        return import(place, request);
    case PhonebookAction::exportTo:
        return exportTo(place, request);
    case PhonebookAction::none:
        break;
    }
    throw UsageError(localized("say what to do with the phonebook; see quelm-driver phonebook --help"));
}

} // namespace quelm
