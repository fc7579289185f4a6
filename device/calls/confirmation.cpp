// Writes confirmation sheets.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/calls/confirmation.h"

#include "base/atomic_file.h"
#include "base/disk_room.h"
#include "device/jobs/state_files.h"
#include "device/report/confirmation_sheet.h"

namespace quelm::device {

void writeConfirmation(const StateFolder& folder, DeviceLog& log, int job)
{
    const auto record = log.job(job);
    if (!record)
        return;
    const auto calls = log.callsOf(job);
    RoomWatch watch(folder.reportPdf(job).parent_path());
    try {
        AtomicFile text(folder.reportText(job));
        text.restrictToOwner();
        text.write(confirmationText(*record, calls));
        text.commit();
        writeConfirmationPdf(folder.reportPdf(job), *record, calls, folder.pagesFile(job));
        synchroniseFile(folder.reportPdf(job));
    } catch (const Error&) {
        watch.require();
        throw;
    }
}

} // namespace quelm::device
