// The command `fax`: a document and its fax job as one print stream.
#include "driver/cli/commands.h"

#include "driver/cli/filled_job.h"
#include "driver/cli/write_document.h"
#include "driver/core/error.h"
#include "driver/core/log.h"

#include <iostream>

namespace quelm {

void runFaxCommand(const CommandLine& line)
{
    refuseUnavailableOptions(line.job);
    if (!line.job.output)
        throw UsageError("say with --output FILE where the job goes; - is standard output");
    const auto document = openDocument(line.document);
    FilledJob job(line);
    writeDocument(job.session(), job.pdl(), document, *line.job.output);
    if (*line.job.output == "-")
        return;
    const auto count = job.recipientCount();
    std::cerr << oneLine(*line.job.output) << ": fax job of " << oneLine(document.path()) << " for " << count
              << (count == 1 ? " recipient" : " recipients") << std::endl;
}

} // namespace quelm
