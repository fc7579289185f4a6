// One line on the terminal that says how far long work has come.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef BASE_TERMINAL_PROGRESS_LINE_H
#define BASE_TERMINAL_PROGRESS_LINE_H

#include <chrono>
#include <cstddef>
#include <string>

namespace quelm {

/// Rewrites one line on standard error while work goes on, and wipes it at the end. Silent when
/// standard error is no terminal, and during the first half second.
class ProgressLine {
public:
    explicit ProgressLine(std::string work);
    ~ProgressLine();
    ProgressLine(const ProgressLine&) = delete;
    ProgressLine& operator=(const ProgressLine&) = delete;

    /// Shows "WORK: DONE of TOTAL", at most a few times a second.
    void show(std::size_t done, std::size_t total);

    /// Wipes the line, so that something else can be written; the next `show` writes it again.
    void wipe();

private:
    std::string work_;
    bool terminal_;
    bool shown_ = false;
    std::chrono::steady_clock::time_point next_;
};

} // namespace quelm

#endif
