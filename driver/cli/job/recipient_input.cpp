// Splitting the value of --to.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/cli/job/recipient_input.h"

#include "base/error.h"
#include "base/translation.h"
#include "driver/store/name_checks.h"

#include <algorithm>

namespace quelm {

RecipientInput recipientFromOption(const std::string& value)
{
    RecipientInput recipient;
    recipient.origin = "--to " + value;
    recipient.isTyped = true;
    const auto split = value.rfind('=');
    if (split == std::string::npos && !value.empty() && !problemWithPhoneNumber(value, "- ( ) /")) {
        recipient.number = value;
        recipient.name = nameOfNumber(value);
        return recipient;
    }
    if (split == std::string::npos || split == 0 || split + 1 == value.size())
        throw UsageError(
            localized("--to \"%s\": write NAME=NUMBER or NUMBER, such as --to \"Ann=555-1234\" or "
                      "--to 555-1234",
                      value));
    recipient.name = value.substr(0, split);
    recipient.number = value.substr(split + 1);
    return recipient;
}

std::string nameOfNumber(std::string_view number)
{
    constexpr std::size_t longest = 31;
    constexpr std::string_view inNames = "0123456789-.";
    std::string name;
    for (const char character : number)
        if (inNames.find(character) != std::string_view::npos)
            name += character;
        else if (!name.empty() && name.back() != ' ')
            name += ' ';
    name.resize(std::min(name.size(), longest));
    if (name.ends_with(' '))
        name.pop_back();
    return name;
}

} // namespace quelm
