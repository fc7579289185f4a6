// The command `attributes`: the component's job attributes, byte for byte and write for write.
#include "driver/cli/commands.h"

#include "driver/cli/filled_job.h"
#include "driver/core/atomic_file.h"
#include "driver/jobs/job_writer.h"
#include "driver/jobs/pdl_writers.h"

#include <unistd.h>

namespace quelm {

void runAttributesCommand(const CommandLine& line)
{
    refuseUnavailableOptions(line.job);
    FilledJob job(line);
    const auto output = line.job.output.value_or("-");
    if (output == "-") {
        DescriptorPdlWriter writer(STDOUT_FILENO, "standard output");
        writeAttributes(job.session(), job.pdl(), writer);
        return;
    }
    AtomicFile file(output);
    DescriptorPdlWriter writer(file.descriptor(), output);
    writeAttributes(job.session(), job.pdl(), writer);
    file.commit();
}

} // namespace quelm
