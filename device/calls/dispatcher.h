// Renders jobs and calls their recipients, on so many lines at once.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DEVICE_CALLS_DISPATCHER_H
#define DEVICE_CALLS_DISPATCHER_H

#include "device/calls/device_clock.h"
#include "device/calls/dispatcher_settings.h"
#include "device/exchange/exchange.h"
#include "device/jobs/device_log.h"
#include "device/line/call.h"

#include <map>
#include <memory>
#include <vector>

namespace quelm::device {

/// A job is rendered whole before anybody is called for it, several jobs at once. Recipients whose turn it is
/// are called in the order of jobs and recipients, on as many lines as there are; those whom a call found
/// busy or not at home are called again behind a pause. A call that got through to a machine and failed is
/// not repeated: its receiver may hold pages already.
///
/// When the disk is full or the database cannot be written, nothing is lost: it is told of once, and the job,
/// the call or the sheet is tried again until it succeeds.
///
/// Works on threads of its own from its construction to its destruction, which lets no call go on: one that
/// is under way is broken off, and made again by the next device with this folder.
class Dispatcher {
public:
    /// All outlive it.
    Dispatcher(const StateFolder& folder, DeviceLog& log, const Exchange& exchange, DeviceClock& clock,
               DispatcherSettings settings);
    ~Dispatcher();
    Dispatcher(const Dispatcher&) = delete;
    Dispatcher& operator=(const Dispatcher&) = delete;

    /// A job was added.
    void wake();
    /// True when no job waits, none is rendered, no call is to be made, and no sheet is to be written but
    /// those of `sheetsGivenUp`.
    [[nodiscard]] bool isIdle();
    /// The jobs whose confirmation sheet could not be written, not for want of room, and is left to the next
    /// start.
    [[nodiscard]] std::vector<int> sheetsGivenUp();
    /// The calls that are under way, by their numbers.
    [[nodiscard]] std::map<int, CallProgress> progress();

private:
    struct State;
    std::unique_ptr<State> state_;
};

} // namespace quelm::device

#endif
