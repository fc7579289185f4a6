// Runs a real server for a test: starts it, waits until it serves, and ends it by its process id.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef TESTS_SERVERS_SERVER_PROCESS_H
#define TESTS_SERVERS_SERVER_PROCESS_H

#include <sys/types.h>

#include <functional>
#include <string>
#include <vector>

namespace servers {

enum class Transport { tcp, udp };

/// A port of the loopback addresses (IPv4 and, where there is one, IPv6) that nobody uses now.
/// Another process may take it before a server does; servers then end, and are started on another.
int unusedPort(Transport transport);

/// Where a program stands: along PATH, or in the folders of system programs that an ordinary
/// user's PATH leaves out. Throws std::runtime_error, naming it, when it is not installed.
std::string systemProgram(const std::string& name);

/// What to run.
struct ServerCommand {
    /// The program (a path, as `systemProgram` finds it) and its arguments. It stays in the foreground.
    std::vector<std::string> arguments;
    /// The file that its standard output and errors are appended to.
    std::string outputFile;
    /// "NAME=VALUE" texts that replace or join this process's environment.
    std::vector<std::string> environment;
};

/// Runs a program that ends by itself. Throws std::runtime_error with the end of its output when it
/// fails or runs longer than a minute.
void runProgram(const ServerCommand& command);

/// A server that runs as a child of this process. It is killed by the kernel when the thread that
/// started it ends, so that no test leaves one behind, however it ends.
class ServerProcess {
public:
    /// Starts the server and waits until `ready` answers true; `ready` is asked again and again
    /// and must not block. Throws std::runtime_error with the end of the server's output when it
    /// ends instead or is not ready within a minute; it does not run any more then.
    ServerProcess(const ServerCommand& command, const std::function<bool()>& ready);
    /// Stops it when it still runs.
    ~ServerProcess();
    ServerProcess(const ServerProcess&) = delete;
    ServerProcess& operator=(const ServerProcess&) = delete;

    /// Asks it to end (SIGTERM), kills it when it does not within five seconds, and reaps it.
    void stop();
    /// Kills and reaps it at once, as a crash would.
    void kill();
    /// Stops its execution: it answers nothing, while its sockets stay open.
    void freeze();
    /// Goes on after `freeze`.
    void thaw();

    /// False once it ended.
    bool running();
    /// Its process id; of no use once it ended.
    pid_t id() const { return child_; }

private:
    bool waitForEnd(int milliseconds);
    void reap();

    pid_t child_ = -1;
    int childDescriptor_ = -1; ///< readable once the child ended
};

} // namespace servers

#endif
