// Writes sheets one after the other.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/calls/sheet_work.h"

#include "base/disk_room.h"
#include "device/calls/confirmation.h"
#include "device/calls/event_lines.h"

#include <algorithm>
#include <string>

namespace quelm::device {

bool SheetWork::writeNext()
{
    for (const int job : work_.log.missingReports()) {
        if (isGivenUp(job) || !work_.sheets.take(job))
            continue;
        const std::string what = "sheet " + std::to_string(job);
        bool isWritten = false;
        try {
            writeConfirmation(work_.folder, work_.log, job);
            isWritten = true;
            work_.log.setReported(job);
            work_.noTrouble(what);
            work_.sheets.finish(job);
            work_.tell(reportLine(job, work_.folder.reportPdf(job).filename()));
        } catch (const NoRoom& error) {
            work_.sheets.postpone(job);
            work_.tellTrouble(what, error);
        } catch (const std::exception& error) {
            // The database's failures pass.
            if (isWritten) {
                work_.sheets.postpone(job);
            } else {
                work_.sheets.finish(job);
                const std::lock_guard lock(mutex_);
                givenUp_.insert(job);
            }
            work_.tellTrouble(what, error);
        }
        return true;
    }
    return false;
}

bool SheetWork::isGivenUp(int job)
{
    const std::lock_guard lock(mutex_);
    return givenUp_.contains(job);
}

bool SheetWork::isDone()
{
    return std::ranges::all_of(work_.log.missingReports(), [this](int job) { return isGivenUp(job); });
}

std::vector<int> SheetWork::givenUp()
{
    const std::lock_guard lock(mutex_);
    return {givenUp_.begin(), givenUp_.end()};
}

} // namespace quelm::device
