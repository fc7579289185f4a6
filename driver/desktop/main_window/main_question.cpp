// Shows a question and takes its answer.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/desktop/main_window/main_question.h"

#include "base/translation.h"
#include "driver/desktop/toolkit/accessible.h"

#include <utility>

namespace quelm {

void MainQuestion::ask(const MainQuestionTexts& texts, std::function<void()> answeredYes)
{
    dialog_ = std::make_unique<Gtk::MessageDialog>(parent_, texts.text, false, Gtk::MESSAGE_QUESTION,
                                                   Gtk::BUTTONS_NONE, true);
    dialog_->set_title(parent_.get_title());
    dialog_->set_secondary_text(texts.details);
    describe(*dialog_, texts.fixedName);
    describe(*dialog_->add_button(texts.no, Gtk::RESPONSE_CANCEL), texts.fixedName + " No");
    describe(*dialog_->add_button(texts.yes, Gtk::RESPONSE_YES), texts.fixedName + " Yes");
    dialog_->set_default_response(Gtk::RESPONSE_CANCEL);
    dialog_->signal_response().connect([this, answeredYes = std::move(answeredYes)](int response) {
        dialog_->hide();
        if (std::exchange(isAwaited_, false))
            messages_.clear();
        if (response == Gtk::RESPONSE_YES)
            answeredYes();
    });
    dialog_->present();
}

bool MainQuestion::comesFirst()
{
    if (!dialog_ || !dialog_->get_visible())
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
