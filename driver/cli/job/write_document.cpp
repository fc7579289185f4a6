// From a filled job and a document to the place that takes it.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/cli/job/write_document.h"

#include "base/clock.h"
#include "base/error.h"
#include "base/interruption.h"
#include "base/log.h"
#include "base/terminal/progress_line.h"
#include "base/texts.h"
#include "base/translation.h"
#include "base/version.h"

namespace quelm {
namespace {

/// A job that is cut off on its way can do harm at the device. So a signal is no sudden end here.
Receipt send(JobDestination& destination)
{
    ProgressLine progress(localized("Sending the job"));
    Transfer transfer;
    transfer.progress = [&progress](std::uint64_t done, std::uint64_t total) { progress.show(done, total); };
    transfer.cancelled = &Interruption::requested;
    try {
        return destination.deliver(transfer);
    } catch (const Error& error) {
        // The signal that comes next leaves nobody who could tell.
        if (Interruption::requested()) {
            progress.wipe();
            writeUnderProgramName(oneLine(error.what()));
        }
        throw;
    }
}

} // namespace

Document openDocument(const std::string& path)
{
    auto document = Document::open(path);
    for (const auto& warning : document.warnings())
        log(Severity::warning, warning);
    return document;
}

JobFacts factsOfNow()
{
    JobFacts facts;
    facts.creator = programAndVersion("quelm-driver");
    facts.now = localTime();
    return facts;
}

void writeDocument(FaxSession& session, Pdl pdl, const Document& document, const JobTarget& target,
                   const std::string& user, const std::function<void(const Receipt&)>& tell)
{
    const auto destination = openDestination(target, {document.name(), user}, &document);
    {
        ProgressLine progress(localized("Writing the job"));
        JobFacts facts = factsOfNow();
        facts.progress = [&progress](std::uint64_t done, std::uint64_t total) { progress.show(done, total); };
        facts.beforeCreditCard = [&destination] { destination->restrictToOwner(); };
        writeFaxJob(session, document, pdl, destination->sink(), facts);
    }
    if (std::holds_alternative<FileTarget>(target))
        return tell(destination->deliver());
    const Interruption interruption;
    tell(send(*destination));
}

} // namespace quelm
