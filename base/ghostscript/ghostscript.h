// The one place from which Ghostscript is run: supervised, within bounds, in a folder of its own.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef BASE_GHOSTSCRIPT_GHOSTSCRIPT_H
#define BASE_GHOSTSCRIPT_GHOSTSCRIPT_H

#include "base/ghostscript/private_folder.h"
#include "base/process.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <stop_token>
#include <string>
#include <string_view>
#include <vector>

namespace quelm {

/// The bounds of one run. A document is somebody else's program: it may need for ever, or all there is.
struct GhostscriptBounds {
    std::string program = "gs"; ///< looked up along PATH unless it holds a "/"
    std::chrono::milliseconds timeLimit = std::chrono::minutes(10);
    std::uint64_t memoryLimit = std::uint64_t{4} << 30U; ///< bytes of address space
    std::uint64_t fileLimit = std::uint64_t{4} << 30U;   ///< bytes of each file that it writes
    std::stop_token stop;                                ///< gives the run up, which then fails
};

/// A run of Ghostscript that is ready to be started by this process. Its private folder lives as long as
/// this object.
///
/// What is started is the supervisor, a small program beside the running one. It sets the limits, starts
/// Ghostscript, and ends with its exit status (128 + number when a signal ended it). On SIGTERM, and when the
/// thread that started it has ended, it ends Ghostscript and removes the folder; Ghostscript ends when the
/// supervisor is killed.
///
/// Ghostscript gets the environment without the variables that change what it does ("GS_..."), and the
/// private folder as its folder for temporary files.
class GhostscriptCommand {
public:
    /// `arguments` stand behind "-dSAFER" and others that let it run by itself and keep what documents print
    /// from standard output. Throws quelm::Error when Ghostscript or the supervisor is not installed, or no
    /// folder can be made.
    GhostscriptCommand(const GhostscriptBounds& bounds, const std::vector<std::string>& arguments);

    const std::vector<std::string>& arguments() const { return arguments_; }
    const std::vector<std::string>& environment() const { return environment_; }
    const std::string& folder() const { return folder_.path(); }

private:
    std::string program_;
    PrivateFolder folder_;
    std::vector<std::string> arguments_;
    std::vector<std::string> environment_;
};

/// What a run reads and where its standard output goes.
struct GhostscriptStreams {
    std::string inputFile;                            ///< becomes standard input
    std::function<void(std::string_view)> takeOutput; ///< what it throws ends the run; may be empty
};

/// Runs Ghostscript to its end and returns its exit status and the end of its messages, up to 4 MB. Throws
/// quelm::Error as `GhostscriptCommand` does, when a limit was reached (of time, or of the size of a file) or
/// a stop was requested.
ProcessResult runGhostscript(const GhostscriptBounds& bounds, const std::vector<std::string>& arguments,
                             const GhostscriptStreams& streams);

/// The line of Ghostscript's messages in which it names its error, as one clean line; empty when there is
/// none.
[[nodiscard]] std::string ghostscriptError(std::string_view messages);

} // namespace quelm

#endif
