// From a filled job and a document to the output.
#include "driver/cli/write_document.h"

#include "driver/core/clock.h"
#include "driver/core/log.h"
#include "driver/core/progress_line.h"
#include "driver/jobs/job_writer.h"
#include "driver/jobs/output.h"

namespace quelm {

Document openDocument(const std::string& path)
{
    auto document = Document::open(path);
    for (const auto& warning : document.warnings())
        log(Severity::warning, warning);
    return document;
}

void writeDocument(FaxSession& session, Pdl pdl, const Document& document, const std::string& output)
{
    ProgressLine progress("Writing the job");
    JobFacts facts;
    facts.creator = "quelm-driver " QUELM_DRIVER_VERSION;
    facts.now = localTime();
    facts.progress = [&progress](std::uint64_t done, std::uint64_t total) { progress.show(done, total); };
    const auto destination = openOutput(output, document);
    writeFaxJob(session, document, pdl, destination->sink(), facts);
    destination->deliver();
}

} // namespace quelm
