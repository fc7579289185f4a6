// What a recipient may hold, from wherever it came.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_HANDOVER_RECIPIENT_CHECK_H
#define DRIVER_HANDOVER_RECIPIENT_CHECK_H

#include "driver/plugin/fax_session.h"

#include <optional>
#include <string>
#include <vector>

namespace quelm {

/// The recipient as a sentence names it: "Ann (555-1234)"; short and clean whatever it holds.
[[nodiscard]] std::string shownRecipient(const JobRecipient& recipient);

/// What is wrong with a recipient, as a sentence for the user that names it, or nothing when it can be faxed
/// to. Those of phonebooks and directories have to keep to what can be typed:
///
/// - The name is there, at most 255 bytes long, and made of what a person may type as a name
///   (`problemWithName`) and of commas.
/// - The number is at most 46 characters long: digits, blanks, and "+-.,*#()/". One digit there must be.
/// - The mailbox is at most 4 letters or digits of ASCII, "*" or "#"; or there is none.
/// - Organization, phone number and e-mail address are at most 255 bytes of UTF-8 each, without line ends and
///   other control characters.
/// - It is a single recipient, not a group.
[[nodiscard]] std::optional<std::string> problemWithRecipient(const JobRecipient& recipient);

/// A number with "(0)" behind a country code, "+44 (0)20 7946 0000", is dialled with the 0, which is hardly
/// meant: the sentence that says so, with the number both ways. Nothing for other numbers.
[[nodiscard]] std::optional<std::string> trunkZeroWarning(const JobRecipient& recipient);

/// The warnings of all recipients, in their order.
[[nodiscard]] std::vector<std::string> trunkZeroWarnings(const std::vector<JobRecipient>& recipients);

} // namespace quelm

#endif
