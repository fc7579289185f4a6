// Carries out the options of a job as a person at the desktop would.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_CLI_JOB_FILL_JOB_H
#define DRIVER_CLI_JOB_FILL_JOB_H

#include "driver/cli/job/job_options.h"
#include "driver/cli/job/question_policy.h"
#include "driver/cli/job/recipient_input.h"

#include <vector>

namespace quelm {

class Driver;

/// The recipients that the options name, in order: those of --to, then those of --recipients.
/// Throws Error or UsageError for the first that cannot be used.
std::vector<RecipientInput> recipientsOf(const JobOptions& options);

/// Opens the fax dialog, sets the options, sets up the cover sheet, adds the recipients one by
/// one, those of the phonebook last, and confirms: every step presses, types and ticks what a person would,
/// so that the component's own callbacks build the job. Throws Error, naming the option or the recipient,
/// when a step is refused, and UsageError when options do not fit together; the job must not be written then.
void fillJob(Driver& driver, const JobOptions& options, const std::vector<RecipientInput>& recipients,
             const QuestionPolicy& policy);

} // namespace quelm

#endif
