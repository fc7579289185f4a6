// What a report says of how a call ended.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DEVICE_LINE_CALL_WORDS_H
#define DEVICE_LINE_CALL_WORDS_H

#include "device/line/call.h"

#include <string>

namespace quelm::device {

/// What happened beside what the modem library has a code for.
enum class CallEvent {
    none,
    damagedRows, ///< the pages went through, but not without damage
    hungUp,      ///< the other machine did
    outOfPaper,
    noisyLine,
    tooLong ///< it took longer than any call may
};

/// The field's words, in the user's language.
[[nodiscard]] std::string callWords(CallResult::Kind kind, int code, CallEvent event = CallEvent::none);

/// The modem library's own words for its completion code, in English.
[[nodiscard]] std::string libraryWords(int code);

} // namespace quelm::device

#endif
