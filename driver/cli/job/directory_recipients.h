// Adds people of the device's directory to a job.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_CLI_JOB_DIRECTORY_RECIPIENTS_H
#define DRIVER_CLI_JOB_DIRECTORY_RECIPIENTS_H

#include "driver/cli/job/job_options.h"

namespace quelm {

class Driver;
class RecipientWatch;

/// With the fax dialog open: searches the device's directory for each beginning of a name that the options
/// give, and adds the one person that it finds. Somebody whom the job holds already is added again without a
/// question, as the dialog does, but left out when duplicates are to be skipped. Throws Error, naming the
/// option, when nobody or several match, the one has no fax number, or `watch` refuses the one; the job must
/// not be written then.
void addDirectoryRecipients(Driver& driver, const JobOptions& options, RecipientWatch& watch);

} // namespace quelm

#endif
