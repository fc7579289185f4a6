// Renders jobs, and tells a full disk from a bad document.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/calls/job_rendering.h"

#include "device/jobs/state_files.h"

#include <string>

namespace quelm::device {
namespace {

int render(const JobRecord& job, const StateFolder& folder, const PageBounds& bounds)
{
    const std::string file = folder.jobFile(job.number);
    const ReceivedJob& reading = job.reading;
    if (!reading.isFax)
        return printPages(file, reading.postScriptBegin, reading.postScriptEnd,
                          folder.printedFile(job.number), bounds);
    return renderPages(file, reading.postScriptBegin, reading.postScriptEnd, densityOf(reading.resolution),
                       folder.pagesFile(job.number), bounds);
}

} // namespace

PageDensity densityOf(Resolution resolution)
{
    constexpr int across = 204;
    switch (resolution) {
    case Resolution::fine:
        return {across, 196};
    case Resolution::superfine:
        return {across, 391};
    case Resolution::standard:
        break;
    }
    return {across, 98};
}

int renderJob(const JobRecord& job, const StateFolder& folder, const PageBounds& bounds)
{
    removeQuietly(job.reading.isFax ? folder.pagesFile(job.number) : folder.printedFile(job.number));
    try {
        return render(job, folder, bounds);
    } catch (const Error&) {
        requireRoom(folder.path());
        throw;
    }
}

} // namespace quelm::device
