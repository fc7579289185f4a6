// Moves a recipient's data between a dialog and the recipient.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ui/recipient_fields.h"

#include "host/calls.h"
#include "model/recipient.h"
#include "ui/entry_check.h"

namespace {

void showField(const char* widget, Tarvik40FaxRecipient* recipient, const char* key)
{
    const char* text = recipient != nullptr ? recipient->getRecipientData(key) : nullptr;
    host::setWidgetText(widget, text != nullptr ? text : "");
}

void storeUnlessEmpty(const char* widget, const char* key, Tarvik40FaxRecipient& recipient)
{
    host::TextBuffer text;
    host::readText(widget, text);
    if (!text.empty())
        recipient.setRecipientData(key, text.c_str());
}

void storePhone(const char* widget, Tarvik40FaxRecipient& recipient)
{
    host::TextBuffer text;
    host::readText(widget, text);
    if (text.empty())
        return;
    if (host::validatePhoneNumber(text.c_str(), numberCharacters))
        host::setWidgetText(widget, "");
    else
        recipient.setRecipientData("RecipientPhone", text.c_str());
}

} // namespace

void showRecipient(const RecipientFields& fields, Tarvik40FaxRecipient* recipient)
{
    showField(fields.number, recipient, "RecipientFaxNumber");
    showField(fields.name, recipient, "RecipientName");
    showField(fields.organization, recipient, "RecipientOrganization");
    showField(fields.phone, recipient, "RecipientPhone");
    showField(fields.email, recipient, "RecipientEmail");
    showField(fields.mailbox, recipient, "RecipientMailbox");
}

bool readRequiredFields(const RecipientFields& fields, char* name, char* number)
{
    return ValidateFaxEntry(host::in(fields.name), host::in(fields.number), name, number, true);
}

void storeRecipient(const RecipientFields& fields, const char* name, const char* number,
                    Tarvik40FaxRecipient& recipient)
{
    recipient.setRecipientType(SINGLE_RECIPIENT);
    recipient.setRecipientData("RecipientName", name);
    recipient.setRecipientData("RecipientFaxNumber", number);
    storeUnlessEmpty(fields.organization, "RecipientOrganization", recipient);
    storePhone(fields.phone, recipient);
    storeUnlessEmpty(fields.email, "RecipientEmail", recipient);
    storeUnlessEmpty(fields.mailbox, "RecipientMailbox", recipient);
}
