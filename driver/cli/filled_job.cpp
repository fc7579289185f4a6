// From a command line to a filled job.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/cli/filled_job.h"

#include "base/error.h"
#include "base/log.h"
#include "base/translation.h"
#include "driver/cli/job/credit_card_file.h"
#include "driver/cli/job/fill_job.h"
#include "driver/cli/job/question_policy.h"
#include "driver/handover/warnings.h"
#include "driver/widgets/widget_names.h"
#include "driver/widgets/widget_tree.h"

#include <utility>

namespace quelm {
namespace {

/// The options of the job, with the credit card that stands in a file.
JobOptions optionsOf(const CommandLine& line)
{
    JobOptions options = line.job;
    if (options.recipients == "-" && line.document == "-")
        throw UsageError(
            localized("standard input is read once; give the document or --recipients another file "
                      "than \"-\""));
    if (!options.creditCardFile)
        return options;
    if (*options.creditCardFile == "-" && (options.recipients == "-" || line.document == "-"))
        throw UsageError(
            localized("standard input is read once; give --credit-card-file another file than \"-\""));
    options.creditCard = readCreditCard(*options.creditCardFile);
    return options;
}

/// Whether the fax dialog shows a card that is charged.
bool keepsCard(Driver& driver)
{
    const Widget* box = driver.widgets().find(widget_names::lanFaxCreditCard);
    const Widget* number = driver.widgets().find(widget_names::lanFaxCreditCardInfo);
    return box != nullptr && box->flag() && number != nullptr && !number->text().empty();
}

} // namespace

FilledJob::FilledJob(const CommandLine& line, DriverSetup setup)
    : options_(optionsOf(line)), recipients_(recipientsOf(options_)), setup_(std::move(setup)),
      driver_(setup_.driver)
{
    const QuestionPolicy policy(options_.duplicates.value_or(Duplicates::ask), Terminal::standard());
    driver_.requireReadableOptions();
    leavesKeptCard_ = !options_.keptCreditCard && !options_.creditCard && keepsCard(driver_);
    try {
        fillJob(driver_, options_, recipients_, policy);
    } catch (const Error&) {
        // An option that was not taken over is why others do not fit it.
        driver_.requireKnownOptions();
        throw;
    }
    driver_.requireKnownOptions();
    driver_.releaseFailures();
    handover_ =
        prepareHandover(driver_, line.command == Command::attributes ? Written::attributes : Written::job);
    // Whoever was asked about the numbers that stand twice knows of them.
    Handover untold = handover_;
    if (options_.duplicates == Duplicates::ask)
        untold.sharedWarnings.clear();
    logWarnings(untold.allWarnings());
}

void FilledJob::tellKeptCard() const
{
    if (options_.keptCreditCard)
        for (const auto& remark : remarks())
            writeRemark(remark);
}

} // namespace quelm
