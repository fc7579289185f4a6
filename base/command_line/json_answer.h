// What a command answers with --json: one document on standard output, also when it fails.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef BASE_COMMAND_LINE_JSON_ANSWER_H
#define BASE_COMMAND_LINE_JSON_ANSWER_H

#include <functional>
#include <string>

namespace quelm {

/// True when a program's arguments ask for JSON, also those that cannot be understood otherwise.
[[nodiscard]] bool asksForJson(int argc, const char* const* argv);

/// Writes the answer of a command to standard output as `writeAnswer` does; `json` is a document with a line
/// end behind it. Throws Error when not all of it could be written.
void writeJsonAnswer(const std::string& json);

/// The same for what is done by now, as `writeResult` does.
void writeJsonResult(const std::string& json);

/// Does `work`, which may throw. When it ends with an exception, and has written no JSON answer before,
/// the answer is the object `failureJson` of it; the exception goes on to whoever called. `asJson`: that
/// JSON was asked for at all.
void withJsonFailure(bool asJson, const std::function<void()>& work);

/// {"error": LINE, "status": STATUS} in one line: the line on standard error without the program's name, and
/// the exit status.
[[nodiscard]] std::string failureJson(const std::string& line, int status);

} // namespace quelm

#endif
