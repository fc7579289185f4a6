// The command `attributes`: the component's job attributes, byte for byte and write for write.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/atomic_file.h"
#include "base/error.h"
#include "base/translation.h"
#include "driver/cli/commands.h"
#include "driver/cli/filled_job.h"
#include "driver/jobs/job_writer.h"
#include "driver/jobs/pdl_writers.h"

#include <unistd.h>

namespace quelm {

void runAttributesCommand(const CommandLine& line)
{
    if (line.job.device || line.job.queue)
        throw UsageError(
            localized("attributes are no job that a device or queue could take; write them with --output"));
    FilledJob job(line);
    const auto output = line.job.output.value_or("-");
    if (output == "-") {
        DescriptorPdlWriter writer(STDOUT_FILENO, localized("standard output"));
        writeAttributes(job.session(), job.pdl(), writer);
        return;
    }
    AtomicFile file(output);
    DescriptorPdlWriter writer(file.descriptor(), output);
    writeAttributes(job.session(), job.pdl(), writer);
    file.commit();
}

} // namespace quelm
