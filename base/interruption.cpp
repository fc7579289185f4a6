// Notes signals.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/interruption.h"

#include <cstddef>

namespace quelm {
namespace {

volatile std::sig_atomic_t received = 0;

void note(int signal) { received = signal; }

} // namespace

Interruption::Interruption()
{
    received = 0;
    struct sigaction noting {};
    noting.sa_handler = note;
    noting.sa_flags = SA_RESTART;
    sigemptyset(&noting.sa_mask);
    for (std::size_t i = 0; i < signals.size(); ++i) {
        sigaction(signals.at(i), nullptr, &previous_.at(i));
        if (previous_.at(i).sa_handler != SIG_IGN)
            sigaction(signals.at(i), &noting, nullptr);
    }
}

Interruption::~Interruption()
{
    for (std::size_t i = 0; i < signals.size(); ++i)
        sigaction(signals.at(i), &previous_.at(i), nullptr);
    if (received != 0)
        std::raise(received);
}

bool Interruption::requested() { return received != 0; }

} // namespace quelm
