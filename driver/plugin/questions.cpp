// Asks, answers and closes questions.
// SPDX-License-Identifier: LGPL-2.1-or-later
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
    open_.push_back({++lastNumber_, kind, response, std::move(text)});
    tell();
}

const Question* Questions::top() const { return open_.empty() ? nullptr : &open_.back(); }

bool Questions::answerTop(bool yes)
{
    if (open_.empty())
        return false;
    const int number = open_.back().number;
    const host::ResponseCallback response = open_.back().response;
    if (response != nullptr) {
        const std::optional<int> before = std::exchange(answering_, number);
        guard_.run(localized("the answer to a question"),
                   [&] { response(dialogHandle(number), yes ? host::responseYes : host::responseNo); });
        answering_ = before;
    }
    close(number);
    return true;
}

void Questions::closeCurrent()
{
    if (answering_)
        close(*answering_);
    else if (!open_.empty())
        close(open_.back().number);
}

void Questions::close(int number)
{
    const auto removed =
        std::erase_if(open_, [number](const Question& question) { return question.number == number; });
    if (removed != 0)
        tell();
}

void Questions::tell() const
{
    if (changed_)
        changed_();
}

} // namespace quelm
