// Reads the recipients of a job from a CSV file.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_CLI_JOB_RECIPIENTS_CSV_H
#define DRIVER_CLI_JOB_RECIPIENTS_CSV_H

#include "driver/cli/job/recipient_input.h"
#include "driver/phonebook/contacts.h"

#include <filesystem>
#include <string>
#include <vector>

namespace quelm {

struct RecipientsReading {
    ReadingOptions text;
    bool rename = false; ///< names that are not allowed are changed
};

/// Reads `file`, "-" for standard input, as phonebooks are imported from CSV files: our own columns name,
/// number, organization, phone, email and mailbox in any order, or those of address books, in any charset.
/// Everybody gets one fax, at his number for work where he has several. Whose name is missing is called by
/// his number; groups are passed over, since their members stand in the list, as are people of an address
/// book without a fax number. What the user should know of that is logged.
///
/// All or nothing: throws Error "FILE:LINE: reason" for the one row that cannot be used, where LINE is the
/// line on which it begins. Several are named on standard error, a hundred at most, ahead of the Error.
std::vector<RecipientInput> readRecipientsCsv(const std::filesystem::path& file,
                                              const RecipientsReading& reading = {});

/// The same for a text in memory; `name` stands for the file in messages.
std::vector<RecipientInput> parseRecipientsCsv(std::string text, const std::string& name,
                                               const RecipientsReading& reading = {});

} // namespace quelm

#endif
