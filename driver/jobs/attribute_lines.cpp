// Compares attribute lines with the shapes that devices know.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/jobs/attribute_lines.h"

#include "base/error.h"
#include "base/texts.h"
#include "base/translation.h"

#include <algorithm>
#include <cstddef>
#include <initializer_list>

namespace quelm {
namespace {

constexpr std::string_view digits = "0123456789";
constexpr std::string_view cardName = "OID_ATT_CREDIT_CARD";

bool consistsOf(std::string_view text, std::string_view characters)
{
    return text.find_first_not_of(characters) == std::string_view::npos;
}

/// Takes attribute lines apart from their front.
class LineCheck {
public:
    LineCheck(std::string_view lines, const ExpectedLines& expected)
        : left_(lines), expected_(expected), prefix_(expected.pdl == Pdl::dsc ? "%%" : "@PJL COMMENT ")
    {
    }

    void run()
    {
        // This line alone ends in a bare line feed.
        const std::string jobType = line("OID_ATT_JOB_TYPE OID_VAL_JOB_TYPE_FAX_SEND;", "\n");
        require({line("OID_ATT_FAX_COVER_SHEET TRUE;"), line("OID_ATT_FAX_COVER_SHEET FALSE;")});
        require({jobType});
        // With neither choice of a confirmation sheet the line ahead of it stands there once more.
        require({line("OID_ATT_FAX_CONFIRMATION_SHEET TRUE;"), line("OID_ATT_FAX_CONFIRMATION_SHEET FALSE;"),
                 jobType});
        take({line("OID_ATT_FAX_RESOLUTION 0;"), line("OID_ATT_FAX_RESOLUTION 1;"),
              line("OID_ATT_FAX_RESOLUTION 2;")});
        take({line("OID_ATT_FAX_TYPE OID_VAL_FAX_TYPE_G3_FORCED_4800;"),
              line("OID_ATT_FAX_TYPE OID_VAL_FAX_TYPE_G3_14400;"),
              line("OID_ATT_FAX_TYPE OID_VAL_FAX_TYPE_G3_AUTO;")});
        takeDestinations();
        if (expected_.pdl == Pdl::dsc)
            require({"%%QLMbegin\r\n"});
        takeCreditCard();
        if (expected_.pdl == Pdl::dsc)
            require({"%%QLMend\r\n"});
        if (!left_.empty())
            failAtLine();
    }

private:
    std::string line(std::string_view content, std::string_view end = "\r\n") const
    {
        return std::string(prefix_).append(content).append(end);
    }

    bool take(std::initializer_list<std::string> shapes)
    {
        for (const auto& shape : shapes) {
            if (left_.starts_with(shape)) {
                left_.remove_prefix(shape.size());
                return true;
            }
        }
        return false;
    }

    void require(std::initializer_list<std::string> shapes)
    {
        if (!take(shapes))
            failAtLine();
    }

    void takeDestinations()
    {
        const std::string start = line("OID_ATT_FAX_DESTINATION_PHONE \"", "");
        for (const auto& recipient : expected_.recipients) {
            if (!left_.starts_with(start))
                failWithoutDestination();
            takeDestination(recipient);
        }
        if (left_.starts_with(start))
            failCount();
    }

    void takeDestination(const JobRecipient& recipient)
    {
        const std::string number = dialledNumber(recipient.number);
        const std::string& ahead = expected_.dialingPrefix;
        if (!isDialledNumber(number) || !(ahead.empty() || isDialText(ahead)))
            failAtLine();
        require(
            {line("OID_ATT_FAX_DESTINATION_PHONE \"" + (ahead.empty() ? "" : ahead + ",") + number + "\";")});
        if (recipient.mailbox.empty())
            return;
        if (!isMailbox(recipient.mailbox))
            failAtLine();
        require({line("OID_ATT_FAX_MAILBOX \"" + recipient.mailbox + "\";")});
    }

    /// A card that is not the job's would be charged for somebody else's fax, and one that is left out would
    /// have the office pay for it.
    void takeCreditCard()
    {
        if (expected_.creditCard.empty())
            return;
        if (!left_.starts_with(line(cardName, "")))
            throw Error(
                localized("the fax cannot be written: its attributes do not charge the job's credit card"));
        if (!isDialText(expected_.creditCard))
            failAtLine();
        require({line(std::string(cardName) + " \"" + expected_.creditCard + "\";")});
    }

    [[noreturn]] void failAtLine() const
    {
        if (left_.empty())
            throw Error(localized("the fax cannot be written: the component's fax attributes end too early"));
        constexpr std::size_t longest = 120;
        std::string_view wrong = left_.substr(0, left_.find_first_of("\r\n"));
        if (const auto at = wrong.find(cardName); at != std::string_view::npos)
            wrong = wrong.substr(0, at + cardName.size());
        throw Error(
            localized("the fax cannot be written: its attributes hold a line that does not belong there: "
                      "\"%s\"",
                      shownText(wrong, longest)));
    }

    /// At a line that is no destination: one that follows them, or any other.
    [[noreturn]] void failWithoutDestination() const
    {
        if (left_.empty() || left_.starts_with("%%QLMbegin") || left_.starts_with(line(cardName, "")))
            failCount();
        failAtLine();
    }

    [[noreturn]] void failCount() const
    {
        const auto count = expected_.recipients.size();
        throw Error(
            localizedCount("the fax cannot be written: it has %d recipient, and the component wrote another "
                           "number of destinations",
                           "the fax cannot be written: it has %d recipients, and the component wrote "
                           "another number of destinations",
                           count, count));
    }

    std::string_view left_;
    const ExpectedLines& expected_;
    std::string_view prefix_;
};

} // namespace

std::string dialledNumber(std::string_view number)
{
    std::string dialled(number);
    std::erase_if(dialled, [](char character) {
        return character == '(' || character == ')' || character == ' ' || character == '-';
    });
    return dialled;
}

bool isDialledNumber(std::string_view number)
{
    return consistsOf(number, "0123456789+.*#,/") && number.find_first_of(digits) != std::string_view::npos;
}

bool isMailbox(std::string_view mailbox)
{
    constexpr std::size_t longest = 4;
    return !mailbox.empty() && mailbox.size() <= longest && std::ranges::all_of(mailbox, [](char character) {
        return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
               (character >= '0' && character <= '9') || character == '*' || character == '#';
    });
}

bool isDialText(std::string_view text)
{
    return consistsOf(text, "0123456789 -*#,") &&
           text.find_first_of("0123456789*#") != std::string_view::npos;
}

void checkAttributeLines(std::string_view lines, const ExpectedLines& expected)
{
    LineCheck(lines, expected).run();
}

bool holdCreditCard(std::string_view lines) { return lines.find(cardName) != std::string_view::npos; }

} // namespace quelm
