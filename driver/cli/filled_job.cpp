// From a command line to a filled job.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/cli/filled_job.h"

#include "driver/cli/job/fill_job.h"
#include "driver/cli/job/question_policy.h"
#include "driver/widgets/widget_names.h"

namespace quelm {
namespace {

/// The options of one command are that job's alone.
DriverSetup setUpForOneJob(const CommandLine& line)
{
    auto setup = setUpDriver(line);
    setup.driver.saveFeatures = false;
    setup.driver.holdFailures = true;
    return setup;
}

} // namespace

FilledJob::FilledJob(const CommandLine& line)
    : recipients_(recipientsOf(line.job)), setup_(setUpForOneJob(line)), driver_(setup_.driver)
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
