// The log of the desktop, whose messages stand in its window, too.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_DESKTOP_WINDOW_LOG_H
#define DRIVER_DESKTOP_WINDOW_LOG_H

#include "base/log.h"

#include <functional>
#include <memory>
#include <string>

namespace quelm {

/// Shows one message; called on the thread of the default main loop.
using ShowMessage = std::function<void(Severity severity, const std::string& line)>;

/// While it lives, warnings and errors go to standard error at once, whichever thread they come from, and to
/// the window. Those that are logged before there is a window wait for it.
class WindowLog {
public:
    WindowLog();
    /// Hands the log back; what has not been shown by then is not shown any more.
    ~WindowLog();
    WindowLog(const WindowLog&) = delete;
    WindowLog& operator=(const WindowLog&) = delete;

    /// Shows what has waited with `waited`, in the order in which it was logged, and from the main loop with
    /// `later` what is logged from now on. Called once, on the thread of the main loop.
    void showWith(const ShowMessage& waited, ShowMessage later);

private:
    struct State;
    std::shared_ptr<State> state_;
    LogSink before_;
};

} // namespace quelm

#endif
