// Has Ghostscript draw the pages of a print stream while the main loop goes on.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_DESKTOP_PAGES_PAGE_RENDERING_H
#define DRIVER_DESKTOP_PAGES_PAGE_RENDERING_H

#include "base/file_io.h"

#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <string>

namespace quelm {

/// What to draw and within which bounds.
struct RenderingRequest {
    enum class Pages {
        first, ///< the first page; ends when it is there
        all,
        count ///< none: only how many there are
    };
    Pages pages = Pages::all;
    int resolution = 96;            ///< dots per inch
    std::string ghostscript = "gs"; ///< the program, looked up along PATH unless it holds a "/"
    std::chrono::milliseconds timeLimit = std::chrono::minutes(1);
    std::size_t pictureLimit = std::size_t{64} << 20U; ///< most bytes of one page's picture
    std::size_t totalLimit = std::size_t{256} << 20U;  ///< most bytes of all pictures
};

/// How drawing ended.
struct RenderingEnd {
    std::string trouble; ///< one line for the user; empty when everything was drawn
    int pageCount = -1;  ///< how many pages there are (`count`) or were drawn; -1 when that is not known
};

/// One run of Ghostscript, without access to other files. Members are called on the thread of the
/// default main loop, and it calls back from there.
class PageRendering {
public:
    using PageDrawn = std::function<void(std::string png)>;
    using Ended = std::function<void(const RenderingEnd&)>;

    PageRendering();
    /// Ends a run, silently.
    ~PageRendering();
    PageRendering(const PageRendering&) = delete;
    PageRendering& operator=(const PageRendering&) = delete;

    /// Draws the print stream in the open file `stream`, from its start, whose descriptor need not stay
    /// open. `drawn` is called for each page in order, `ended` once, behind them and never from within
    /// `start`. A run that goes on already is ended silently.
    void start(const FileHandle& stream, const RenderingRequest& request, PageDrawn drawn, Ended ended);

    /// Ends the run silently.
    void cancel();

    bool running() const { return run_ != nullptr; }

private:
    class Run;
    std::shared_ptr<Run> run_;
};

} // namespace quelm

#endif
