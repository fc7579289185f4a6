// Writes lines to standard output without ever making those wait who say them.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/output_lines.h"

#include "base/standard_output.h"
#include "base/texts.h"

#include <nlohmann/json.hpp>
#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <optional>
#include <utility>

namespace quelm::device {
namespace {

/// How long a reader that takes nothing is waited for at the end.
constexpr std::chrono::seconds lastPatience{1};
constexpr int interval = 100; // milliseconds

/// Waits until standard output takes a line, however long that lasts; false when `stop` was asked for and it
/// does not take one in good time. (A pipe or terminal that says that it takes something has room for a
/// line.)
bool waitForReader(const std::stop_token& stop)
{
    auto end = std::chrono::steady_clock::time_point::max();
    while (std::chrono::steady_clock::now() < end) {
        pollfd output{STDOUT_FILENO, POLLOUT, 0};
        if (::poll(&output, 1, interval) > 0)
            return true;
        if (stop.stop_requested() && end == std::chrono::steady_clock::time_point::max())
            end = std::chrono::steady_clock::now() + lastPatience;
    }
    return false;
}

std::optional<int> numberIn(const std::string& text)
{
    int number = 0;
    const char* const end = text.data() + text.size();
    const auto read = std::from_chars(text.data(), end, number);
    return read.ec == std::errc() && read.ptr == end ? std::optional(number) : std::nullopt;
}

} // namespace

OutputLines::OutputLines(std::size_t mostWaiting, bool asJson)
    : mostWaiting_(mostWaiting), asJson_(asJson),
      writer_([this](const std::stop_token& stop) { write(stop); })
{
}

void OutputLines::tell(const std::string& line)
{
    const std::lock_guard lock(mutex_);
    push(hasBegun_ ? waiting_ : early_, line);
}

void OutputLines::announce(const std::string& line)
{
    const std::lock_guard lock(mutex_);
    push(waiting_, line);
}

void OutputLines::begin()
{
    const std::lock_guard lock(mutex_);
    hasBegun_ = true;
    for (auto& line : std::exchange(early_, {}))
        push(waiting_, line);
}

void OutputLines::push(std::deque<std::string>& lines, const std::string& line)
{
    if (lines.size() < mostWaiting_)
        lines.push_back(messageLine(line));
    else
        ++leftOut_;
    changed_.notify_one();
}

void OutputLines::write(const std::stop_token& stop)
{
    while (true) {
        std::unique_lock lock(mutex_);
        if (!changed_.wait(lock, stop, [this] { return !waiting_.empty(); }))
            return;
        lock.unlock();
        if (!waitForReader(stop))
            return;
        lock.lock();
        auto line = std::move(waiting_.front());
        waiting_.pop_front();
        std::size_t leftOut = 0;
        if (waiting_.empty())
            leftOut = std::exchange(leftOut_, 0);
        lock.unlock();
        writeConfirmation((asJson_ ? lineJson(line) : line) + "\n");
        if (leftOut > 0)
            announce(std::to_string(leftOut) + " lines were left out, for nobody read them");
    }
}

std::string lineJson(const std::string& line)
{
    using Json = nlohmann::ordered_json;
    Json json;
    const auto colon = line.find(": ");
    const auto blank = std::min(line.find(' '), colon);
    const bool isWord = blank == std::string::npos;
    if (colon == std::string::npos && !isWord) {
        json = {{"event", "note"}, {"text", line}};
    } else {
        json["event"] = line.substr(0, blank);
        const auto number =
            blank < colon ? numberIn(line.substr(blank + 1, colon - blank - 1)) : std::nullopt;
        if (number)
            json["number"] = *number;
        if (!isWord)
            json["text"] = line.substr(number || blank == colon ? colon + 2 : blank + 1);
    }
    return json.dump(-1, ' ', false, Json::error_handler_t::replace);
}

} // namespace quelm::device
