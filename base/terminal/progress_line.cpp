// The progress line.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/terminal/progress_line.h"

#include "base/log.h"
#include "base/translation.h"

#include <unistd.h>

#include <iostream>
#include <utility>

namespace quelm {
namespace {

constexpr std::chrono::milliseconds quietTime{500};
constexpr std::chrono::milliseconds interval{100};

} // namespace

ProgressLine::ProgressLine(std::string work)
    : work_(std::move(work)), terminal_(::isatty(STDERR_FILENO) == 1 && !isQuiet()),
      next_(std::chrono::steady_clock::now() + quietTime)
{
}

ProgressLine::~ProgressLine() { wipe(); }

void ProgressLine::show(std::size_t done, std::size_t total)
{
    const auto now = std::chrono::steady_clock::now();
    if (!terminal_ || now < next_)
        return;
    next_ = now + interval;
    shown_ = true;
    // One piece, so that nobody sees half a line.
    // Translators: the work, how much is done, how much there is: "Importing: 120 of 400".
    std::cerr << "\r\033[K" + localized("%s: %d of %d", work_, done, total) << std::flush;
}

void ProgressLine::wipe()
{
    if (shown_)
        std::cerr << "\r\033[K" << std::flush;
    shown_ = false;
}

} // namespace quelm
