// Asks, answers and closes questions.
#include "driver/plugin/questions.h"

#include "base/translation.h"

#include <utility>

namespace quelm {

namespace {

// The component only hands the dialog back; it is told apart by the question's number.
_GtkDialog* dialogHandle(const int& number)
{
    return reinterpret_cast<_GtkDialog*>(const_cast<int*>(&number));
}

} // namespace

void Questions::ask(int kind, host::ResponseCallback response, std::string text)
{
    open.push_back({++lastNumber, kind, response, std::move(text)});
    tell();
}

const Question* Questions::top() const { return open.empty() ? nullptr : &open.back(); }

bool Questions::answerTop(bool yes)
{
    if (open.empty())
        return false;
    const int number = open.back().number;
    const host::ResponseCallback response = open.back().response;
    if (response != nullptr) {
        const std::optional<int> before = std::exchange(answering, number);
        guard.run(localized("the answer to a question"),
                  [&] { response(dialogHandle(number), yes ? host::responseYes : host::responseNo); });
        answering = before;
    }
    close(number);
    return true;
}

void Questions::closeCurrent()
{
    if (answering)
        close(*answering);
    else if (!open.empty())
        close(open.back().number);
}

void Questions::close(int number)
{
    const auto removed =
        std::erase_if(open, [number](const Question& question) { return question.number == number; });
    if (removed != 0)
        tell();
}

void Questions::tell() const
{
    if (changed)
        changed();
}

} // namespace quelm
