// The command `attributes`: the component's job attributes, byte for byte and write for write.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/error.h"
#include "base/translation.h"
#include "driver/cli/commands.h"
#include "driver/cli/filled_job.h"
#include "driver/jobs/job_writer.h"
#include "driver/jobs/output.h"
#include "driver/jobs/pdl_writers.h"

#include <unistd.h>

namespace quelm {
namespace {

void write(FilledJob& job, const std::string& output)
{
    if (output == "-") {
        DescriptorPdlWriter writer(STDOUT_FILENO, localized("standard output"));
        return writeAttributes(job.session(), job.pdl(), writer);
    }
    const auto destination = openOutput(output);
    SinkPdlWriter writer(destination->sink());
    writeAttributes(job.session(), job.pdl(), writer, [&destination] { destination->restrictToOwner(); });
    destination->deliver();
}

} // namespace

void runAttributesCommand(const CommandLine& line)
{
    if (line.job.device || line.job.queue || line.job.destination)
        throw UsageError(
            localized("attributes are no job that a device or queue could take; write them with --output"));
    FilledJob job(line);
    write(job, line.job.output.value_or("-"));
    job.tellKeptCard();
}

} // namespace quelm
