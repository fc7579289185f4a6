// Tells and asks about the outbox's jobs.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/desktop/main_window/outbox_watch.h"

#include "base/clock.h"
#include "base/translation.h"
#include "driver/desktop/sending/outbox_texts.h"
#include "driver/desktop/toolkit/shown_text.h"

#include <algorithm>
#include <memory>
#include <utility>

namespace quelm {
namespace {

/// Whether a question, a dialog or a chooser stands above the window.
bool isCovered(const Gtk::Window& window)
{
    return std::ranges::any_of(Gtk::Window::list_toplevels(), [&window](const Gtk::Window* other) {
        return other != &window && other->get_visible() && other->get_modal();
    });
}

} // namespace

OutboxWatch::OutboxWatch(OutboxSettings settings, Gtk::Window& window, MessageBar& messages,
                         MainQuestion& question)
    : window_(window), messages_(messages), question_(question),
      sending_(std::move(settings), {[this](const OutboxJob& job, const HandoverEnd& end) { told(job, end); },
                                     [this](const OutboxJob& job) {
                                         messages_.tellBeside(Gtk::MESSAGE_WARNING, settledText(job));
                                     },
                                     [this](const std::vector<OutboxJob>& jobs) {
                                         overdue_ = jobs;
                                         looked();
                                         askNext();
                                     },
                                     [this](const std::string& line) {
                                         messages_.tellBeside(Gtk::MESSAGE_ERROR, line);
                                         looked();
                                     }})
{
}

void OutboxWatch::told(const OutboxJob& job, const HandoverEnd& end)
{
    const auto type = end.state != OutboxState::handedOver ? Gtk::MESSAGE_ERROR
                      : end.receipt.note.empty()           ? Gtk::MESSAGE_INFO
                                                           : Gtk::MESSAGE_WARNING;
    messages_.tellBeside(type, endedText(job, end));
    looked();
}

void OutboxWatch::looked() const
{
    if (looked_)
        looked_();
}

void OutboxWatch::askNext()
{
    const auto next = std::ranges::find_if(
        overdue_, [this](const OutboxJob& job) { return !answered_.contains(job.number); });
    if (next == overdue_.end() || question_.isOpen() || leaving_.running() || isCovered(window_))
        return;
    const int number = next->number;
    const auto answer = [this, number](void (OutboxSending::*does)(int)) {
        return [this, number, does] {
            answered_.insert(number);
            // Looks into the outbox again, which leads to the next question.
            if (does != nullptr)
                (sending_.*does)(number);
            else
                sending_.wake();
        };
    };
    question_.ask({"Main Overdue Question", shownMessage(overdueText(*next, currentTime())),
                   drawable(overdueDetails(*next)), translated("_Later"), translated("_Send Now"),
                   translated("_Cancel the Job")},
                  {answer(&OutboxSending::send), answer(&OutboxSending::cancel), answer(nullptr)});
}

void OutboxWatch::beforeLeaving(std::function<void()> leave)
{
    const auto left = std::make_shared<JobsLeftBehind>();
    // What was asked for before is given up: the job that it would ask about may be the one that was stopped.
    leaving_.start(
        [left, settings = sending_.settings(), isHalfOut = sending_.isHalfOut()](const std::stop_token&) {
            *left = jobsLeftBehind(settings, isHalfOut);
        },
        [this, left, leave = std::move(leave)] {
            // The user closed the window once more, and is asked whether to stop a job.
            if (question_.isOpen())
                return;
            if (left->count == 0)
                return leave();
            question_.ask({"Main Quit Question", leftBehindText(*left, currentTime()),
                           localizedCount("Nothing sends it while Quelm Driver is closed: it waits until you "
                                          "start Quelm Driver again, or \"quelm-driver outbox run\".",
                                          "Nothing sends them while Quelm Driver is closed: they wait until "
                                          "you start Quelm Driver again, or \"quelm-driver outbox run\".",
                                          left->count),
                           translated("_Stay"), translated("_Quit")},
                          leave);
        });
}

} // namespace quelm
