// A program that sends a print job to a device's port as it likes: whole, in pieces, not to the end.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef TESTS_SERVERS_JOB_SENDER_H
#define TESTS_SERVERS_JOB_SENDER_H

#include <chrono>
#include <cstddef>
#include <string>
#include <string_view>

namespace servers {

/// How a device ended a connection.
enum class DeviceEnding {
    open,   ///< not yet
    closed, ///< in order: it keeps the jobs
    reset   ///< it broke off
};

/// One connection to a device on this computer.
class JobSender {
public:
    /// Connects to "127.0.0.1:PORT" or "[::1]:PORT". Throws std::runtime_error when it cannot.
    explicit JobSender(const std::string& address);
    ~JobSender();
    JobSender(JobSender&& other) noexcept;
    JobSender& operator=(JobSender&&) = delete;

    /// Sends all of it; false when the device broke off, or takes nothing for a minute.
    bool send(std::string_view bytes);
    /// Says that nothing more comes.
    void end();
    /// Breaks off.
    void breakOff();
    /// Closes the connection without waiting for the device.
    void close();

    /// Waits until the device has ended the connection; `open` when it has not in this time.
    DeviceEnding waitForEnding(std::chrono::milliseconds patience = std::chrono::minutes(1));
    /// What the device said, which ought to be nothing.
    const std::string& answer() const { return answer_; }

private:
    int socket_ = -1;
    bool wasReset_ = false;
    std::string answer_;
};

/// Sends one job and waits for how the device ends the connection.
DeviceEnding sendJob(const std::string& address, std::string_view job);

} // namespace servers

#endif
