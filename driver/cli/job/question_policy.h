// Who answers the component's question about a recipient that the job holds already.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_CLI_JOB_QUESTION_POLICY_H
#define DRIVER_CLI_JOB_QUESTION_POLICY_H

#include "driver/cli/job/job_options.h"

#include <functional>
#include <optional>
#include <string>

namespace quelm {

/// The person at the terminal, if there is one.
struct Terminal {
    bool interactive = false;
    /// Shows a text, and reads a line; no line at the end of the input.
    std::function<void(const std::string&)> show;
    std::function<std::optional<std::string>()> readLine;

    /// Standard input and standard error; interactive when standard input is a terminal, and the
    /// program need not be quiet.
    static Terminal standard();
};

/// Puts a question until it is answered with yes or no; nothing at the end of the input, and where there is
/// nobody to ask.
[[nodiscard]] std::optional<bool> answerOf(const Terminal& terminal, const std::string& question);

/// Answers the duplicate question.
class QuestionPolicy {
public:
    QuestionPolicy(Duplicates duplicates, Terminal terminal);

    /// True to add the recipient once more, false to leave it out. `origin` says where the
    /// recipient was given. Throws Error when the question can be put to nobody.
    [[nodiscard]] bool addDuplicate(const std::string& question, const std::string& origin) const;

private:
    [[nodiscard]] bool ask(const std::string& question, const std::string& origin) const;

    Duplicates duplicates_;
    Terminal terminal_;
};

} // namespace quelm

#endif
