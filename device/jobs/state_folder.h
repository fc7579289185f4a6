// The folder below which a device keeps all it has.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DEVICE_JOBS_STATE_FOLDER_H
#define DEVICE_JOBS_STATE_FOLDER_H

#include "base/file_handle.h"

#include <filesystem>
#include <string>

namespace quelm::device {

/// DIR of `quelm-device serve --state DIR`: mode 0700, and everything in it the device's alone. One device at
/// a time has it.
///
///   device.db           jobs, recipients, calls
///   lock                held by the device that runs
///   exchange.conf       what stands behind which number
///   incoming/           jobs and pages that are still coming
///   jobs/NUMBER/        job, pages.tif: of each job that was taken
///   received/NUMBER/    call-NUMBER.tif: what each telephone number received
///   printed/            job-NUMBER.tif: jobs that are no faxes
///   reports/            job-NUMBER.pdf, job-NUMBER.txt: confirmation sheets
///   unknown/            what lay there without being in device.db, once there was such a thing
class StateFolder {
public:
    /// Makes what is missing, closes to others what is open to them, and empties incoming/ of what is no
    /// call's. Throws quelm::Error when it cannot, when another device has the folder, or it is a link,
    /// another user's, or one that others may enter and that holds something else than a device's state.
    explicit StateFolder(const std::filesystem::path& folder);

    /// Absolute.
    const std::filesystem::path& path() const { return path_; }
    std::filesystem::path exchangeFile() const { return path_ / "exchange.conf"; }
    std::filesystem::path database() const { return path_ / "device.db"; }
    std::filesystem::path incoming() const { return path_ / "incoming"; }
    std::filesystem::path received() const { return path_ / "received"; }
    std::filesystem::path unknown() const { return path_ / "unknown"; }
    std::filesystem::path jobFile(int job) const;
    /// Stands beside a job's file until the job is in the database: its sender got no word for it yet.
    std::filesystem::path halfTakenMark(int job) const;
    std::filesystem::path pagesFile(int job) const;
    std::filesystem::path printedFile(int job) const;
    std::filesystem::path reportPdf(int job) const;
    std::filesystem::path reportText(int job) const;
    /// What a call's receiver has kept, ahead of and behind the moment when the call is known to have ended.
    std::filesystem::path incomingCall(int call) const;
    /// Throws quelm::Error when `number` is no name of a folder that an exchange gives: digits, "s" and "p".
    std::filesystem::path receivedCall(const std::string& number, int call) const;
    /// The number of the call whose file has this name in incoming/; 0 for none.
    static int callOf(const std::filesystem::path& incoming);

private:
    std::filesystem::path path_;
    FileHandle lock_;
};

} // namespace quelm::device

#endif
