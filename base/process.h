// Runs another program to its end, without a shell and within bounds.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef BASE_PROCESS_H
#define BASE_PROCESS_H

#include <chrono>
#include <cstddef>
#include <stop_token>
#include <string>
#include <vector>

namespace quelm {

/// What to run and how.
struct ProcessRequest {
    /// The program, looked up along PATH unless it holds a "/", and its arguments as they stand.
    std::vector<std::string> arguments;
    /// A file that becomes standard input; empty for none (end of file at once).
    std::string inputFile;
    /// An open descriptor that becomes standard output (the caller keeps it); -1 for none.
    int outputDescriptor = -1;
    /// A file that becomes standard output, created or emptied. With neither of the two it is captured.
    std::string outputFile;
    /// The most bytes to capture of standard output. A program that writes more is ended.
    std::size_t outputLimit = std::size_t{1} << 20U;
    /// The program is ended, with SIGKILL, when it runs longer.
    std::chrono::milliseconds timeLimit{std::chrono::minutes(2)};
    /// The program is ended the same way soon after a stop is requested, from whichever thread.
    std::stop_token stop;
};

/// How it ended.
struct ProcessResult {
    int exitStatus = 0; ///< its exit status; 128 + number when a signal ended it
    std::string output; ///< captured standard output
    std::string errors; ///< the last 4,096 bytes of standard error, from the start of a line
};

/// Runs the program and waits for its end. Throws Error, naming the program, when it could not be
/// started (not installed), ran into the time limit, wrote more than the limit or was stopped; it does
/// not run any more then. A non-zero exit status is a result, not an error. A process that the program
/// leaves behind is not waited for.
ProcessResult runProcess(const ProcessRequest& request);

} // namespace quelm

#endif
