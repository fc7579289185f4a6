// Finds recipients of one number, and removes them through the dialog.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/handover/duplicates.h"

#include "base/error.h"
#include "base/translation.h"
#include "driver/core/driver.h"
#include "driver/handover/recipient_check.h"
#include "driver/jobs/attribute_lines.h"
#include "driver/widgets/widget_names.h"

#include <algorithm>
#include <functional>
#include <iterator>
#include <unordered_map>

namespace quelm {
namespace {

/// What tells destinations apart: two recipients of one text are one destination.
std::string destinationOf(const JobRecipient& recipient)
{
    std::string dialled = dialledNumber(recipient.number);
    std::erase_if(dialled, [](char character) { return character == '/' || character == '.'; });
    return dialled + '\0' + recipient.mailbox;
}

} // namespace

std::vector<SharedNumber> sharedNumbers(const std::vector<JobRecipient>& recipients)
{
    std::unordered_map<std::string, std::size_t> positions;
    std::vector<SharedNumber> shared;
    for (std::size_t i = 0; i < recipients.size(); ++i) {
        const auto& recipient = recipients[i];
        const auto [known, isNew] = positions.try_emplace(destinationOf(recipient), i);
        if (isNew)
            continue;
        const auto& first = recipients[known->second];
        if (first.name != recipient.name || first.number != recipient.number)
            shared.push_back({known->second, i});
    }
    return shared;
}

bool holdsRecipient(FaxSession& session, const std::string& name, const std::string& number)
{
    const auto isHeld = [&](const std::vector<JobRecipient>& recipients) {
        return std::ranges::any_of(recipients, [&](const JobRecipient& recipient) {
            return recipient.name == name && recipient.number == number;
        });
    };
    return isHeld(session.recipients()) || isHeld(session.picks());
}

std::string sharedNumberWarning(const JobRecipient& first, const JobRecipient& later)
{
    // Translators: two recipients with their numbers.
    return localized("%s has the same fax number as %s, so the fax goes there twice", shownRecipient(later),
                     shownRecipient(first));
}

std::vector<std::string> sharedNumberWarnings(const std::vector<JobRecipient>& recipients,
                                              const std::vector<SharedNumber>& shared)
{
    std::vector<std::string> warnings;
    std::ranges::transform(shared, std::back_inserter(warnings), [&recipients](const SharedNumber& both) {
        return sharedNumberWarning(recipients[both.first], recipients[both.later]);
    });
    return warnings;
}

void removeRecipients(Driver& driver, const std::vector<std::size_t>& positions)
{
    if (positions.empty())
        return;
    auto expected = driver.faxSession().recipients();
    auto sorted = positions;
    // From the last one on, so that those ahead of it keep their positions.
    std::ranges::sort(sorted, std::greater());
    for (const auto position : sorted)
        expected.erase(expected.begin() + static_cast<std::ptrdiff_t>(position));

    std::vector<int> rows;
    std::ranges::transform(sorted, std::back_inserter(rows),
                           [](std::size_t position) { return static_cast<int>(position); });
    driver.select(widget_names::lanFaxRecipientList, rows);
    driver.press(widget_names::lanFaxRemoveButton);
    if (driver.pendingQuestion())
        driver.answer(true);
    if (driver.faxSession().recipients() != expected)
        throw Error(localized("the fax dialog did not remove the recipients of a number that stands twice; "
                              "nothing is written"));
}

} // namespace quelm
