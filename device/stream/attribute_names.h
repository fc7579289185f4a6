// The attributes that a device knows, in the order in which they stand in a job.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DEVICE_STREAM_ATTRIBUTE_NAMES_H
#define DEVICE_STREAM_ATTRIBUTE_NAMES_H

#include <array>
#include <string>
#include <string_view>

namespace quelm::device {

/// In their order. A job type in the place of the confirmation sheet counts as `confirmation`.
enum class Attribute {
    coverSheet,
    jobType,
    confirmation,
    resolution,
    faxType,
    destination,
    mailbox, ///< below its destination
    bracketBegin,
    creditCard,
    bracketEnd
};

struct AttributeName {
    Attribute attribute;
    std::string_view name;
    std::string_view value; ///< what stands behind the name, for people; empty for a bracket
};

inline constexpr std::array attributeNames{
    AttributeName{Attribute::coverSheet, "OID_ATT_FAX_COVER_SHEET", "TRUE|FALSE"},
    AttributeName{Attribute::jobType, "OID_ATT_JOB_TYPE", "OID_VAL_JOB_TYPE_FAX_SEND"},
    AttributeName{Attribute::confirmation, "OID_ATT_FAX_CONFIRMATION_SHEET", "TRUE|FALSE"},
    AttributeName{Attribute::resolution, "OID_ATT_FAX_RESOLUTION", "0|1|2"},
    AttributeName{Attribute::faxType, "OID_ATT_FAX_TYPE",
                  "OID_VAL_FAX_TYPE_G3_FORCED_4800|OID_VAL_FAX_TYPE_G3_14400|OID_VAL_FAX_TYPE_G3_AUTO"},
    AttributeName{Attribute::destination, "OID_ATT_FAX_DESTINATION_PHONE", "\"NUMBER\""},
    AttributeName{Attribute::mailbox, "OID_ATT_FAX_MAILBOX", "\"MAILBOX\""},
    AttributeName{Attribute::bracketBegin, "QLMbegin", ""},
    AttributeName{Attribute::creditCard, "OID_ATT_CREDIT_CARD", "\"CARD\""},
    AttributeName{Attribute::bracketEnd, "QLMend", ""},
};

inline const AttributeName& nameOf(Attribute attribute)
{
    return attributeNames.at(static_cast<std::size_t>(attribute));
}

} // namespace quelm::device

#endif
