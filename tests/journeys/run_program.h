// Runs a program and collects everything that it says.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef TESTS_JOURNEYS_RUN_PROGRAM_H
#define TESTS_JOURNEYS_RUN_PROGRAM_H

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace journeys {

struct Request {
    std::vector<std::string> arguments; ///< the program first
    std::string input;                  ///< standard input, at most what a pipe holds
    bool inputIsTerminal = false;       ///< `input` is typed at a terminal
    std::string outputFile;             ///< standard output goes to this file; empty: it is collected
    bool outputClosed = false;          ///< standard output is a pipe that nobody reads
    bool errorsAreTerminal = false;     ///< standard error is a terminal
    /// Called with the program's process id, on a thread of its own, while the program runs. The id stays
    /// the program's until this returns.
    std::function<void(int)> meanwhile = {};
    std::size_t killedAfterLines = 0; ///< SIGKILL ends it when it has written so many lines; 0: nothing does
    std::vector<std::string> environment; ///< NAME=VALUE, over the test's own
    bool outputIsTerminal = false;        ///< standard output is a terminal
    std::vector<int> withoutStreams =
        {}; ///< standard streams, by number, that the program is started without
};

struct Result {
    int status = -1; ///< exit status, 128 + number when a signal ended it
    std::string output;
    std::vector<std::string> writes; ///< `output`, one text for each write(2) of the program
    std::string errors;
};

/// Standard output is a sequential packet socket, on which every write arrives as one message.
/// A program that runs for longer than four minutes is killed.
Result runProgram(const Request& request);

} // namespace journeys

#endif
