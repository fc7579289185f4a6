// From a kept job to one that goes out.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/cli/outbox_resend.h"

#include "base/clock.h"
#include "base/command_line/json_answer.h"
#include "base/error.h"
#include "base/standard_output.h"
#include "base/terminal/secret_line.h"
#include "base/texts.h"
#include "base/translation.h"
#include "driver/cli/filled_sending.h"
#include "driver/cli/handing_over.h"
#include "driver/cli/job/credit_card_file.h"
#include "driver/cli/job/given_target.h"
#include "driver/cli/job/say.h"
#include "driver/jobs/attribute_lines.h"
#include "driver/outbox/outbox_checks.h"
#include "driver/widgets/widget_names.h"

#include <algorithm>
#include <filesystem>

namespace quelm {
namespace {

bool namesRecipients(const JobOptions& options)
{
    return !options.to.empty() || options.recipients || !options.entries.empty() || !options.groups.empty() ||
           !options.directory.empty();
}

/// The first given option about the cover sheet.
std::optional<std::string> coverOption(const JobOptions& options)
{
    if (options.cover)
        return *options.cover ? "--cover" : "--no-cover";
    if (options.note)
        return "--note";
    if (options.showRecipients)
        return *options.showRecipients ? "--show-recipients" : "--hide-recipients";
    if (options.customText)
        return "--custom-text";
    if (options.showSender)
        return *options.showSender ? "--show-sender" : "--hide-sender";
    for (const auto& field : senderFields)
        if (options.*field.text)
            return field.option;
    return std::nullopt;
}

/// The options of a job for other recipients than its own: a text that stood in place of their names does
/// not go to others.
OptionValues optionsForOthers(const OutboxJob& job, const JobOptions& given)
{
    OptionValues options = job.options;
    const auto is = [&options](const char* name, const char* value) {
        const auto option = options.find(name);
        return option != options.end() && option->second == value;
    };
    const auto text = options.find(widget_names::coverSheetCustomText);
    if (text == options.end() || text->second.empty() || given.customText)
        return options;
    const bool hasCover = given.cover.value_or(is(widget_names::lanFaxCoverSheetOption, "1"));
    if (hasCover && is(widget_names::showRcptInfo, "1"))
        say(localized("the text \"%s\" in place of the recipients' names is not taken to other recipients; "
                      "--custom-text gives them one",
                      shownText(text->second)));
    text->second.clear();
    if (is(widget_names::showRcptInfo, "1"))
        options[widget_names::showRcptInfo] = std::to_string(0);
    return options;
}

std::string askForCard(const OutboxJob& job)
{
    const auto typed = readSecretLine(
        // Translators: a job's number.
        localized("Number of the credit card that job %d is charged to (it is not shown): ", job.number));
    std::string number(typed ? trimmed(*typed) : std::string_view());
    if (number.empty())
        throw Error(localized("no credit card number was given; nothing is sent"));
    if (!isDialText(number))
        throw Error(localized("this is no credit card number: it may hold digits, blanks, \"-\", \"*\", "
                              "\"#\" and \",\"; nothing is sent"));
    return number;
}

/// The number to charge; empty for none.
std::string cardFor(const OutboxJob& job, const OutboxRequest& request)
{
    if (request.job.creditCardFile)
        return readCreditCard(*request.job.creditCardFile);
    if (request.job.creditCard)
        return *request.job.creditCard;
    if (!job.chargesCard || request.withoutCard)
        return {};
    if (canAsk())
        return askForCard(job);
    throw Error(
        localized("job %d charged a credit card, whose number is not kept; give it with --credit-card-file, "
                  "or send the job without it with --without-card",
                  job.number));
}

std::optional<JobTarget> otherTarget(const JobOptions& options, const DriverSetup& setup)
{
    auto target = givenTarget(options, setup.destinations);
    if (auto* file = target ? std::get_if<FileTarget>(&*target) : nullptr) {
        if (file->path == "-")
            throw UsageError(localized("a kept job goes to a file, device or queue; name one"));
        file->path = std::filesystem::absolute(file->path).lexically_normal().string();
    }
    return target;
}

bool isThere(Outbox& outbox, int number)
{
    const auto jobs = outbox.jobs();
    return std::ranges::any_of(jobs, [number](const OutboxJob& job) { return job.number == number; });
}

/// The error of a handing over without the job that it names at its beginning.
std::string withoutNumber(const std::string& error, int number)
{
    const std::string beginning = localized("job %d: %s", number, "");
    return error.starts_with(beginning) ? error.substr(beginning.size()) : error;
}

/// The form that jobs have for the destination which the user named.
std::optional<Pdl> otherForm(const JobOptions& options, const DriverSetup& setup)
{
    return options.destination ? destinationNamed(*options.destination, setup.destinations).pdl
                               : std::nullopt;
}

void makeAnew(const CommandLine& line, const DriverSetup& setup, const OutboxJob& job,
              const JobTarget& target, const std::string& card)
{
    if (job.documentPath.empty())
        throw Error(
            localized("the document of job %d is not kept; send it with quelm-driver fax", job.number));
    CommandLine anew = line;
    anew.command = Command::fax;
    anew.document = job.documentPath;
    anew.job = line.outbox.job;
    anew.job.sendNow = true;
    anew.job.creditCardFile.reset();
    anew.job.creditCard = card.empty() ? std::nullopt : std::optional(card);
    const Document document = Document::open(job.documentPath);
    DriverSetup forAnew = forOneCommand(setup);
    forAnew.driver.optionValues = optionsForOthers(job, line.outbox.job);
    forAnew.pdl = otherForm(line.outbox.job, setup).value_or(job.pdl);
    FilledJob filled(anew, forAnew);
    Submission submission = submissionOf(filled, target, currentTime());
    submission.sentBefore = job.number;
    if (line.outbox.dryRun)
        return sumUp(filled, document, target, submission, line.json);
    sendFilled(filled, document, submission, {shownText(job.title), line.json, {}});
}

/// What would happen to a kept print stream.
void planAgain(OutboxJob job, const JobTarget& target, bool asJson)
{
    requireRepeatable(job);
    job.target = target;
    if (asJson)
        writeJsonAnswer(resultLine({job.number, job, {}}, currentTime()));
    else
        writeAnswer(plannedHandover(job) + "\n");
}

} // namespace

void resend(const CommandLine& line, const DriverSetup& setup, Outbox& outbox)
{
    const auto& request = line.outbox;
    const OutboxJob job = outbox.job(request.numbers.front());
    const auto target = otherTarget(request.job, setup);
    const bool anew = namesRecipients(request.job);
    // Alone they would change nothing, and be overlooked.
    if (!anew && request.job.shared)
        throw UsageError(localized("%s needs %s", "--shared", "--entry"));
    if (!anew && request.job.fromShared)
        throw UsageError(localized("%s needs %s", "--from-shared", "--entry"));
    if (const auto option = coverOption(request.job); option && !anew)
        throw UsageError(localized("%s needs %s", *option, "--to"));
    if (!anew && request.job.duplicates)
        throw UsageError(localized("%s needs %s", "--duplicates", "--to"));
    if (request.job.creditCardFile == "-" && request.job.recipients == "-")
        throw UsageError(
            localized("standard input is read once; give --credit-card-file another file than \"-\""));
    if (!anew && !job.chargesCard && (request.job.creditCard || request.job.creditCardFile))
        throw Error(localized("job %d charged no credit card; leave the card away", job.number));
    const std::string card = cardFor(job, request);
    if (anew)
        return makeAnew(line, setup, job, target.value_or(job.target), card);
    if (const auto form = otherForm(request.job, setup); form && *form != job.pdl)
        throw Error(
            localized("job %d is not in the form that the destination \"%s\" takes; send its document "
                      "with quelm-driver fax",
                      job.number, *request.job.destination));
    if (request.dryRun)
        return planAgain(job, target.value_or(job.target), line.json);
    const auto now = currentTime();
    const int again = outbox.sendAgain(job.number, card, now, false, target);
    try {
        handOverNow(outbox, again, now);
    } catch (const Error& error) {
        if (isThere(outbox, again))
            throw;
        // Nothing of the new job stays: the user knows the kept one.
        throw Error(
            // Translators: a job's number, and why.
            localized("job %d was not sent again: %s", job.number, withoutNumber(error.what(), again)));
    }
    if (line.json)
        writeJsonResult(resultLine(resultOf(outbox, again, ""), now));
}

} // namespace quelm
