// Checks one recipient.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/handover/recipient_check.h"

#include "base/texts.h"
#include "base/translation.h"
#include "driver/jobs/attribute_lines.h"
#include "driver/store/name_checks.h"

#include <cstddef>
#include <string_view>
#include <utility>

namespace quelm {
namespace {

constexpr std::size_t longestText = 255;  // bytes
constexpr std::size_t longestNumber = 46; // characters, as the dialog's field

std::optional<std::string> tooLong(const std::string& field, const std::string& text)
{
    if (text.size() <= longestText)
        return std::nullopt;
    // Translators: %s is "the name", "the organization" and so on.
    return localized("%s is longer than %d bytes", field, longestText);
}

std::optional<std::string> problemOfName(const std::string& name)
{
    if (name.empty())
        return localized("%s is missing", translated("the name"));
    if (auto problem = tooLong(translated("the name"), name))
        return problem;
    // Names of directories are "SURNAME, GIVEN NAME".
    return problemWithName(name, "- .,");
}

std::optional<std::string> problemOfNumber(const std::string& number)
{
    if (number.empty())
        return localized("%s is missing", translated("the fax number"));
    if (number.size() > longestNumber)
        return localized("the fax number is longer than %d characters", longestNumber);
    if (auto problem = problemWithPhoneNumber(number, "- ( ) /"))
        return problem;
    if (!isDialledNumber(dialledNumber(number)))
        return localized("the fax number cannot be dialled");
    return std::nullopt;
}

std::optional<std::string> problemOfText(const std::string& field, const std::string& text)
{
    if (auto problem = tooLong(field, text))
        return problem;
    if (isPlainText(text))
        return std::nullopt;
    // Translators: %s is "the organization", "the note of the cover sheet" and so on.
    return localized("%s holds a line end or another control character", field);
}

std::optional<std::string> problemOf(const JobRecipient& recipient)
{
    if (recipient.type != 1)
        return localized("it is a group; add its members instead");
    if (auto problem = problemOfName(recipient.name))
        return problem;
    if (auto problem = problemOfNumber(recipient.number))
        return problem;
    if (!recipient.mailbox.empty() && !isMailbox(recipient.mailbox))
        return localized("the mailbox is not one to four of the letters A to Z, digits, \"*\" and \"#\"");
    if (auto problem = problemOfText(translated("the organization"), recipient.organization))
        return problem;
    if (auto problem = problemOfText(translated("the phone number"), recipient.phone))
        return problem;
    return problemOfText(translated("the e-mail address"), recipient.email);
}

} // namespace

std::string shownRecipient(const JobRecipient& recipient)
{
    return shownText(recipient.name, 40) + " (" + shownText(recipient.number, longestNumber) + ")";
}

std::optional<std::string> problemWithRecipient(const JobRecipient& recipient)
{
    const auto problem = problemOf(recipient);
    if (!problem)
        return std::nullopt;
    // Translators: a recipient and its number, then what is wrong with it.
    return localized("%s cannot be sent a fax: %s", shownRecipient(recipient), *problem);
}

std::optional<std::string> trunkZeroWarning(const JobRecipient& recipient)
{
    constexpr std::string_view trunkZero = "(0)";
    const std::string& number = recipient.number;
    const auto at = number.find(trunkZero);
    if (at == std::string::npos)
        return std::nullopt;
    std::string country = dialledNumber(number.substr(0, at));
    std::erase_if(country, [](char character) { return character == '.' || character == '/'; });
    const std::size_t code = country.starts_with('+') ? 1 : country.starts_with("00") ? 2 : country.size();
    if (country.size() <= code || country.find_first_not_of("0123456789", code) != std::string::npos)
        return std::nullopt;
    const std::string without = number.substr(0, at) + number.substr(at + trunkZero.size());
    // Translators: a recipient and its number; the number as it is dialled; the same without its "(0)".
    return localized("%s: this dials %s, with the 0 in parentheses; write %s to leave it out",
                     shownRecipient(recipient), shownText(dialledNumber(number)),
                     shownText(dialledNumber(without)));
}

std::vector<std::string> trunkZeroWarnings(const std::vector<JobRecipient>& recipients)
{
    std::vector<std::string> warnings;
    for (const auto& recipient : recipients)
        if (auto warning = trunkZeroWarning(recipient))
            warnings.push_back(*std::move(warning));
    return warnings;
}

} // namespace quelm
