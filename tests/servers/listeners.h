// TCP peers that misbehave: they accept and say nothing, hang up, talk rubbish, or cut a connection.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef TESTS_SERVERS_LISTENERS_H
#define TESTS_SERVERS_LISTENERS_H

#include <atomic>
#include <cstddef>
#include <functional>
#include <string>
#include <thread>
#include <vector>

namespace servers {

/// A listening socket on 127.0.0.1. It is never served: connections are established by the kernel,
/// as far as the backlog allows, and then nothing happens.
class SilentListener {
public:
    SilentListener();
    ~SilentListener();
    SilentListener(const SilentListener&) = delete;
    SilentListener& operator=(const SilentListener&) = delete;

    int port() const { return number_; }
    /// "127.0.0.1:PORT"
    std::string address() const { return "127.0.0.1:" + std::to_string(number_); }

protected:
    explicit SilentListener(int backlog);
    int socket() const { return listening_; }

private:
    int listening_ = -1;
    int number_ = 0;
};

/// A listener whose backlog is full: a further connection is neither established nor refused.
class FullListener : public SilentListener {
public:
    FullListener();
    ~FullListener();

private:
    std::vector<int> waiting_;
};

/// What a connection is put to. `connection` is an open socket, closed by the caller afterwards;
/// `stop` becomes readable when the listener ends.
using Service = std::function<void(int connection, int stop)>;

/// A listener that serves its connections one after the other, on a thread of its own.
class ServingListener : public SilentListener {
public:
    explicit ServingListener(Service service);
    /// Ends the thread, also in mid-service.
    ~ServingListener();

    /// How many connections were accepted up to now.
    int connections() const { return accepted_; }

private:
    void serve();

    Service serviceOfEach_;
    int stopped_;
    std::atomic<int> accepted_{0};
    std::thread thread_;
};

/// Hangs up as soon as a connection is there.
Service hangingUp();
/// Waits for the first bytes, answers with `text` and keeps the connection open.
Service answering(std::string text);
/// Answers each request that is POSTed on a connection with the next of `texts`, as soon as it begins, and
/// reads nothing more behind the last.
Service answeringPosts(std::vector<std::string> texts);
/// Waits for the first bytes, and answers with a byte of `text` every few milliseconds, over and over.
Service dripping(std::string text);

/// The same, over and over, as fast as the peer takes it.
Service flooding(std::string text);

/// What to do after the last byte that is passed on.
enum class Cut {
    close,  ///< close the connection, as the kernel does for a server that was killed
    reset,  ///< break it, as a server that was restarted does
    silence ///< keep it open and pass on nothing more
};

/// Passes everything on to the server at 127.0.0.1:`port`, and cuts the connection after `bytes` of
/// what the server sent.
Service cuttingProxy(int port, std::size_t bytes, Cut how);

/// Changes bytes on their way, which may be any part of what is sent.
using Alteration = std::function<void(std::string& bytes)>;

/// Passes everything on to the server at 127.0.0.1:`port` and back, behind these alterations.
Service alteringProxy(int port, Alteration toServer, Alteration toClient);

} // namespace servers

#endif
