// What bounds the rendering of a job.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DEVICE_PAGES_PAGE_BOUNDS_H
#define DEVICE_PAGES_PAGE_BOUNDS_H

#include "base/ghostscript/ghostscript.h"

#include <chrono>

namespace quelm::device {

/// The usual bounds, but for the time.
[[nodiscard]] inline GhostscriptBounds boundsWithin(std::chrono::milliseconds time)
{
    GhostscriptBounds bounds;
    bounds.timeLimit = time;
    return bounds;
}

/// The bounds of the rendering of one job.
struct PageBounds {
    GhostscriptBounds ghostscript = boundsWithin(std::chrono::minutes(3)); ///< the time is that of all runs
    int mostPages = 2000;
};

} // namespace quelm::device

#endif
