// Asks questions and queues their answers.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/desktop/dialogs/question_dialogs.h"

#include "base/translation.h"
#include "driver/desktop/toolkit/shown_text.h"

#include <glibmm/markup.h>

namespace quelm {

namespace {

constexpr int marginOfQuestion = 12;

} // namespace

std::string questionText(const std::string& text)
{
    std::string shown = withPlainLineEnds(drawable(text));
    const std::size_t last = shown.find_last_not_of("\n ");
    shown.resize(last == std::string::npos ? 0 : last + 1);
    return shown;
}

QuestionDialogs::QuestionDialogs(DesktopContext& desktopContext, std::function<Gtk::Window&()> findTopWindow)
    : context_(desktopContext), topWindow_(std::move(findTopWindow))
{
    context_.driver.questions().setObserver([this] { context_.turns.touch(*this); });
    context_.turns.touch(*this);
}

QuestionDialogs::~QuestionDialogs()
{
    context_.driver.questions().setObserver({});
    context_.turns.forget(*this);
}

void QuestionDialogs::refresh()
{
    const Question* question = context_.driver.questions().top();
    const int wanted = question == nullptr ? 0 : question->number;
    if (wanted == shown_)
        return;
    dialog_.reset();
    shown_ = wanted;
    if (question != nullptr)
        ask(*question);
}

void QuestionDialogs::ask(const Question& question)
{
    const bool isYesNo = question.kind == Questions::yesNoKind;
    // As markup, or the toolkit makes all of it bold.
    dialog_ = std::make_unique<Gtk::MessageDialog>(
        topWindow_(), Glib::Markup::escape_text(questionText(question.text)), true,
        isYesNo ? Gtk::MESSAGE_QUESTION : Gtk::MESSAGE_INFO, Gtk::BUTTONS_NONE, true);
    dialog_->set_title(topWindow_().get_title());
    if (isYesNo) {
        Gtk::Button& no = *dialog_->add_button(localized("_No"), Gtk::RESPONSE_NO);
        Gtk::Button& yes = *dialog_->add_button(localized("_Yes"), Gtk::RESPONSE_YES);
        describe(no, "Question No");
        describe(yes, "Question Yes");
        dialog_->set_default_response(Gtk::RESPONSE_YES);
    } else {
        describe(*dialog_->add_button(localized("_Close"), Gtk::RESPONSE_NO), "Question Close");
    }
    dialog_->get_style_context()->add_class("question");
    dialog_->get_message_area()->property_margin() = marginOfQuestion;
    describe(*dialog_, "Question");
    dialog_->signal_response().connect([this](int response) { answer(response == Gtk::RESPONSE_YES); });
    dialog_->present();
}

void QuestionDialogs::answer(bool yes)
{
    // A second click must not answer the next question.
    dialog_->set_sensitive(false);
    context_.turns.act([this, yes, number = shown_] {
        const Question* question = context_.driver.questions().top();
        if (question != nullptr && question->number == number)
            context_.driver.actions().answer(yes);
    });
}

} // namespace quelm
