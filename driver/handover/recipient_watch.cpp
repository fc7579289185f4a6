// Follows the lists of a job.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/handover/recipient_watch.h"

#include "base/error.h"
#include "driver/core/driver.h"
#include "driver/handover/recipient_check.h"

#include <utility>

namespace quelm {

std::vector<std::string> RecipientWatch::newProblems()
{
    FaxSession& session = driver_.faxSession();
    const std::size_t recipients = session.count(RecipientList::job);
    const std::size_t picks = session.count(RecipientList::picks);
    const std::size_t windows = driver_.windows().size();
    const bool edited = recipients == recipients_ && picks == picks_ && windows < windows_;
    // Who was removed may come back, and is named again then.
    if (recipients < recipients_)
        named_.clear();

    std::vector<std::string> problems;
    const auto look = [&](RecipientList list, std::size_t before, std::size_t now) {
        for (std::size_t i = edited ? 0 : before; i < now; ++i)
            if (auto problem = problemWithRecipient(session.recipient(list, i)))
                if (named_.insert(*problem).second)
                    problems.push_back(*std::move(problem));
    };
    look(RecipientList::job, std::exchange(recipients_, recipients), recipients);
    look(RecipientList::picks, std::exchange(picks_, picks), picks);
    windows_ = windows;
    return problems;
}

void RecipientWatch::require(const std::string& origin)
{
    const auto problems = newProblems();
    if (!problems.empty())
        throw Error(origin + ": " + problems.front());
}

} // namespace quelm
