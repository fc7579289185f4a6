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
    bool isTyped = false; ///< stands on the command line: what is wrong with it is wrong usage
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

/// The recipient of `--to NAME=NUMBER`, split at the last "=" since a number holds none, or of
/// `--to NUMBER`, whose name is `nameOfNumber`. Throws UsageError for a text without "=" that is no number,
/// and without a name or a number beside it.
RecipientInput recipientFromOption(const std::string& value);

/// What a recipient of whom only the number is known is called, in the job and on its cover sheet: the
/// number, as far as a name may hold it. Other characters are blanks, of which none stands at an end or
/// beside another: "+1 (555) 123-4567" is "1 555 123-4567". At most 31 characters, as the dialog's field.
[[nodiscard]] std::string nameOfNumber(std::string_view number);

} // namespace quelm

#endif
