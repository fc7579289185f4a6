// The outbox in the main window: what is told of it, and what is asked.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_DESKTOP_MAIN_WINDOW_OUTBOX_WATCH_H
#define DRIVER_DESKTOP_MAIN_WINDOW_OUTBOX_WATCH_H

#include "driver/desktop/main_window/main_question.h"
#include "driver/desktop/sending/outbox_sending.h"
#include "driver/desktop/toolkit/background_task.h"
#include "driver/desktop/toolkit/message_bar.h"

#include <gtkmm/window.h>

#include <functional>
#include <set>
#include <utility>
#include <vector>

namespace quelm {

/// Sends what waits in the outbox as long as it lives (`OutboxSending`), tells how that goes, and asks about
/// jobs that are overdue: one after the other, while no other window stands above its own, and about none
/// that was answered "Later". The fixed name of the question is "Main Overdue Question".
class OutboxWatch {
public:
    /// All outlive the watch.
    OutboxWatch(OutboxSettings settings, Gtk::Window& window, MessageBar& messages, MainQuestion& question);

    /// Called when a job has gone out or failed, and whenever the outbox was looked at.
    void setLooked(std::function<void()> looked) { looked_ = std::move(looked); }

    /// Something was queued, or the user may be asked again.
    void wake() { sending_.wake(); }

    /// Asks about the next job that is overdue, unless something else is open.
    void askNext();

    [[nodiscard]] bool isHalfOut() const { return sending_.isHalfOut(); }

    /// Calls `leave` at once or soon, when nothing is left that only this desktop would send; otherwise
    /// behind a question, "Main Quit Question".
    void beforeLeaving(std::function<void()> leave);

private:
    void told(const OutboxJob& job, const HandoverEnd& end);
    void looked() const;

    Gtk::Window& window_;
    MessageBar& messages_;
    MainQuestion& question_;
    std::vector<OutboxJob> overdue_; ///< as they were found last
    std::set<int> answered_;         ///< the numbers of those that were asked about
    BackgroundTask leaving_;
    std::function<void()> looked_;
    OutboxSending sending_; ///< the last member: it tells the others
};

} // namespace quelm

#endif
