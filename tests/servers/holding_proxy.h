// A proxy that lets a job come half-way to its server, and holds it there.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef TESTS_SERVERS_HOLDING_PROXY_H
#define TESTS_SERVERS_HOLDING_PROXY_H

#include "tests/servers/listeners.h"

#include <atomic>
#include <cstddef>
#include <string>

namespace servers {

/// Passes everything on to the server at 127.0.0.1:PORT and back, but of the first connection no more than
/// so many bytes before `goOn` is called.
class HoldingProxy {
public:
    HoldingProxy(int port, std::size_t bytes);

    /// "127.0.0.1:PORT"
    std::string address() const { return listener_.address(); }

    /// True from when the bytes were passed on.
    bool isHolding() const { return holding_; }
    void goOn() { released_ = true; }

private:
    void serve(int client, int stop);

    int serverPort_;
    std::size_t mostBytes_;
    std::atomic<bool> holding_{false};
    std::atomic<bool> released_{false};
    ServingListener listener_; // last: its thread uses what stands above
};

} // namespace servers

#endif
