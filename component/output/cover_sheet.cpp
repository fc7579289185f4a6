// The cover page: which values it shows, and writing it.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "host/calls.h"
#include "host/print_stream.h"
#include "model/fax_job.h"
#include "model/recipient.h"
#include "output/cover_page.h"

#include <cstdio>

namespace {

struct Moment {
    char year[8] = {};
    char month[4] = {};
    char monthDay[4] = {};
    char hour[4] = {};
    char minute[4] = {};
};

/// One reading of the clock, so that all five values describe the same moment.
Moment currentMoment()
{
    Moment moment;
    host::formatTime(moment.year, sizeof moment.year, "%Y", true);
    host::formatTime(moment.month, sizeof moment.month, "%m", false);
    host::formatTime(moment.monthDay, sizeof moment.monthDay, "%d", false);
    host::formatTime(moment.hour, sizeof moment.hour, "%H", false);
    host::formatTime(moment.minute, sizeof moment.minute, "%M", false);
    return moment;
}

/// The values of the recipient and the sender block, in the order of the page's lines: name,
/// company, phone, fax, e-mail.
struct CoverValues {
    const char* recipient[5] = {"", "", "", "", ""};
    const char* sender[5] = {"", "", "", "", ""};
};

const char* textOf(Tarvik40FaxRecipient& recipient, const char* key)
{
    const char* text = recipient.getRecipientData(key);
    return text != nullptr ? text : "";
}

CoverValues valuesForSeveralRecipients(const Tarvik40Fax& job)
{
    CoverValues values;
    values.recipient[0] = (job.showCustomText ? job.customText : job.coverRecipientText).c_str();
    // The sender stands in stored order, fax number first, and whether or not it was asked for:
    // receivers know the page of a broadcast by this.
    const std::string* stored[] = {&job.senderFaxNumber, &job.senderName, &job.senderOrganization,
                                   &job.senderPhone, &job.senderEmail};
    for (std::size_t line = 0; line < std::size(stored); ++line)
        values.sender[line] = stored[line]->c_str();
    return values;
}

CoverValues valuesForOneRecipient(const Tarvik40Fax& job, Tarvik40FaxRecipient* recipient)
{
    CoverValues values;
    if (recipient != nullptr && job.showRecipientInfo) {
        values.recipient[0] =
            job.showCustomText ? job.customText.c_str() : textOf(*recipient, "RecipientName");
        values.recipient[1] = textOf(*recipient, "RecipientOrganization");
        values.recipient[2] = textOf(*recipient, "RecipientPhone");
        values.recipient[3] = textOf(*recipient, "RecipientFaxNumber");
        values.recipient[4] = textOf(*recipient, "RecipientEmail");
    }
    if (job.showSenderInfo) {
        const std::string* shown[] = {&job.senderName, &job.senderOrganization, &job.senderPhone,
                                      &job.senderFaxNumber, &job.senderEmail};
        for (std::size_t line = 0; line < std::size(shown); ++line)
            values.sender[line] = shown[line]->c_str();
    }
    return values;
}

/// The header template filled; as long as its values make it.
std::string filledHeader(const CoverValues& values, const std::string& notes, const Moment& moment)
{
    const auto format = [&](char* out, std::size_t size) {
        return std::snprintf(out, size, coverPageHeaderText, values.recipient[0], values.recipient[1],
                             values.recipient[2], values.recipient[3], values.recipient[4], values.sender[0],
                             values.sender[1], values.sender[2], values.sender[3], values.sender[4],
                             notes.c_str(), moment.year, moment.month, moment.monthDay, moment.hour,
                             moment.minute);
    };
    std::string page(static_cast<std::size_t>(format(nullptr, 0)), '\0');
    format(page.data(), page.size() + 1);
    return page;
}

} // namespace

bool Tarvik40Fax::getCoverSheetRecipientNameText(std::string* text)
{
    if (showRecipientInfo && showCustomText) {
        *text = customText;
        return true;
    }
    if (!showRecipientInfo) {
        text->clear();
        return true;
    }
    const int count = recipientList.recipientListSize();
    if (count == 0)
        return false;
    // Appended to what the text holds, and a stopping rule instead of a cut: a later page of the
    // same job repeats the names behind the earlier ones.
    constexpr std::size_t enough = 30; // bytes
    Tarvik40FaxRecipient* recipient = recipientList.walkFaxRecipientList(true);
    for (int n = 1; recipient != nullptr; ++n) {
        text->append(textOf(*recipient, "RecipientName"));
        if (n < count)
            text->append(", ");
        if (text->size() > enough)
            break;
        recipient = recipientList.walkFaxRecipientList(false);
    }
    return true;
}

int Tarvik40Fax::serializeFaxCoverSheet(AbstractPDLWriter* writer)
{
    if (writer == nullptr)
        return 0;
    const Moment moment = currentMoment();
    if (showRecipientInfo && !getCoverSheetRecipientNameText(&coverRecipientText))
        return 0;
    const CoverValues values = recipientList.recipientListSize() >= 2
                                   ? valuesForSeveralRecipients(*this)
                                   : valuesForOneRecipient(*this, recipientList.getFaxRecipientN(0));
    return writer->writeText(filledHeader(values, coverNotes, moment).c_str()) &&
                   writer->writeText(coverPageTrailerText)
               ? 1
               : 0;
}
