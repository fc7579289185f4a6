// Makes one call: dials, is connected, and faxes.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DEVICE_CALLS_FAX_DIALLER_H
#define DEVICE_CALLS_FAX_DIALLER_H

#include "device/exchange/exchange.h"
#include "device/jobs/device_log.h"

#include <functional>
#include <string>

namespace quelm::device {

/// How a call ended, and what is remembered of it.
struct CallEnd {
    CallResult::Kind kind = CallResult::Kind::failed;
    CallRecord record;
};

/// Makes a call that was entered. `watch` is given the line time since the receiver was taken up, dialling
/// included. What the receiver keeps is in `incomingCall` then. Throws quelm::Error when the pages cannot be
/// read or what is received cannot be kept, which is NoRoom when a disk is full.
[[nodiscard]] CallEnd makeCall(const DueCall& due, const StateFolder& folder, const Exchange& exchange,
                               const std::string& identity, const CallWatch& watch);

} // namespace quelm::device

#endif
