// A server program that lives as long as an object of ours, and no longer than the program.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DEVICE_AGENT_DIRECTORY_PROCESS_H
#define DEVICE_AGENT_DIRECTORY_PROCESS_H

#include <sys/types.h>

#include <chrono>
#include <string>
#include <vector>

namespace quelm::device {

/// A running program. The system ends it with the thread that started it, too: when this program is killed,
/// nothing is left behind.
class DirectoryProcess {
public:
    /// Starts `arguments` (the first is a path) in the environment `environment` ("NAME=VALUE"), with its
    /// output in `outputFile`. A terminal's Ctrl-C does not reach it. Throws quelm::Error when there is no
    /// process to be had.
    DirectoryProcess(const std::vector<std::string>& arguments, const std::vector<std::string>& environment,
                     const std::string& outputFile,
                     std::chrono::milliseconds grace = std::chrono::seconds(5));
    /// Asks it to end, and ends it when it does not within the grace.
    ~DirectoryProcess();
    DirectoryProcess(const DirectoryProcess&) = delete;
    DirectoryProcess& operator=(const DirectoryProcess&) = delete;

    [[nodiscard]] pid_t id() const { return id_; }
    /// False once it has ended.
    [[nodiscard]] bool isRunning();

private:
    bool endsWithin(std::chrono::milliseconds time);

    std::chrono::milliseconds grace_;
    pid_t id_ = -1;
    bool running_ = false;
};

} // namespace quelm::device

#endif
