// The command `fax`: a document and its fax job as one print stream.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/error.h"
#include "base/texts.h"
#include "base/translation.h"
#include "driver/cli/commands.h"
#include "driver/cli/filled_job.h"
#include "driver/cli/job/write_document.h"

#include <iostream>

namespace quelm {
namespace {

/// The one place that the user named.
JobTarget targetOf(const JobOptions& options)
{
    const int given = (options.output ? 1 : 0) + (options.device ? 1 : 0) + (options.queue ? 1 : 0);
    if (given > 1)
        throw UsageError(localized("a job goes to one place; give one of --output, --device and --queue"));
    if (options.device)
        return *options.device;
    if (options.queue)
        return QueueTarget{*options.queue};
    if (options.output)
        return FileTarget{*options.output};
    throw UsageError(localized("say with --output FILE, --device HOST or --queue NAME where the job goes; "
                               "--output - is standard output"));
}

} // namespace

void runFaxCommand(const CommandLine& line)
{
    const auto target = targetOf(line.job);
    const auto document = openDocument(line.document);
    FilledJob job(line);
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

} // namespace quelm
