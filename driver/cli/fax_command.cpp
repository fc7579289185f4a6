// The command `fax`: a document and its fax job as one print stream.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/clock.h"
#include "base/error.h"
#include "base/translation.h"
#include "driver/cli/commands.h"
#include "driver/cli/filled_job.h"
#include "driver/cli/filled_sending.h"
#include "driver/cli/job/cover_picture.h"
#include "driver/cli/job/given_target.h"
#include "driver/cli/job/say.h"
#include "driver/cli/job/write_document.h"

#include <ctime>
#include <optional>

namespace quelm {
namespace {

UsageError twoAnswers(const std::string& option)
{
    // Translators: two options.
    return UsageError(localized("%s and %s both write to standard output; name a file", "--json", option));
}

/// The one place that the user named, or the default destination; nothing for a preview or a summary alone.
std::optional<JobTarget> targetOf(const JobOptions& options, const DriverSetup& setup)
{
    auto target = givenTarget(options, setup.destinations);
    const bool isPreviewAlone = options.coverPreview && !options.toOutbox && !options.dryRun;
    if (!target && !isPreviewAlone && setup.destination)
        target = setup.destination->target;
    const auto* file = target ? std::get_if<FileTarget>(&*target) : nullptr;
    if (file != nullptr && options.coverPreview && leadToOneFile(file->path, *options.coverPreview))
        throw UsageError(localized("--cover-preview and --output name the same file; name two"));
    if (options.toOutbox && file != nullptr && file->path == "-")
        throw UsageError(
            localized("standard output cannot wait in the outbox; name a file, device or queue"));
    if (options.asJson && file != nullptr && file->path == "-")
        throw twoAnswers("--output -");
    if (options.asJson && options.coverPreview == "-")
        throw twoAnswers("--cover-preview -");
    if (target || options.dryRun || isPreviewAlone)
        return target;
    throw UsageError(localized("say with --output FILE, --device HOST, --queue NAME or --destination NAME "
                               "where the job goes; --output - is standard output"));
}

void drawCover(FilledJob& job, const std::string& picture)
{
    writeCoverPicture(job.session(), picture);
    if (picture == "-")
        return;
    const auto count = job.recipientCount();
    // Translators: a file.
    const auto text =
        localizedCount("%s: cover page of the fax job for %d recipient",
                       "%s: cover page of the fax job for %d recipients", count, picture, count);
    say(text);
}

/// Refuses a picture in the place of a file that the command reads.
void refusePictureOverInput(const std::string& picture, const std::optional<Document>& document,
                            const JobOptions& options)
{
    if (picture != "-" && document && document->isSameFile(picture))
        throw Error(localized("%s: is the document itself; name another file for the picture", picture));
    for (const auto& input : {options.recipients, options.creditCardFile})
        if (input && *input != "-" && leadToOneFile(picture, *input))
            throw Error(
                localized("%s: the command reads this file; name another file for the picture", picture));
}

/// When the user gave the command. The driver stops its clock, where it is to stand still, later.
std::time_t beginOf(const CommandLine& line)
{
    return line.driver.now.empty() ? currentTime() : momentOf(parseLocalTime(line.driver.now));
}

} // namespace

void runFaxCommand(const CommandLine& line)
{
    // Opening the document, and asking, may take a while.
    const auto begun = beginOf(line);
    const auto setup = setUpForOneCommand(line);
    const auto target = targetOf(line.job, setup);
    std::optional<Document> document;
    if (line.hasDocument)
        document = openDocument(line.document);
    const auto& picture = line.job.coverPreview;
    if (picture)
        refusePictureOverInput(*picture, document, line.job);
    FilledJob job(line, setup);
    if (picture)
        drawCover(job, *picture);
    if (line.job.dryRun) {
        auto planned = submissionOf(job, target.value_or(FileTarget{}), begun);
        planned.toOutbox = line.job.toOutbox;
        return sumUp(job, *document, target, planned, line.job.asJson);
    }
    if (!target && line.job.asJson)
        return answerPreview(job, *picture);
    if (!target)
        return;
    Submission submission = submissionOf(job, *target, begun);
    submission.toOutbox = line.job.toOutbox;
    sendFilled(job, *document, submission, {document->path(), line.job.asJson, picture.value_or("")});
}

} // namespace quelm
