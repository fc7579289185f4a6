// Reads the recipients of a job from a CSV file.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_CLI_JOB_RECIPIENTS_CSV_H
#define DRIVER_CLI_JOB_RECIPIENTS_CSV_H

#include "driver/cli/job/recipient_input.h"

#include <filesystem>
#include <string>
#include <vector>

namespace quelm {

/// Reads `file`, "-" for standard input: UTF-8 with or without a byte order mark, lines ended by LF or CRLF,
/// fields parted by commas and quoted with '"' where they need it. The first line names the columns name,
/// number, organization, phone, email and mailbox in any order; name and number must be there. Blanks around
/// unquoted fields do not count, empty lines are passed over. All or nothing: throws Error "FILE:LINE:
/// reason" for the first row that cannot be used, where LINE is the line on which the row begins.
std::vector<RecipientInput> readRecipientsCsv(const std::filesystem::path& file);

/// The same for a text in memory; `name` stands for the file in messages.
std::vector<RecipientInput> parseRecipientsCsv(const std::string& text, const std::string& name);

} // namespace quelm

#endif
