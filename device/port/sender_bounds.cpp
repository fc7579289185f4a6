// Weighs senders by how much of their jobs has come in which time.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/port/sender_bounds.h"

#include <algorithm>
#include <chrono>

namespace quelm::device {
namespace {

using Clock = SenderConnection::Clock;

/// Why a sender may give way, the best reason last.
enum class Reason { none, crowding, silent, slow };

} // namespace

Clock::time_point endOf(const SenderConnection& sender, const JobPortSettings& settings)
{
    const auto silent = sender.lastHeard() + settings.patience;
    if (sender.hasWholeJob())
        return silent;
    const std::chrono::duration<double> earned(static_cast<double>(sender.jobSize()) / settings.leastRate);
    const auto slow =
        sender.begun() + settings.patience + std::chrono::duration_cast<Clock::duration>(earned);
    return std::min(silent, slow);
}

Senders::iterator leastWorthy(Senders& senders, const JobPortSettings& settings, const std::string& newcomer)
{
    std::map<std::string, std::size_t> held;
    for (const auto& [ticket, connection] : senders)
        ++held[connection.from()];
    const auto now = Clock::now();
    const auto reason = [&](const SenderConnection& sender) {
        if (sender.isWaiting())
            return Reason::none;
        if (sender.rate() < settings.slowRate && now - sender.begun() >= settings.youth)
            return Reason::slow;
        if (now - sender.lastHeard() >= settings.silence)
            return Reason::silent;
        const bool isCrowding =
            sender.from() != newcomer && held[sender.from()] > settings.mostConnections / 2;
        return isCrowding ? Reason::crowding : Reason::none;
    };
    auto least = senders.end();
    auto best = Reason::none;
    for (auto one = senders.begin(); one != senders.end(); ++one) {
        const auto its = reason(one->second);
        if (its == Reason::none || its < best || (its == best && one->second.rate() >= least->second.rate()))
            continue;
        least = one;
        best = its;
    }
    return least;
}

} // namespace quelm::device
