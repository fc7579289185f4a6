// The component's questions on the screen.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_DESKTOP_DIALOGS_QUESTION_DIALOGS_H
#define DRIVER_DESKTOP_DIALOGS_QUESTION_DIALOGS_H

#include "driver/desktop/dialogs/control.h"
#include "driver/plugin/questions.h"

#include <gtkmm/messagedialog.h>

#include <functional>
#include <memory>
#include <string>

namespace quelm {

/// A question's text as a dialog shows it.
std::string questionText(const std::string& text);

/// Shows the question that is to be answered next, modal over the window on top. Nobody waits for the
/// answer in here: it is one more user action. Escape and the frame's close mean no.
class QuestionDialogs : public Refreshable {
public:
    /// `topWindow` tells the window that a question belongs over.
    QuestionDialogs(DesktopContext& desktopContext, std::function<Gtk::Window&()> topWindow);
    ~QuestionDialogs() override;
    QuestionDialogs(const QuestionDialogs&) = delete;
    QuestionDialogs& operator=(const QuestionDialogs&) = delete;

    void refresh() override;

    /// The dialog on the screen, null without a question.
    Gtk::MessageDialog* onScreen() { return dialog_.get(); }

private:
    void ask(const Question& question);
    void answer(bool yes);

    DesktopContext& context_;
    std::function<Gtk::Window&()> topWindow_;
    std::unique_ptr<Gtk::MessageDialog> dialog_;
    int shown_ = 0; // the number of the question on the screen
};

} // namespace quelm

#endif
