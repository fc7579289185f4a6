// The command `fax`: a document and its fax job as one print stream.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/error.h"
#include "base/texts.h"
#include "base/translation.h"
#include "driver/cli/commands.h"
#include "driver/cli/filled_job.h"
#include "driver/cli/job/cover_picture.h"
#include "driver/cli/job/write_document.h"

#include <iostream>
#include <optional>

namespace quelm {
namespace {

/// The one place that the user named; nothing for a preview alone.
std::optional<JobTarget> targetOf(const JobOptions& options)
{
    const int given = (options.output ? 1 : 0) + (options.device ? 1 : 0) + (options.queue ? 1 : 0);
    if (given > 1)
        throw UsageError(localized("a job goes to one place; give one of --output, --device and --queue"));
    if (options.device)
        return *options.device;
    if (options.queue)
        return QueueTarget{*options.queue};
    if (options.output && options.coverPreview && leadToOneFile(*options.output, *options.coverPreview))
        throw UsageError(localized("--cover-preview and --output name the same file; name two"));
    if (options.output)
        return FileTarget{*options.output};
    if (options.coverPreview)
        return std::nullopt;
    throw UsageError(localized("say with --output FILE, --device HOST or --queue NAME where the job goes; "
                               "--output - is standard output"));
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
    std::cerr << messageLine(text) << std::endl;
}

void sendJob(FilledJob& job, const Document& document, const JobTarget& target)
{
    const auto count = job.recipientCount();
    const auto tell = [&](const Receipt& receipt) {
        const auto* file = std::get_if<FileTarget>(&target);
        if (file != nullptr && file->path == "-")
            return job.tellKeptCard();
        // Translators: a file, its document.
        auto text = file != nullptr ? localizedCount("%s: fax job of %s for %d recipient",
                                                     "%s: fax job of %s for %d recipients", count,
                                                     receipt.place, document.path(), count)
                                    // Translators: a device or queue, its document.
                                    : localizedCount("%s: fax job of %s for %d recipient handed over",
                                                     "%s: fax job of %s for %d recipients handed over", count,
                                                     receipt.place, document.path(), count);
        if (!receipt.note.empty())
            text += "; " + receipt.note;
        text += behindSummary(job.remarks());
        std::cerr << messageLine(text) << std::endl;
    };
    writeDocument(job.session(), job.pdl(), document, target, job.user(), tell);
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

} // namespace

void runFaxCommand(const CommandLine& line)
{
    const auto target = targetOf(line.job);
    std::optional<Document> document;
    if (line.hasDocument)
        document = openDocument(line.document);
    const auto& picture = line.job.coverPreview;
    if (picture)
        refusePictureOverInput(*picture, document, line.job);
    FilledJob job(line);
    if (picture)
        drawCover(job, *picture);
    if (target)
        sendJob(job, *document, *target);
}

} // namespace quelm
