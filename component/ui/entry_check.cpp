// Checks a typed name and fax number.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ui/entry_check.h"

#include "common/messages.h"
#include "common/widget_names.h"
#include "host/calls.h"

#include <cstring>

const char nameCharacters[] = "- .";
const char numberCharacters[] = "- ( ) /";

namespace {

struct Check {
    host::Message (*validate)(const char* text, const char* allowed);
    const char* allowed;
    const char* missing; ///< shown by a label, which turns "&#10;" into a line break
};

constexpr Check nameCheck{host::validateName, nameCharacters,
                          forTranslation("The Name is a required field&#10;Please enter a Name.")};
constexpr Check numberCheck{
    host::validatePhoneNumber, numberCharacters,
    forTranslation("The Fax Number is a required field&#10;Please enter a Fax Number.")};

/// The message that refuses the field's text, or none.
host::Message refusal(char* widget, char* out, const Check& check, bool required)
{
    std::memset(out, 0, 4);
    const bool read = GetWidgetPropertyByName(widget, host::in("Value"), out, nullptr, nullptr, nullptr);
    if (!read || out[0] == '\0')
        return required ? host::saveString("%s", check.missing) : nullptr;
    host::Message message = check.validate(out, check.allowed);
    if (message)
        host::setWidgetText(widget, "");
    return message;
}

} // namespace

bool ValidateFaxEntry(char* nameWidget, char* numberWidget, char* nameOut, char* numberOut, bool required)
{
    host::Message message;
    if (nameWidget != nullptr)
        message = refusal(nameWidget, nameOut, nameCheck, required);
    if (!message && numberWidget != nullptr)
        message = refusal(numberWidget, numberOut, numberCheck, required);
    if (!message)
        return true;
    host::setWidgetText(widget_names::lanFaxAddFaxRcptErrorLabel, "");
    host::setWidgetText(widget_names::lanFaxAddFaxRcptErrorLabel, translated(message.get()));
    host::show(widget_names::lanFaxAddRecipientErrorWindow);
    return false;
}

void T40HideFaxRecipientErrorDialog() { host::hide(widget_names::lanFaxAddRecipientErrorWindow); }
