// The progress line.
#include "driver/core/progress_line.h"

#include <unistd.h>

#include <iostream>
#include <utility>

namespace quelm {
namespace {

constexpr std::chrono::milliseconds quietTime{500};
constexpr std::chrono::milliseconds interval{100};

} // namespace

ProgressLine::ProgressLine(std::string work)
    : work_(std::move(work)), terminal_(::isatty(STDERR_FILENO) == 1),
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
    std::cerr << "\r\033[K" + work_ + ": " + std::to_string(done) + " of " + std::to_string(total)
              << std::flush;
}

void ProgressLine::wipe()
{
    if (shown_)
        std::cerr << "\r\033[K" << std::flush;
    shown_ = false;
}

} // namespace quelm
