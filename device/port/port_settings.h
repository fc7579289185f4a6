// What a port for jobs is to be.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DEVICE_PORT_PORT_SETTINGS_H
#define DEVICE_PORT_PORT_SETTINGS_H

#include "device/jobs/job_records.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace quelm::device {

struct JobPortSettings {
    std::vector<std::string> addresses = {"127.0.0.1", "::1"}; ///< numeric
    std::uint16_t port = 9100; ///< 0 for any free one, the same for all addresses
    std::size_t mostConnections = 64;
    std::uint64_t largestJob = std::uint64_t{512} << 20U; ///< bytes
    int mostWaitingJobs = 1000; ///< in the log; behind that, senders are turned away
    /// With a sender that sends nothing, and ahead of the least rate.
    std::chrono::milliseconds patience{std::chrono::seconds(30)};
    double leastRate = 100; ///< bytes in a second that a job has to bring on average
    /// Where all places are taken, a sender that is older than this and slower than that gives way.
    std::chrono::milliseconds youth{std::chrono::seconds(3)};
    double slowRate = 1024;
    /// One that has sent nothing for so long gives way when none is slower.
    std::chrono::milliseconds silence{std::chrono::seconds(1)};
    /// How often it is told that senders were turned away.
    std::chrono::milliseconds quiet{std::chrono::seconds(5)};
    std::function<Moment()> now;
    /// A job was taken, or refused: its number.
    std::function<void(int job)> taken;
    /// Receives each thing that happens as one line, on the port's thread:
    ///
    ///   job 1: received from 127.0.0.1, 48213 bytes
    ///   job 2: refused: line 7: REASON
    ///   job from 127.0.0.1: not kept: REASON
    ///
    /// Programs read these words, which are English in every language; a reason is a sentence for people.
    std::function<void(const std::string& line)> tell;
};

} // namespace quelm::device

#endif
