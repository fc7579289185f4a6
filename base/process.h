// Runs another program to its end, without a shell and within bounds.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef BASE_PROCESS_H
#define BASE_PROCESS_H

#include <chrono>
#include <cstddef>
#include <functional>
#include <optional>
#include <stop_token>
#include <string>
#include <string_view>
#include <vector>

namespace quelm {

/// What to run and how.
struct ProcessRequest {
    /// The program, looked up along PATH unless it holds a "/", and its arguments as they stand.
    std::vector<std::string> arguments;
    /// What error lines call the program; empty for the first of the arguments.
    std::string name;
    /// Its whole environment, as "NAME=VALUE"; nothing for that of the running program.
    std::optional<std::vector<std::string>> environment;
    /// A file that becomes standard input; empty for none (end of file at once).
    std::string inputFile;
    /// An open descriptor that becomes standard output (the caller keeps it); -1 for none.
    int outputDescriptor = -1;
    /// A file that becomes standard output, created or emptied. With neither of the two it is captured.
    std::string outputFile;
    /// Receives standard output piece by piece instead, on the calling thread. What it throws ends the
    /// program, and leaves `runProcess`.
    std::function<void(std::string_view)> takeOutput;
    /// The most bytes to capture of standard output. A program that writes more is ended.
    std::size_t outputLimit = std::size_t{1} << 20U;
    /// The most bytes to keep of standard error, from its end.
    std::size_t errorLimit = 4096;
    /// The program is ended when it runs longer: with SIGKILL, unless it is given a grace.
    std::chrono::milliseconds timeLimit{std::chrono::minutes(2)};
    /// How long the program gets, after SIGTERM, to put things in order and end by itself.
    std::chrono::milliseconds grace{0};
    /// The program is ended the same way soon after a stop is requested, from whichever thread.
    std::stop_token stop;
};

/// How it ended.
struct ProcessResult {
    int exitStatus = 0; ///< its exit status; 128 + number when a signal ended it
    std::string output; ///< captured standard output
    std::string errors; ///< the end of standard error, from the start of a line
};

/// Runs the program and waits for its end. Throws Error, naming the program, when it could not be
/// started (not installed), ran into the time limit, wrote more than the limit or was stopped; it does
/// not run any more then. A non-zero exit status is a result, not an error. A process that the program
/// leaves behind is not waited for.
ProcessResult runProcess(const ProcessRequest& request);

/// Arguments or an environment as functions of the system take them: with a null pointer at the end, valid as
/// long as the texts.
[[nodiscard]] std::vector<char*> pointersTo(const std::vector<std::string>& texts);

} // namespace quelm

#endif
