// Whether a print server can be trusted to hold a job until its time.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_QUEUE_QUEUE_HOLD_H
#define DRIVER_QUEUE_QUEUE_HOLD_H

#include "driver/queue/cups_server.h"
#include "driver/queue/server_job.h"

#include <ctime>
#include <optional>
#include <string>

namespace quelm {

/// A moment as a server is told when to release a job: its time of day in UTC, "22:05:00". The server takes
/// the next such time by its own clock.
[[nodiscard]] std::string holdTime(std::time_t moment);

/// A date and time of IPP (11 bytes, with the difference from UTC in it) as a point in time; nothing for
/// one that there is not.
[[nodiscard]] std::optional<std::time_t> timeInIpp(const ipp_uchar_t* date);

/// Asks what the server's clock shows: what it says as "printer-current-time", because this is the clock that
/// it holds jobs by. The date of its HTTP answer may be that of a proxy.
[[nodiscard]] IppAnswer askForClock(CupsServer& server, const std::string& queue, const std::string& user);

/// Why a job cannot be left with a queue until `moment`, as the end of a sentence about the queue; empty when
/// it can: the moment is some minutes to nearly a day ahead, and the server's clock differs by no more than a
/// minute. `clock` is the answer of `askForClock`, which was asked at `asked` and is just there.
[[nodiscard]] std::string holdTrouble(const CupsServer& server, const IppAnswer& clock, std::time_t asked,
                                      std::time_t moment);

/// True when the server holds the job until `moment`.
[[nodiscard]] bool isHeldUntil(const ServerJob& job, std::time_t moment);

} // namespace quelm

#endif
