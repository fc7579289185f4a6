// Renders jobs, and enters what became of them.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/calls/rendering_work.h"

#include "base/error.h"
#include "device/calls/event_lines.h"
#include "device/calls/job_rendering.h"

#include <optional>
#include <string>

namespace quelm::device {
namespace {

std::optional<JobRecord> takeJob(DeviceWork& work)
{
    auto job = work.log.nextToRender();
    while (job && !work.renderings.take(job->number))
        job = work.log.nextToRender(job->number);
    return job;
}

void render(DeviceWork& work, const JobRecord& job)
{
    int pages = 0;
    try {
        pages = renderJob(job, work.folder, work.settings.pages);
    } catch (const NoRoom&) {
        throw;
    } catch (const Error& error) {
        if (work.isStopping())
            return;
        work.log.setFailed(job.number, error.what());
        work.tell(failedLine(job.number, error.what()));
        return;
    }
    if (!job.reading.isFax) {
        work.log.setPrinted(job.number, pages);
        work.tell(printedLine(job.number, pages));
        return;
    }
    // Behind the entry, calls begin, of which the lines may be told before this one's.
    work.tellOf([&] {
        work.log.setRendered(job.number, pages, work.clock.now());
        return renderedLine(job, pages);
    });
}

} // namespace

bool renderNext(DeviceWork& work)
{
    const auto job = takeJob(work);
    if (!job)
        return false;
    const std::string what = "rendering " + std::to_string(job->number);
    try {
        // Another thread may have been done with it since it was looked up.
        const auto current = work.log.job(job->number);
        if (current && current->state == JobState::received)
            render(work, *job);
        work.noTrouble(what);
        work.renderings.finish(job->number);
    } catch (const std::exception& error) {
        work.renderings.postpone(job->number);
        work.tellTrouble(what, error);
    }
    return true;
}

} // namespace quelm::device
