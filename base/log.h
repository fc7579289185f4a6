// A program's log: what goes wrong without ending an action.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef BASE_LOG_H
#define BASE_LOG_H

#include <functional>
#include <string>

namespace quelm {

enum class Severity { information, warning, error };

/// Receives each message: one line of UTF-8 without a line end, of at most `longestLogLine` characters.
using LogSink = std::function<void(Severity, const std::string&)>;

/// Logs a message, as one line: `messageLine` of it.
void log(Severity severity, const std::string& message);

/// Sends messages elsewhere from now on; an empty sink means `logToStandardError`. Returns the sink before.
LogSink setLogSink(LogSink sink);

/// Writes a message to standard error as "PROGRAM: ..." or "PROGRAM: warning: ..."; information is left out.
void logToStandardError(Severity severity, const std::string& line);

/// Sets the name that the program's lines on standard error begin with: "quelm-driver". Called once, before
/// there are other threads; a program without a name writes the bare lines.
void setProgramName(std::string name);

/// Says only what fails from now on: warnings in the log, remarks and confirmations are left out, progress is
/// not shown, and nobody is asked anything. Called once, before there are other threads.
void setQuiet(bool quiet);
[[nodiscard]] bool isQuiet();

/// Writes "PROGRAM: line" to standard error; of a line that is too long, what `boundedLine` leaves.
void writeUnderProgramName(const std::string& line);

/// The same for what is no failure; nothing of it when the program is to be quiet.
void writeRemark(const std::string& line);

} // namespace quelm

#endif
