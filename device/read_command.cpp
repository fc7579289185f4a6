// Answers what a device would do with a job, and ends as the device would.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/read_command.h"

#include "base/command_line/json_answer.h"
#include "base/error.h"
#include "base/standard_output.h"
#include "device/job_reading.h"
#include "device/reading_answer.h"

namespace quelm::device {

void runReadCommand(const ReadOptions& options)
{
    const auto jobs = readJobs(options.job, options.render);
    if (options.asJson)
        writeJsonAnswer(readingJson(jobs));
    else
        writeAnswer(readingText(jobs));
    if (const auto refusal = refusalLine(jobs); !refusal.empty())
        throw Error(refusal);
}

} // namespace quelm::device
