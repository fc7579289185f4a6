// Finds Ghostscript and the supervisor, and puts their command line together.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/ghostscript/ghostscript.h"

#include "base/environment.h"
#include "base/error.h"
#include "base/file_io.h"
#include "base/ghostscript/supervision.h"
#include "base/system_reason.h"
#include "base/texts.h"
#include "base/translation.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <filesystem>
#include <sstream>

extern char** environ;

namespace quelm {
namespace {

namespace fs = std::filesystem;

/// The files that a program's name may stand for, in the order in which a shell looks at them.
std::vector<std::string> candidatesFor(const std::string& name)
{
    if (name.find('/') != std::string::npos)
        return {name};
    std::vector<std::string> candidates;
    std::istringstream folders(environmentVariable("PATH"));
    for (std::string folder; std::getline(folders, folder, ':');)
        candidates.push_back((folder.empty() ? "." : folder) + "/" + name);
    return candidates;
}

/// The file that a shell would start.
std::string findProgram(const std::string& name)
{
    int reason = ENOENT;
    for (const std::string& candidate : candidatesFor(name)) {
        std::error_code failure;
        if (!fs::is_regular_file(candidate, failure))
            continue;
        if (::access(candidate.c_str(), X_OK) == 0)
            return candidate;
        reason = errno;
    }
    if (reason == ENOENT)
        throw Error(
            localized("Ghostscript, the program \"%s\", is not installed; install it and try again", name));
    throw Error(localized("the program \"%s\" cannot be run: %s", name, systemReason(reason)));
}

std::string findSupervisor()
{
    std::string program = (programFolder() / supervision::program).string();
    std::error_code failure;
    if (!fs::is_regular_file(program, failure))
        throw Error(localized("there is no program %s; install the driver again", program));
    return program;
}

/// The running program's environment, but for what this run has instead.
std::vector<std::string> environmentIn(const std::string& folder)
{
    constexpr std::array<std::string_view, 4> replaced = {"GS_", "TMPDIR=", "TEMP=", "TMP="};
    std::vector<std::string> variables = {"TMPDIR=" + folder, "TEMP=" + folder, "TMP=" + folder};
    for (char** variable = environ; *variable != nullptr; ++variable) {
        const std::string_view text = *variable;
        if (std::ranges::none_of(replaced, [text](auto start) { return text.starts_with(start); }))
            variables.emplace_back(text);
    }
    return variables;
}

} // namespace

GhostscriptCommand::GhostscriptCommand(const GhostscriptBounds& bounds,
                                       const std::vector<std::string>& arguments)
    : program_(findProgram(bounds.program)), environment_(environmentIn(folder_.path()))
{
    // A driver that is stopped does not look at the time; the system then ends what spins on.
    const auto seconds = std::chrono::ceil<std::chrono::seconds>(bounds.timeLimit).count() + 1;
    arguments_ = {findSupervisor(),
                  std::to_string(::getpid()),
                  folder_.path(),
                  std::to_string(bounds.memoryLimit),
                  std::to_string(bounds.fileLimit),
                  std::to_string(seconds),
                  program_,
                  "-dSAFER",
                  "-dBATCH",
                  "-dNOPAUSE",
                  "-dNOPROMPT",
                  "-sstdout=%stderr"};
    arguments_.insert(arguments_.end(), arguments.begin(), arguments.end());
}

ProcessResult runGhostscript(const GhostscriptBounds& bounds, const std::vector<std::string>& arguments,
                             const GhostscriptStreams& streams)
{
    const GhostscriptCommand command(bounds, arguments);
    ProcessRequest request;
    request.name = bounds.program;
    request.arguments = command.arguments();
    request.environment = command.environment();
    request.inputFile = streams.inputFile;
    request.takeOutput = streams.takeOutput;
    request.errorLimit = std::size_t{4} << 20U;
    request.timeLimit = bounds.timeLimit;
    request.stop = bounds.stop;
    request.grace = std::chrono::seconds(5);
    ProcessResult result = runProcess(request);
    if (result.exitStatus == supervision::couldNotStart)
        throw Error(localized("the program \"%s\" cannot be run: %s", bounds.program,
                              trimmed(oneLine(result.errors))));
    constexpr int endedBySignal = 128;
    if (result.exitStatus == endedBySignal + SIGXFSZ)
        throw Error(localized("the program \"%s\" was ended: in %s, %s", bounds.program, temporaryFolder(),
                              systemReason(EFBIG)));
    return result;
}

std::string ghostscriptError(std::string_view messages)
{
    const auto found = messages.find("Error: ");
    if (found == std::string_view::npos)
        return {};
    return oneLine(std::string(messages.substr(found, messages.find('\n', found) - found)));
}

} // namespace quelm
