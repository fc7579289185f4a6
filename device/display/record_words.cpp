// Puts what the device remembers into words.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/display/record_words.h"

#include "base/clock.h"
#include "base/duration_text.h"
#include "base/texts.h"
#include "base/translation.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace quelm::device {
namespace {

std::string wordsAndCode(const std::string& words, int code)
{
    if (words.empty())
        return localized("code %d", code);
    // Translators: the modem library's own words, which are English, and its number for the same.
    return localized("%s, code %d", oneLine(words), code);
}

std::string endedText(bool sent, const std::string& result, const std::string& libraryWords, int code)
{
    std::string words = oneLine(translated(result.c_str()));
    // The library has no part in a call that nobody answered.
    if (sent || code < 0 || (code == 0 && libraryWords.empty()))
        return words;
    return words + " (" + wordsAndCode(libraryWords, code) + ")";
}

} // namespace

std::string momentText(Moment moment)
{
    const auto seconds = std::chrono::floor<std::chrono::seconds>(moment);
    const std::tm time = localTimeAt(std::chrono::system_clock::to_time_t(seconds));
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), "%04d-%02d-%02d %02d:%02d:%02d", time.tm_year + 1900,
                  time.tm_mon + 1, time.tm_mday, time.tm_hour, time.tm_min, time.tm_sec);
    return text.data();
}

std::string lineTimeText(std::chrono::milliseconds duration)
{
    const long long seconds = secondsShown(duration).count();
    std::array<char, 64> text{};
    if (seconds >= 3600)
        std::snprintf(text.data(), text.size(), "%lld:%02lld:%02lld", seconds / 3600, seconds / 60 % 60,
                      seconds % 60);
    else
        std::snprintf(text.data(), text.size(), "%lld:%02lld", seconds / 60, seconds % 60);
    return text.data();
}

std::string titleText(const JobRecord& job)
{
    const std::string title = oneLine(job.reading.title);
    return trimmed(title).empty() ? localized("(without a title)") : title;
}

std::string resolutionText(Resolution resolution)
{
    switch (resolution) {
    case Resolution::standard:
        return localized("standard (204 x 98 dots per inch)");
    case Resolution::fine:
        return localized("fine (204 x 196 dots per inch)");
    case Resolution::superfine:
        return localized("superfine (204 x 391 dots per inch)");
    }
    return "";
}

std::string speedText(Speed speed)
{
    switch (speed) {
    case Speed::forced4800:
        return localized("4800 bit/s");
    case Speed::upTo14400:
        return localized("up to 14400 bit/s");
    case Speed::automatic:
        return localized("the fastest (Super G3)");
    }
    return "";
}

std::string jobStateText(JobState state)
{
    switch (state) {
    case JobState::received:
        return localized("received");
    case JobState::calling:
        return localized("calling");
    case JobState::done:
        return localized("done");
    case JobState::printed:
        return localized("printed");
    case JobState::refused:
        return localized("refused");
    case JobState::failed:
        return localized("failed");
    }
    return "";
}

std::string recipientStateText(RecipientState state)
{
    switch (state) {
    case RecipientState::waiting:
        return localized("waiting");
    case RecipientState::calling:
        return localized("calling");
    case RecipientState::sent:
        return localized("sent");
    case RecipientState::failed:
        return localized("failed");
    }
    return "";
}

std::string pagesText(int pages)
{
    return localizedCount("%d page", "%d pages", static_cast<unsigned long>(pages), pages);
}

std::string pagesOfText(int sent, int pages)
{
    // Translators: so many pages of so many.
    return localized("%d of %d", sent, pages);
}

std::string callResultText(const CallRecord& call)
{
    if (call.state == CallState::calling)
        return localized("calling");
    if (call.state == CallState::brokenOff && call.result.empty())
        return localized("broken off");
    // The library's words for a success add nothing to ours.
    return endedText(call.code == 0, call.result, call.libraryWords, call.code);
}

std::string recipientResultText(const RecipientRecord& recipient, const CallRecord* last)
{
    return endedText(recipient.state == RecipientState::sent, recipient.result,
                     last == nullptr ? "" : last->libraryWords, recipient.code);
}

std::string carriageText(const CallRecord& call)
{
    if (call.bitRate <= 0)
        return "";
    return call.errorCorrection ? localized("%d bit/s, error correction", call.bitRate)
                                : localized("%d bit/s, no error correction", call.bitRate);
}

std::string damageText(const CallRecord& call)
{
    std::string words;
    const auto frames = static_cast<unsigned long>(std::max(0, call.repeatedFrames));
    const auto rows = static_cast<unsigned long>(std::max(0, call.damagedRows));
    if (frames > 0)
        // Translators: of a fax's pages, so many pieces did not arrive whole at first.
        words = localizedCount("%d piece sent again", "%d pieces sent again", frames, frames);
    if (rows > 0)
        // Translators: lines of dots, of a fax's pages.
        words +=
            (words.empty() ? "" : ", ") + localizedCount("%d line damaged", "%d lines damaged", rows, rows);
    return words;
}

} // namespace quelm::device
