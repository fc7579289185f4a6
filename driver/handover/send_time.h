// When a fax is to be sent, as the fax dialog says it.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_HANDOVER_SEND_TIME_H
#define DRIVER_HANDOVER_SEND_TIME_H

#include <ctime>
#include <optional>
#include <string>

namespace quelm {

class Driver;

/// A time of day on the 12-hour clock.
struct ClockTime {
    int hour = 12; ///< 1 to 12; 12 is midnight in the morning and noon in the afternoon
    int minute = 0;
    bool isAfternoon = false;
};

/// The next moment, in local time, at which a clock shows `time`: nothing when that is the current minute,
/// and tomorrow when it is past today. A time that the change to summer time leaves out is taken as much
/// later as the clocks are put forward; of one that comes twice it is the next one that is to come.
[[nodiscard]] std::optional<std::time_t> nextMoment(const ClockTime& time, std::time_t now);

/// The moment that the fax dialog's "Send At" asks for; nothing for a fax that goes out at once. Throws
/// quelm::Error when the component's dialogs lack these widgets.
[[nodiscard]] std::optional<std::time_t> chosenMoment(const Driver& driver, std::time_t now);

/// The same moment, or nothing when it has passed by now: a fax goes out at once then. The moment itself is
/// found once, when the user asks for the fax; found again later, while the document is read, say, it would
/// be tomorrow's.
[[nodiscard]] std::optional<std::time_t> stillAhead(std::optional<std::time_t> moment, std::time_t now);

/// A moment for people, in local time: "today at 16:05", "tomorrow at 04:05", "on 2026-11-30 at 04:05".
[[nodiscard]] std::string shownMoment(std::time_t moment, std::time_t now);

} // namespace quelm

#endif
