// The number of a credit card from a file.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_CLI_JOB_CREDIT_CARD_FILE_H
#define DRIVER_CLI_JOB_CREDIT_CARD_FILE_H

#include <string>

namespace quelm {

/// The first line of the file without its line end, which is a card's number; "-" is standard input. A file
/// that others than its owner can read is a warning in the log. Throws quelm::Error when the file cannot be
/// read or its first line is no such number; the line is told in no message.
[[nodiscard]] std::string readCreditCard(const std::string& file);

} // namespace quelm

#endif
