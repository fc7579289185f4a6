// The attribute lines that make the device dial instead of print.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "common/widget_names.h"
#include "host/calls.h"
#include "host/print_stream.h"
#include "model/fax_job.h"
#include "model/recipient.h"

#include <array>
#include <cstddef>
#include <cstdio>
#include <ctime>

namespace {

/// The value of an option; an option that the host does not keep has its first value.
int option(const char* feature) { return host::featureValue(feature, 0); }

/// The entry of `values` at an option's position, null for a position outside of it.
template <std::size_t size>
const char* valueAt(const std::array<const char*, size>& values, int position)
{
    return position >= 0 && static_cast<std::size_t>(position) < size
               ? values[static_cast<std::size_t>(position)]
               : nullptr;
}

// The dialog lists Superfine ahead of Fine; the device counts Fine 1 and Superfine 2.
constexpr std::array resolutionCodes{"0", "2", "1"};
constexpr std::array sendSpeeds{"G3_FORCED_4800", "G3_14400", "G3_AUTO"};

} // namespace

int Tarvik40Fax::serializeFaxJob(AbstractPDLWriter* writer)
{
    if (writer == nullptr)
        return 0;
    serializeFaxOptions(writer);
    // The bracket stands in DSC mode even when it encloses nothing; devices look for it.
    if (pdlMode == PDL_MODE_DSC)
        writer->writeString("%%QLMbegin\r\n");
    if (!creditCard.empty())
        writer->writeString(attributePrefix + "OID_ATT_CREDIT_CARD \"" + creditCard + "\";\r\n");
    if (pdlMode == PDL_MODE_DSC)
        writer->writeString("%%QLMend\r\n");
    return 1;
}

void Tarvik40Fax::serializeFaxOptions(AbstractPDLWriter* writer)
{
    const bool coverSheet = option(widget_names::lanFaxCoverSheetOption) == 1;
    std::string lines =
        attributePrefix + "OID_ATT_FAX_COVER_SHEET " + (coverSheet ? "TRUE" : "FALSE") + ";\r\n";
    writer->writeString(lines);

    // This line alone ends in a bare line feed: devices in the field parse the mix as it is.
    lines = attributePrefix + "OID_ATT_JOB_TYPE OID_VAL_JOB_TYPE_FAX_SEND;\n";
    writer->writeString(lines);

    // With any other confirmation value the job-type line stays and goes out a second time.
    const int confirmation = option(widget_names::lanFaxConfSheet);
    if (confirmation == 0)
        lines = attributePrefix + "OID_ATT_FAX_CONFIRMATION_SHEET TRUE;\r\n";
    else if (confirmation == 1)
        lines = attributePrefix + "OID_ATT_FAX_CONFIRMATION_SHEET FALSE;\r\n";

    if (const char* code = valueAt(resolutionCodes, option(widget_names::lanFaxResolution)))
        lines += attributePrefix + "OID_ATT_FAX_RESOLUTION " + code + ";\r\n";
    if (const char* speed = valueAt(sendSpeeds, option(widget_names::lanFaxSendSpeed)))
        lines += attributePrefix + "OID_ATT_FAX_TYPE OID_VAL_FAX_TYPE_" + speed + ";\r\n";
    writer->writeString(lines);

    serializeRecipients(writer);

    // The delayed-send line is composed and dropped: devices expect jobs without it, so it must
    // not be written.
    if (option(widget_names::lanFaxSendTime) == 1)
        serializeSendAfterOption(writer, lines);
}

int Tarvik40Fax::serializeRecipients(AbstractPDLWriter* writer)
{
    char* prefix = dialingPrefix.empty() ? nullptr : dialingPrefix.data();
    for (Tarvik40FaxRecipient* recipient = recipientList.walkFaxRecipientList(true); recipient != nullptr;
         recipient = recipientList.walkFaxRecipientList(false))
        writer->writeText(recipient->assembleFaxRcptPDLString(prefix, attributePrefix.data()));
    return 1;
}

void Tarvik40Fax::serializeSendAfterOption(AbstractPDLWriter*, std::string& out)
{
    int hour = option(widget_names::sendAtHr);
    const int minute = option(widget_names::sendAtMin);
    if (option(widget_names::sendAtAmPm) == 1)
        hour += 12; // nothing else is converted: 12 AM stays 12, 12 PM becomes 24

    const std::time_t now = std::time(nullptr);
    std::tm today{};
    localtime_r(&now, &today);
    const bool passedToday = today.tm_hour > hour || (today.tm_hour == hour && today.tm_min > minute);
    // Only the day is raised, never the month: the last day of a month may become 29 to 32.
    const int day = today.tm_mday + (passedToday ? 1 : 0);

    char pattern[512];
    std::snprintf(pattern, sizeof pattern, "%%Y%%m%02d%02d%02d00", day, hour, minute);
    char moment[512] = {};
    host::formatTime(moment, sizeof moment, pattern, true);
    out += attributePrefix + "OID_ATT_JOB_FAX_AFTER \"" + moment + "\";\r\n";
}
