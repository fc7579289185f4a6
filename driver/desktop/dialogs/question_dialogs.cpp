// Asks questions and queues their answers.
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
    : context(desktopContext), topWindow(std::move(findTopWindow))
{
    context.driver.questions().setObserver([this] { context.turns.touch(*this); });
    context.turns.touch(*this);
}

QuestionDialogs::~QuestionDialogs()
{
    context.driver.questions().setObserver({});
    context.turns.forget(*this);
}

void QuestionDialogs::refresh()
{
    const Question* question = context.driver.questions().top();
    const int wanted = question == nullptr ? 0 : question->number;
    if (wanted == shown)
        return;
    dialog.reset();
    shown = wanted;
    if (question != nullptr)
        ask(*question);
}

void QuestionDialogs::ask(const Question& question)
{
    const bool isYesNo = question.kind == Questions::yesNoKind;
    // As markup, or the toolkit makes all of it bold.
    dialog = std::make_unique<Gtk::MessageDialog>(
        topWindow(), Glib::Markup::escape_text(questionText(question.text)), true,
        isYesNo ? Gtk::MESSAGE_QUESTION : Gtk::MESSAGE_INFO, Gtk::BUTTONS_NONE, true);
    dialog->set_title(topWindow().get_title());
    if (isYesNo) {
        Gtk::Button& no = *dialog->add_button(localized("_No"), Gtk::RESPONSE_NO);
        Gtk::Button& yes = *dialog->add_button(localized("_Yes"), Gtk::RESPONSE_YES);
        describe(no, "Question No");
        describe(yes, "Question Yes");
        dialog->set_default_response(Gtk::RESPONSE_YES);
    } else {
        describe(*dialog->add_button(localized("_Close"), Gtk::RESPONSE_NO), "Question Close");
    }
    dialog->get_style_context()->add_class("question");
    dialog->get_message_area()->property_margin() = marginOfQuestion;
    describe(*dialog, "Question");
    dialog->signal_response().connect([this](int response) { answer(response == Gtk::RESPONSE_YES); });
    dialog->present();
}

void QuestionDialogs::answer(bool yes)
{
    // A second click must not answer the next question.
    dialog->set_sensitive(false);
    context.turns.act([this, yes, number = shown] {
        const Question* question = context.driver.questions().top();
        if (question != nullptr && question->number == number)
            context.driver.actions().answer(yes);
    });
}

} // namespace quelm
