// The attribute lines of a fax job as devices read them, and what of them the driver lets through.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_JOBS_ATTRIBUTE_LINES_H
#define DRIVER_JOBS_ATTRIBUTE_LINES_H

#include "driver/plugin/fax_session.h"

#include <string>
#include <string_view>
#include <vector>

namespace quelm {

/// What a device makes of a fax number: the number without "(", ")", blanks and "-".
[[nodiscard]] std::string dialledNumber(std::string_view number);

/// True for what a device can dial: digits, of which there is one, and "+", ".", "*", "#", ",", "/".
[[nodiscard]] bool isDialledNumber(std::string_view number);

/// True for what a device takes as a mailbox: one to four letters or digits of ASCII, "*" or "#".
[[nodiscard]] bool isMailbox(std::string_view mailbox);

/// True for what a dialing prefix or a credit card's number may hold: digits, blanks, "-", "*", "#" and ",".
/// A text that dials nothing is none.
[[nodiscard]] bool isDialText(std::string_view text);

/// The job that attribute lines are compared with.
struct ExpectedLines {
    Pdl pdl = Pdl::dsc;
    std::string dialingPrefix;
    std::string creditCard; ///< empty for none
    std::vector<JobRecipient> recipients;
};

/// Throws quelm::Error unless `lines` are exactly what a component writes for such a job: every line in its
/// shape and place and with its line end, one destination for each recipient, with its digits behind the
/// prefix, and its mailbox, and the job's credit card. The error names the first line that differs, but never
/// a credit card's number. A device acts on every line there is, so a line too many is somebody else's fax.
void checkAttributeLines(std::string_view lines, const ExpectedLines& expected);

/// Whether the lines carry the number of a credit card.
[[nodiscard]] bool holdCreditCard(std::string_view lines);

} // namespace quelm

#endif
