// How long senders are waited for, and which of them gives way to another.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DEVICE_PORT_SENDER_BOUNDS_H
#define DEVICE_PORT_SENDER_BOUNDS_H

#include "device/port/port_settings.h"
#include "device/port/sender_connection.h"

#include <cstdint>
#include <map>
#include <string>

namespace quelm::device {

/// The connections of a port by their tickets, the oldest first.
using Senders = std::map<std::uint64_t, SenderConnection>;

/// When a sender is waited for no longer: it has sent nothing, or less than the least rate asks for.
[[nodiscard]] SenderConnection::Clock::time_point endOf(const SenderConnection& sender,
                                                        const JobPortSettings& settings);

/// Which sender gives its place to one from the address `newcomer`, when all are taken; the end when none
/// does. It is the slowest of those that are slow, else the slowest of those that have fallen silent, else
/// the slowest of another address that holds more than half of the places. A job that waits for its verdict
/// stays.
[[nodiscard]] Senders::iterator leastWorthy(Senders& senders, const JobPortSettings& settings,
                                            const std::string& newcomer);

} // namespace quelm::device

#endif
