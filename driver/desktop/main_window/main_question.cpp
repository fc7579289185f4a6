// Shows a question and takes its answer.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/desktop/main_window/main_question.h"

#include "base/translation.h"
#include "driver/desktop/toolkit/accessible.h"

#include <gtkmm/label.h>

#include <utility>

namespace quelm {
namespace {

const std::function<void()>& answerFor(int response, const MainQuestionAnswers& answers)
{
    switch (response) {
    case Gtk::RESPONSE_YES:
        return answers.yes;
    case Gtk::RESPONSE_APPLY:
        return answers.other;
    default:
        return answers.no;
    }
}

} // namespace

void MainQuestion::ask(const MainQuestionTexts& texts, MainQuestionAnswers answers)
{
    dialog_ = std::make_unique<Gtk::MessageDialog>(parent_, texts.text, false, Gtk::MESSAGE_QUESTION,
                                                   Gtk::BUTTONS_NONE, true);
    dialog_->set_title(parent_.get_title());
    dialog_->set_secondary_text(texts.details);
    for (auto* child : dialog_->get_message_area()->get_children())
        if (auto* label = dynamic_cast<Gtk::Label*>(child)) {
            // Names of files have no blanks to be broken at.
            label->set_line_wrap_mode(Pango::WRAP_WORD_CHAR);
        }
    describe(*dialog_, texts.fixedName);
    describe(*dialog_->add_button(texts.no, Gtk::RESPONSE_CANCEL), texts.fixedName + " No");
    if (!texts.other.empty())
        describe(*dialog_->add_button(texts.other, Gtk::RESPONSE_APPLY), texts.fixedName + " Other");
    describe(*dialog_->add_button(texts.yes, Gtk::RESPONSE_YES), texts.fixedName + " Yes");
    dialog_->set_default_response(Gtk::RESPONSE_CANCEL);
    dialog_->signal_response().connect([this, answers = std::move(answers)](int response) {
        dialog_->hide();
        if (std::exchange(isAwaited_, false))
            messages_.clear();
        // The dialog, and the answers with it, may go when another question follows.
        const auto answer = answerFor(response, answers);
        if (answer)
            answer();
    });
    dialog_->present();
}

bool MainQuestion::comesFirst()
{
    if (!isOpen())
        return false;
    isAwaited_ = true;
    messages_.tell(Gtk::MESSAGE_INFO, translated("Answer the question first."));
    return true;
}

void MainQuestion::withdraw()
{
    isAwaited_ = false;
    if (dialog_)
        dialog_->hide();
}

} // namespace quelm
