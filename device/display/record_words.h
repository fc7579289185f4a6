// The words in which people read what the device remembers.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DEVICE_DISPLAY_RECORD_WORDS_H
#define DEVICE_DISPLAY_RECORD_WORDS_H

#include "device/jobs/job_records.h"

#include <chrono>
#include <string>

namespace quelm::device {

// All are one line of UTF-8 in the user's language, whatever the records hold.

/// "2026-11-22 21:43:10", as clocks here show it.
[[nodiscard]] std::string momentText(Moment moment);

/// "0:45", "1:02:03": minutes and seconds, and hours where there are some. As in the lines of events.
[[nodiscard]] std::string lineTimeText(std::chrono::milliseconds duration);

/// The job's title, or what stands for it when it has none.
[[nodiscard]] std::string titleText(const JobRecord& job);

/// "fine (204 x 196 dots per inch)"
[[nodiscard]] std::string resolutionText(Resolution resolution);

/// "up to 14,400 bit/s"
[[nodiscard]] std::string speedText(Speed speed);

[[nodiscard]] std::string jobStateText(JobState state);
[[nodiscard]] std::string recipientStateText(RecipientState state);

/// "3 pages"
[[nodiscard]] std::string pagesText(int pages);

/// "3 of 3"
[[nodiscard]] std::string pagesOfText(int sent, int pages);

/// How a call ended: its result and, unless the pages were sent, the modem library's own words and code. How
/// far it is, for one that has not ended.
[[nodiscard]] std::string callResultText(const CallRecord& call);

/// How the last call for a recipient ended, with what `last` says of it when it is there; empty when nobody
/// was called.
[[nodiscard]] std::string recipientResultText(const RecipientRecord& recipient, const CallRecord* last);

/// "14400 bit/s, error correction"; empty when both machines never agreed on a speed.
[[nodiscard]] std::string carriageText(const CallRecord& call);

/// "7 pieces sent again, 1 line damaged": what the line did to the pages; empty when it did nothing.
[[nodiscard]] std::string damageText(const CallRecord& call);

} // namespace quelm::device

#endif
