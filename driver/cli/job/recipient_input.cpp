// Splitting the value of --to.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/cli/job/recipient_input.h"

#include "base/error.h"
#include "base/translation.h"

namespace quelm {

RecipientInput recipientFromOption(const std::string& value)
{
    const auto split = value.rfind('=');
    if (split == std::string::npos || split == 0 || split + 1 == value.size())
        throw UsageError(localized("--to \"%s\": write NAME=NUMBER, such as --to \"Ann=555-1234\"", value));
    RecipientInput recipient;
    recipient.origin = "--to " + value;
    recipient.name = value.substr(0, split);
    recipient.number = value.substr(split + 1);
    return recipient;
}

} // namespace quelm
