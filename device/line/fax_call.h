// One telephone call between two fax machines, sample by sample.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DEVICE_LINE_FAX_CALL_H
#define DEVICE_LINE_FAX_CALL_H

#include "device/line/call.h"

#include <chrono>
#include <string>

namespace quelm::device {

/// Dials `keys` ("0" to "9", "*", "#" and "," for a pause of two seconds) as tones, and returns what an
/// exchange at the other end of the line hears, pauses included. `duration` grows by the line time that this
/// takes. Throws quelm::Error for another key.
std::string dialTones(const std::string& keys, std::chrono::milliseconds& duration);

/// Carries a call whose dialling is done to its end. Nothing is random but the noise, which is the same each
/// time for a `seed`. The file that a fax machine keeps is there when it received at least one page, and is
/// whole and durable; it holds nothing but the pages, so that equal calls keep equal files.
///
/// Several calls may go on at once, each on a thread. The program ignores SIGXFSZ, so that a file that may
/// not grow any more is an error. Throws quelm::Error when the pages cannot be read, or what was received
/// cannot be kept, which is NoRoom when a disk is full: such a call is to be made again.
CallResult carryCall(const CallingFax& caller, const AnsweringParty& answering, const CallWatch& watch = {},
                     unsigned seed = 1);

} // namespace quelm::device

#endif
