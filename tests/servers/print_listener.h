// A printing device's TCP port for tests: takes a job, or fails to in a given manner.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef TESTS_SERVERS_PRINT_LISTENER_H
#define TESTS_SERVERS_PRINT_LISTENER_H

#include <condition_variable>
#include <cstddef>
#include <mutex>
#include <string>
#include <thread>

namespace servers {

/// What a device does with a connection.
enum class Manner {
    takesAll,             ///< reads to the end, then closes
    neverCloses,          ///< reads to the end, and keeps the connection open
    stalls,               ///< reads `bytes`, then nothing more
    closes,               ///< reads `bytes`, then closes
    resets,               ///< reads `bytes`, then resets the connection
    resetsAtTheEnd,       ///< reads to the end, then resets the connection
    halfClosesThenResets, ///< ends its own side at once, then reads `bytes`, then resets the connection
    slow,                 ///< reads little by little to the end, then closes
    answersFirst,         ///< reads nothing before 16 MB of its answers were read, then all, then closes
};

/// How a connection ended, as the device saw it.
enum class Ending {
    open,   ///< not yet, or the device ended it first
    closed, ///< the sender ended its job
    reset,  ///< the sender broke off
};

/// A device on a loopback address. It serves connection after connection on a thread of its own.
class PrintListener {
public:
    explicit PrintListener(Manner manner, std::size_t bytes = 0, bool ipv6 = false);
    ~PrintListener();
    PrintListener(const PrintListener&) = delete;
    PrintListener& operator=(const PrintListener&) = delete;

    int port() const { return number_; }
    /// "127.0.0.1:PORT" or "[::1]:PORT"
    std::string address() const;

    /// What the last connection brought up to now.
    std::string received();
    /// Waits until the last connection has brought so many bytes; false after a minute.
    bool waitForBytes(std::size_t count);
    /// Waits until the last connection has ended and tells how; `open` after a minute.
    Ending waitForEnding();
    /// Serves no more, and knows then how the last connection ended if it ended up to now.
    void stop();
    /// How many connections there were.
    int connections();

private:
    void serve();
    void take(int connection);
    bool readOn(int connection, std::size_t most);
    bool answer(int connection);
    bool waitFor(int connection, short events) const;
    bool isStopped(int milliseconds) const;
    void note(Ending how);

    Manner manner_;
    std::size_t mostBytes_;
    bool onIpv6_;
    int number_ = 0;
    int listening_ = -1;
    int stopped_ = -1; ///< readable when the device is to end

    std::mutex mutex_;
    std::condition_variable changed_;
    std::string content_;
    Ending ending_ = Ending::open;
    int accepted_ = 0;

    std::thread thread_;
};

} // namespace servers

#endif
