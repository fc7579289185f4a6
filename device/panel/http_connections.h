// Takes connections and answers each on a thread of its own, so many at once.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DEVICE_PANEL_HTTP_CONNECTIONS_H
#define DEVICE_PANEL_HTTP_CONNECTIONS_H

#include "base/file_handle.h"

#include <atomic>
#include <cstddef>
#include <functional>
#include <list>
#include <thread>

namespace quelm::device {

/// Works from its construction to its destruction, which ends what is being answered.
class HttpConnections {
public:
    /// Answers on the connection, a non-blocking socket. Ends soon once the socket is shut down.
    using Serve = std::function<void(const FileHandle& socket)>;

    /// When `most` connections are open and another comes, the oldest is shut down: whoever says nothing
    /// holds nobody up.
    HttpConnections(FileHandle listening, std::size_t most, Serve serve);
    ~HttpConnections();
    HttpConnections(const HttpConnections&) = delete;
    HttpConnections& operator=(const HttpConnections&) = delete;

private:
    struct Connection {
        FileHandle socket; // closed on the accepting thread, which alone shuts others' down
        std::atomic<bool> isDone = false;
        bool isShutDown = false;
        std::thread thread;
    };

    void acceptAll();
    void take(FileHandle socket);
    void makeRoom();
    [[nodiscard]] bool isCrowded() const;
    void removeDone();
    void ring() const;

    FileHandle listening_;
    FileHandle bell_;
    std::size_t most_;
    Serve serve_;
    std::list<Connection> connections_; // the accepting thread's, the oldest first
    std::atomic<bool> isStopping_ = false;
    std::thread acceptor_;
};

} // namespace quelm::device

#endif
