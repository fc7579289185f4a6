// A question of the main window, before something that cannot be undone.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_DESKTOP_MAIN_WINDOW_MAIN_QUESTION_H
#define DRIVER_DESKTOP_MAIN_WINDOW_MAIN_QUESTION_H

#include "driver/desktop/toolkit/message_bar.h"

#include <gtkmm/messagedialog.h>
#include <gtkmm/window.h>

#include <functional>
#include <memory>
#include <string>
#include <utility>

namespace quelm {

/// What a question says. Texts are UTF-8.
struct MainQuestionTexts {
    std::string fixedName; ///< for assistive tools and tests; the buttons' end in " No" and " Yes"
    std::string text;
    std::string details;
    std::string no; ///< the buttons' texts
    std::string yes;
    std::string other = {}; ///< of a third answer, whose button ends in " Other"; empty for none
};

/// What follows the answers; each may be empty.
struct MainQuestionAnswers {
    std::function<void()> yes;
    std::function<void()> other;
    std::function<void()> no; ///< also for anything else with which the user closes the question
};

/// Asks one question at a time, in a window above its own, which goes on meanwhile.
class MainQuestion {
public:
    /// Both outlive the question.
    MainQuestion(Gtk::Window& parent, MessageBar& messages) : parent_(parent), messages_(messages) {}

    /// Shows a question in place of one that is there. `answeredYes` is called when the user says yes, behind
    /// the question's end; anything else that closes it is a no.
    void ask(const MainQuestionTexts& texts, std::function<void()> answeredYes)
    {
        ask(texts, MainQuestionAnswers{std::move(answeredYes), {}, {}});
    }

    /// The same; one of the answers is called behind the question's end.
    void ask(const MainQuestionTexts& texts, MainQuestionAnswers answers);

    /// Whether a question is on the screen.
    [[nodiscard]] bool isOpen() const { return dialog_ && dialog_->get_visible(); }

    /// Whether an answer is waited for. If so, a message says until then that it has to come first.
    [[nodiscard]] bool comesFirst();

    /// Takes a question from the screen without an answer. A message that asks for one stays.
    void withdraw();

private:
    Gtk::Window& parent_;
    MessageBar& messages_;
    std::unique_ptr<Gtk::MessageDialog> dialog_;
    bool isAwaited_ = false; ///< the message asks for the answer
};

} // namespace quelm

#endif
