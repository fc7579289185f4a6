// Adds entries and groups of a phonebook to a job through the component's phonebook dialog.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_CLI_JOB_PICK_RECIPIENTS_H
#define DRIVER_CLI_JOB_PICK_RECIPIENTS_H

#include "driver/cli/job/job_options.h"
#include "driver/cli/job/question_policy.h"

namespace quelm {

class Driver;
class RecipientWatch;

/// With the fax dialog open: opens the phonebook dialog, picks the entries and groups that the options name,
/// in order, and confirms. Does nothing when they name none. Throws Error, naming the option, for one that
/// the phonebook does not have, for a group with a member that it does not have, when the dialog picks
/// something else than was asked for, and for somebody whom `watch` refuses; the job must not be written
/// then. Throws UsageError for
/// --shared without either.
void pickRecipients(Driver& driver, const JobOptions& options, const QuestionPolicy& policy,
                    RecipientWatch& watch);

} // namespace quelm

#endif
