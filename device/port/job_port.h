// Takes jobs from the network, many senders at once.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DEVICE_PORT_JOB_PORT_H
#define DEVICE_PORT_JOB_PORT_H

#include "device/jobs/device_log.h"
#include "device/port/port_settings.h"

#include <memory>
#include <string>
#include <vector>

namespace quelm::device {

/// Listens from its construction to its destruction, on a thread of its own.
///
/// A connection brings one job. It is closed in order when the job is kept: that is the device's word for it.
/// It is reset when the job was refused, did not come whole, or cannot be kept, and when anything but blanks
/// and UEL follows it: nothing is kept of the connection then.
class JobPort {
public:
    /// Throws quelm::Error that names the address when it cannot listen there. An address of IPv6 is left out
    /// on a machine without it.
    JobPort(const StateFolder& folder, DeviceLog& log, JobPortSettings settings);
    ~JobPort();
    JobPort(const JobPort&) = delete;
    JobPort& operator=(const JobPort&) = delete;

    /// Where it listens: "127.0.0.1:9100", "[::1]:9100".
    [[nodiscard]] std::vector<std::string> addresses() const;
    /// True when no connection is open.
    [[nodiscard]] bool isIdle() const;

private:
    struct State;
    std::unique_ptr<State> state_;
};

} // namespace quelm::device

#endif
