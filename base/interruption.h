// Lets long work end in order when the user presses Ctrl-C.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef BASE_INTERRUPTION_H
#define BASE_INTERRUPTION_H

#include <array>
#include <csignal>

namespace quelm {

/// While it lives, SIGINT, SIGTERM and SIGHUP are noted instead of ending the program; the work asks now and
/// then, and stops. At the end of its life the signal is raised again and does what it would have
/// done. Signals that were ignored stay so. At most one lives at a time.
class Interruption {
public:
    Interruption();
    ~Interruption();
    Interruption(const Interruption&) = delete;
    Interruption& operator=(const Interruption&) = delete;

    /// True once a signal has come.
    static bool requested();

private:
    static constexpr std::array signals{SIGINT, SIGTERM, SIGHUP};
    std::array<struct sigaction, signals.size()> previous_{};
};

} // namespace quelm

#endif
