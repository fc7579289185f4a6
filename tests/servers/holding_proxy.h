// A proxy that lets a job come half-way to its server, and holds it there.
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
    std::string address() const { return listener.address(); }

    /// True from when the bytes were passed on.
    bool isHolding() const { return holding; }
    void goOn() { released = true; }

private:
    void serve(int client, int stop);

    int serverPort;
    std::size_t mostBytes;
    std::atomic<bool> holding{false};
    std::atomic<bool> released{false};
    ServingListener listener; // last: its thread uses what stands above
};

} // namespace servers

#endif
