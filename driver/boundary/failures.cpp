// Keeps reasons, and logs each once.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/boundary/failures.h"

#include "base/log.h"
#include "base/texts.h"

#include <utility>

namespace quelm {

void Failures::definitionRefused(const std::string& line)
{
    last_.definition = oneLine(line);
    report(true, last_.definition);
}

void Failures::widgetMissing(const std::string& line) { last_.definition = oneLine(line); }

void Failures::databaseFailed(const std::string& line) { last_.database = oneLine(line); }

void Failures::recordRefused(const std::string& line)
{
    last_.database = oneLine(line);
    report(false, last_.database);
}

void Failures::recordsLeftOut(const std::string& line) { report(false, oneLine(line)); }

void Failures::directoryFailed(const std::string& line)
{
    last_.directory = oneLine(line);
    report(false, last_.directory);
}

void Failures::deviceFailed(const std::string& line, bool failed)
{
    const std::string shown = oneLine(line);
    last_.device = failed ? shown : "";
    report(false, shown);
}

void Failures::optionsNotKept(bool isError, const std::string& line, bool holds)
{
    if (holds)
        waiting_.push_back({isError, line});
    else
        report(isError, line);
}

void Failures::leaveOut(const std::string& line)
{
    std::erase_if(waiting_, [&line](const Line& waiting) { return waiting.text == line; });
}

void Failures::release()
{
    held_ = false;
    for (const auto& line : std::exchange(waiting_, {}))
        report(line.isError, line.text);
}

void Failures::report(bool isError, const std::string& line)
{
    if (held_)
        waiting_.push_back({isError, line});
    else
        log(isError ? Severity::error : Severity::warning, line);
}

} // namespace quelm
