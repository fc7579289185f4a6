// Writes the lines in which a device says what happens.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/calls/event_lines.h"

#include "base/duration_text.h"
#include "base/texts.h"

#include <fmt/format.h>

#include <algorithm>
#include <ctime>

namespace quelm::device {
namespace {

std::string counted(int count, const char* thing)
{
    return fmt::format("{} {}{}", count, thing, count == 1 ? "" : "s");
}

std::string timeOfDay(Moment moment)
{
    const std::time_t time = std::chrono::system_clock::to_time_t(moment);
    std::tm local{};
    ::localtime_r(&time, &local);
    return fmt::format("{:02}:{:02}:{:02}", local.tm_hour, local.tm_min, local.tm_sec);
}

const char* wordOf(CallResult::Kind kind)
{
    switch (kind) {
    case CallResult::Kind::sent:
        return "sent";
    case CallResult::Kind::busy:
        return "busy";
    case CallResult::Kind::noAnswer:
        return "no answer";
    case CallResult::Kind::cancelled:
        return "broken off";
    case CallResult::Kind::failed:
        break;
    }
    return "failed";
}

} // namespace

std::string renderedLine(const JobRecord& job, int pages)
{
    return fmt::format("job {}: fax to {} from {}, {}", job.number,
                       counted(static_cast<int>(job.recipients.size()), "recipient"), oneLine(job.from),
                       counted(pages, "page"));
}

std::string printedLine(int job, int pages)
{
    return fmt::format("job {}: printed, {}", job, counted(pages, "page"));
}

std::string failedLine(int job, const std::string& reason)
{
    return fmt::format("job {}: failed: {}", job, messageLine(reason));
}

std::string callLine(const CallRecord& call, CallResult::Kind kind, const std::string& keys,
                     std::optional<Moment> again)
{
    using Kind = CallResult::Kind;
    std::string line = fmt::format("call {}: job {}, {}: {}", call.number, call.job, keys, wordOf(kind));
    if (kind == Kind::cancelled)
        return line;
    if (kind == Kind::sent && call.damagedRows > 0)
        line += ", with damaged lines";
    if (kind == Kind::sent || call.pagesSent > 0)
        line += ", " + counted(call.pagesSent, "page");
    if (call.bitRate > 0)
        line += fmt::format(", {} bit/s", call.bitRate);
    line += fmt::format(", {} s", secondsShown(call.duration).count());
    if (again)
        line += ", again at " + timeOfDay(*again);
    else if (kind == Kind::busy || kind == Kind::noAnswer)
        line += ", given up";
    if (kind == Kind::failed)
        line += ": " + messageLine(call.result);
    return line;
}

std::string doneLine(const JobRecord& job)
{
    const auto sent = std::ranges::count(job.recipients, RecipientState::sent, &RecipientRecord::state);
    return fmt::format("job {}: done, {} of {} sent", job.number, sent, job.recipients.size());
}

std::string reportLine(int job, const std::string& file)
{
    return fmt::format("job {}: confirmation sheet {}", job, file);
}

std::string troubleLine(const std::string& reason) { return "trouble: " + messageLine(reason); }

} // namespace quelm::device
