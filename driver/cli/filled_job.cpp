// From a command line to a filled job.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/cli/filled_job.h"

#include "driver/cli/job/fill_job.h"
#include "driver/cli/job/question_policy.h"
#include "driver/widgets/widget_names.h"

namespace quelm {

FilledJob::FilledJob(const CommandLine& line)
    : recipients_(recipientsOf(line.job)), setup_(setUpForOneCommand(line)), driver_(setup_.driver)
{
    const QuestionPolicy policy(line.job.duplicates.value_or(Duplicates::ask), Terminal::standard());
    fillJob(driver_, line.job, recipients_, policy);
    driver_.releaseFailures();
}

std::size_t FilledJob::recipientCount() const
{
    return driver_.show(widget_names::lanFaxRecipientList).rowCount.value_or(0);
}

} // namespace quelm
