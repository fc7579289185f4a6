// Answering the duplicate question by policy, or by the person at the terminal.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/cli/job/question_policy.h"

#include "base/error.h"
#include "base/log.h"
#include "base/terminal/yes_no.h"
#include "base/texts.h"
#include "base/translation.h"

#include <unistd.h>

#include <algorithm>
#include <iostream>
#include <utility>

namespace quelm {

Terminal Terminal::standard()
{
    Terminal terminal;
    terminal.interactive = ::isatty(STDIN_FILENO) == 1 && !isQuiet();
    terminal.show = [](const std::string& text) { std::cerr << text << std::flush; };
    terminal.readLine = []() -> std::optional<std::string> {
        std::string line;
        if (!std::getline(std::cin, line))
            return std::nullopt;
        return line;
    };
    return terminal;
}

std::optional<bool> answerOf(const Terminal& terminal, const std::string& question)
{
    if (!terminal.interactive)
        return std::nullopt;
    std::string text = question;
    std::erase(text, '\r');
    for (;;) {
        // Translators: a question in several lines, and how to answer it.
        terminal.show(localized("%s [y/n] ", terminalText(text)));
        const auto answer = terminal.readLine();
        if (!answer)
            return std::nullopt;
        if (isYes(*answer))
            return true;
        if (isNo(*answer))
            return false;
    }
}

QuestionPolicy::QuestionPolicy(Duplicates duplicates, Terminal terminal)
    : duplicates_(duplicates), terminal_(std::move(terminal))
{
}

bool QuestionPolicy::addDuplicate(const std::string& question, const std::string& origin) const
{
    return duplicates_ == Duplicates::ask ? ask(question, origin) : duplicates_ == Duplicates::add;
}

bool QuestionPolicy::ask(const std::string& question, const std::string& origin) const
{
    const auto answer = answerOf(terminal_, question);
    if (!answer)
        throw Error(localized(
            "%s: this recipient is in the job already; say --duplicates add or --duplicates skip", origin));
    return *answer;
}

} // namespace quelm
