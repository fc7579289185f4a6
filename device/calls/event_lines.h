// The lines in which a device says what happens.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DEVICE_CALLS_EVENT_LINES_H
#define DEVICE_CALLS_EVENT_LINES_H

#include "device/jobs/job_records.h"
#include "device/line/fax_call.h"

#include <optional>
#include <string>

namespace quelm::device {

// Programs read these lines: their words are English in every language, but for a reason behind the last
// colon, which is a sentence for people.
//
//   job 1: fax to 2 recipients from 127.0.0.1, 3 pages                    it is rendered, and dialling begins
//   job 2: printed, 1 page                                                it was no fax
//   job 3: failed: REASON                                                 it cannot be rendered
//   call 1: job 1, 5550104477: busy, 14 s, again at 21:43:10              or "no answer"
//   call 7: job 1, 5550104477: busy, 14 s, given up
//   call 2: job 1, 5550104477: sent, 3 pages, 14400 bit/s, 41 s
//   call 2: job 1, 5550104477: sent, with damaged lines, 3 pages, ...     without error correction
//   call 3: job 1, 5550108812: failed, 1 page, 14400 bit/s, 33 s: REASON  pages and speed when there were any
//   call 4: job 1, 5550108812: broken off                                 the device stops; it is made again
//   job 1: done, 1 of 2 sent
//   job 1: confirmation sheet job-1.pdf                                   it asked for one
//   trouble: REASON                                                       of the disk: what failed is tried
//   again
//
// A call's number is the keys that were pressed, with a comma for each pause; a card's keys stand nowhere.
// Times are local.

[[nodiscard]] std::string renderedLine(const JobRecord& job, int pages);
[[nodiscard]] std::string printedLine(int job, int pages);
[[nodiscard]] std::string failedLine(int job, const std::string& reason);
[[nodiscard]] std::string callLine(const CallRecord& call, CallResult::Kind kind, const std::string& keys,
                                   std::optional<Moment> again);
[[nodiscard]] std::string doneLine(const JobRecord& job);
[[nodiscard]] std::string reportLine(int job, const std::string& file);
[[nodiscard]] std::string troubleLine(const std::string& reason);

} // namespace quelm::device

#endif
