// Recipients whom one fax would reach twice.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_HANDOVER_DUPLICATES_H
#define DRIVER_HANDOVER_DUPLICATES_H

#include "driver/plugin/fax_session.h"

#include <cstddef>
#include <string>
#include <vector>

namespace quelm {

class Driver;

/// Two recipients of a list that have the same number and mailbox under different names or spellings.
struct SharedNumber {
    std::size_t first; ///< positions from 0; the first of all that have it
    std::size_t later;

    bool operator==(const SharedNumber&) const = default;
};

/// Every recipient whose number and mailbox somebody ahead of it has, in order. Numbers are the same when the
/// same is dialled, "/" and "." left aside: "555-1234" and "(555) 1234". A recipient of the same name and
/// number as the other, letter for letter, is not among them: about those the component asks when they are
/// added.
[[nodiscard]] std::vector<SharedNumber> sharedNumbers(const std::vector<JobRecipient>& recipients);

/// Whether somebody of that very name and number is among the job's recipients or the picks. The component
/// compares name and number as one text, and so asks about "Ann1" with 555 when "Ann" with 1555 is there:
/// they are two people.
[[nodiscard]] bool holdsRecipient(FaxSession& session, const std::string& name, const std::string& number);

/// What a user should know of two recipients of one number, as a sentence.
[[nodiscard]] std::string sharedNumberWarning(const JobRecipient& first, const JobRecipient& later);

/// The same for all of them.
[[nodiscard]] std::vector<std::string> sharedNumberWarnings(const std::vector<JobRecipient>& recipients,
                                                            const std::vector<SharedNumber>& shared);

/// With the fax dialog open: removes the recipients at these positions as a user does, with the dialog's
/// button. Throws quelm::Error when the component removes anybody else; the job must not be written then.
void removeRecipients(Driver& driver, const std::vector<std::size_t>& positions);

} // namespace quelm

#endif
