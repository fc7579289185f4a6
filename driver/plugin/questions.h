// The questions that the component has put to the user and that wait for an answer.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_PLUGIN_QUESTIONS_H
#define DRIVER_PLUGIN_QUESTIONS_H

#include "driver/plugin/call_guard.h"
#include "host/component.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace quelm {

/// One question on the screen.
struct Question {
    int number;                      ///< distinct within the process
    int kind;                        ///< 3: yes or no
    host::ResponseCallback response; ///< null when nobody waits for the answer
    std::string text;
};

/// Open questions, the one asked last on top.
class Questions {
public:
    static constexpr int yesNoKind = 3;

    explicit Questions(CallGuard& callGuard) : guard_(callGuard) {}

    /// Puts a question on top.
    void ask(int kind, host::ResponseCallback response, std::string text);

    /// The question on top, null when none is open. Valid until the questions change.
    const Question* top() const;

    /// Runs the response callback of the question on top; the question is closed when that has
    /// returned, whether or not the callback closed it itself. Questions that it asked stay. False
    /// when none is open.
    bool answerTop(bool yes);

    /// Closes the question whose response callback is running (once); outside of one, the question
    /// on top, unanswered.
    void closeCurrent();

    /// Called whenever a question was asked or closed; for front ends.
    void setObserver(std::function<void()> observer) { changed_ = std::move(observer); }

private:
    void close(int number);
    void tell() const;

    CallGuard& guard_;
    std::vector<Question> open_;
    std::optional<int> answering_; // the number of the question whose callback is running
    int lastNumber_ = 0;
    std::function<void()> changed_;
};

} // namespace quelm

#endif
