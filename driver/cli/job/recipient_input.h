// A recipient as the command line's user gave it, before it is typed into the recipient dialog.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_CLI_JOB_RECIPIENT_INPUT_H
#define DRIVER_CLI_JOB_RECIPIENT_INPUT_H

#include "base/translation.h"
#include "driver/widgets/widget_names.h"

#include <array>
#include <string>
#include <string_view>

namespace quelm {

/// The texts of one recipient, UTF-8, as they are to be typed. `origin` says in messages where
/// the recipient stands: "list.csv:12" or "--to Ann=555".
struct RecipientInput {
    std::string origin;
    std::string name;
    std::string number;
    std::string organization;
    std::string phone;
    std::string email;
    std::string mailbox;
};

/// One field of a recipient: its column in a CSV file, its member, the text field of the
/// recipient dialog that takes it, and its name in messages, to be translated.
struct RecipientField {
    std::string_view column;
    std::string RecipientInput::*text;
    const char* widget;
    const char* label;
    bool required;
};

/// All fields, in the order of the dialog.
inline constexpr std::array<RecipientField, 6> recipientFields{{
    {"name", &RecipientInput::name, widget_names::recipientName, forTranslation("the name"), true},
    {"number", &RecipientInput::number, widget_names::recipientNumber, forTranslation("the fax number"),
     true},
    {"organization", &RecipientInput::organization, widget_names::recipientOrganization,
     forTranslation("the organization"), false},
    {"phone", &RecipientInput::phone, widget_names::recipientTelNumber, forTranslation("the phone number"),
     false},
    {"email", &RecipientInput::email, widget_names::recipientEmailAddr, forTranslation("the e-mail address"),
     false},
    {"mailbox", &RecipientInput::mailbox, widget_names::recipientMailbox, forTranslation("the mailbox"),
     false},
}};

/// The recipient of `--to NAME=NUMBER`, split at the last "=" since a number holds none. Throws
/// UsageError without a "=", a name or a number.
RecipientInput recipientFromOption(const std::string& value);

} // namespace quelm

#endif
