// A real print server (cupsd) with queues of the test's own.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef TESTS_SERVERS_CUPSD_SERVER_H
#define TESTS_SERVERS_CUPSD_SERVER_H

#include "tests/servers/server_process.h"
#include "tests/support/temporary_folder.h"

#include <memory>
#include <string>
#include <vector>

namespace servers {

/// One queue without a driver. What it prints is kept; see CupsdServer::printed.
struct PrinterQueue {
    std::string name;
    std::string description = {};
    bool isDefault = false;
    bool accepting = true;
    std::string pausedWith = {}; ///< not empty: the queue is paused, with this message
    std::string onlyFor = {};    ///< not empty: the one user who may print there
    bool filters = false;        ///< the queue has a driver, which changes documents of a kind that it knows
    bool banners = false;        ///< the queue's own choice is a banner page on either side of each job
    std::string holds = {};      ///< not empty: until when the queue's own choice holds each job
};

/// What the server serves and how.
struct CupsdSettings {
    std::vector<PrinterQueue> queues = {};
    /// An operation, such as "Create-Job", that needs a password; empty: none does.
    std::string guarded = {};
    bool forgetsJobs = false; ///< it keeps no history of jobs that ended
};

/// A job as a queue's device was given it.
struct PrintedJob {
    std::string user;
    std::string title;
    std::string content;
};

/// A running cupsd on a loopback port and a socket in its folder. It works for root and for an ordinary user.
class CupsdServer {
public:
    /// Starts the server and waits until it serves. Throws std::runtime_error with the server's own words
    /// when that fails.
    explicit CupsdServer(const CupsdSettings& settings);

    int port() const { return number_; }
    /// "127.0.0.1:PORT", for CUPS_SERVER.
    std::string address() const { return "127.0.0.1:" + std::to_string(number_); }
    /// The path of its socket, for CUPS_SERVER.
    std::string socketPath() const { return folder_ / "socket"; }

    /// Waits until the job is printed and returns what the device was given. Throws std::runtime_error
    /// when that takes longer than a minute.
    PrintedJob printed(int job) const;
    /// True when something was printed for the job up to now.
    bool wasPrinted(int job) const;

    ServerProcess& process() { return *server_; }

private:
    void configure(const CupsdSettings& settings) const;
    std::string keptBy(int job, const std::string& what) const;

    TemporaryFolder folder_;
    int number_ = 0;
    std::unique_ptr<ServerProcess> server_;
};

} // namespace servers

#endif
