// What a device says on standard output while it serves, line by line.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DEVICE_OUTPUT_LINES_H
#define DEVICE_OUTPUT_LINES_H

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <deque>
#include <mutex>
#include <stop_token>
#include <string>
#include <thread>

namespace quelm::device {

/// Each line is written at once, by a thread of its own: whoever reads slowly, or not at all, holds up no
/// call and no sender. Lines that nobody reads are left out in the end, and a line says how many; standard
/// output that was closed, or fails, ends nothing. Safe on every thread.
class OutputLines {
public:
    /// At most `mostWaiting` lines wait for a reader. `asJson`: each is written as `lineJson` of it.
    explicit OutputLines(std::size_t mostWaiting = 10000, bool asJson = false);
    /// Writes what waits, unless its reader takes nothing for a second.
    ~OutputLines() = default;
    OutputLines(const OutputLines&) = delete;
    OutputLines& operator=(const OutputLines&) = delete;

    /// Says that something happened: a line for people, of whatever origin its parts are. Until `begin`, it
    /// waits.
    void tell(const std::string& line);
    /// Says something ahead of all that happens.
    void announce(const std::string& line);
    /// From now on, what happens is said as it happens.
    void begin();

private:
    void push(std::deque<std::string>& lines, const std::string& line);
    void write(const std::stop_token& stop);

    std::size_t mostWaiting_;
    bool asJson_;
    std::mutex mutex_;
    std::condition_variable_any changed_;
    std::deque<std::string> waiting_; ///< to be written
    std::deque<std::string> early_;   ///< what happened before `begin`
    bool hasBegun_ = false;
    std::size_t leftOut_ = 0;
    std::jthread writer_; // last: it uses what stands above
};

/// A line of the device as a JSON object: "job 1: done, 2 of 2 sent" is {"event":"job","number":1,
/// "text":"done, 2 of 2 sent"}, "job from HOST: not kept" has no number and the text "from HOST: not kept",
/// "ready" is an event alone. A sentence is the text of a "note".
[[nodiscard]] std::string lineJson(const std::string& line);

} // namespace quelm::device

#endif
