// Writes the log, and all that a program says under its name.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/log.h"

#include "base/texts.h"
#include "base/translation.h"

#include <cstdio>
#include <utility>

namespace quelm {

namespace {

LogSink& currentSink()
{
    static LogSink sink;
    return sink;
}

std::string& programName()
{
    static std::string name;
    return name;
}

bool& quietness()
{
    static bool quiet = false;
    return quiet;
}

} // namespace

void log(Severity severity, const std::string& message)
{
    const std::string line = messageLine(message);
    if (const LogSink& sink = currentSink())
        sink(severity, line);
    else
        logToStandardError(severity, line);
}

LogSink setLogSink(LogSink sink) { return std::exchange(currentSink(), std::move(sink)); }

void logToStandardError(Severity severity, const std::string& line)
{
    if (severity == Severity::error || (severity == Severity::warning && !isQuiet()))
        writeUnderProgramName(severity == Severity::warning ? localized("warning: %s", line) : line);
}

void setProgramName(std::string name) { programName() = std::move(name); }

void setQuiet(bool quiet) { quietness() = quiet; }

bool isQuiet() { return quietness(); }

void writeRemark(const std::string& line)
{
    if (!isQuiet())
        writeUnderProgramName(line);
}

void writeUnderProgramName(const std::string& line)
{
    // Takes no memory of its own: a program may have to say that it has none left.
    const std::string& name = programName();
    const auto [head, tail] = boundedLine(line);
    std::fprintf(stderr, "%s%s%.*s%s%.*s\n", name.c_str(), name.empty() ? "" : ": ",
                 static_cast<int>(head.size()), head.data(), tail.empty() ? "" : "\u2026",
                 static_cast<int>(tail.size()), tail.empty() ? "" : tail.data());
}

} // namespace quelm
