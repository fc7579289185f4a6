// Writes the confirmation sheets that jobs asked for.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DEVICE_CALLS_SHEET_WORK_H
#define DEVICE_CALLS_SHEET_WORK_H

#include "device/calls/device_work.h"

#include <mutex>
#include <set>
#include <vector>

namespace quelm::device {

/// One thread writes; any may ask.
class SheetWork {
public:
    explicit SheetWork(DeviceWork& work) : work_(work) {}

    /// Writes the next sheet; false when there is none. One that fails for the disk's or the database's sake
    /// rests; any other failure is told of, and left to the next start.
    bool writeNext();
    /// True when every sheet is written or given up.
    [[nodiscard]] bool isDone();
    /// The jobs whose sheets are left to the next start.
    [[nodiscard]] std::vector<int> givenUp();

private:
    bool isGivenUp(int job);

    DeviceWork& work_;
    std::mutex mutex_;
    std::set<int> givenUp_;
};

} // namespace quelm::device

#endif
