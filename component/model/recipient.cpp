// The recipient's fields behind their keys.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "model/recipient.h"

#include "host/calls.h"
#include "model/listed_texts.h"
#include "model/recipient_key.h"

#include <array>

namespace {

constexpr const char* recipientFieldKeys =
    ",RecipientName,RecipientOrganization,RecipientPhone,RecipientFaxNumber,RecipientEmail,RecipientMailbox,"
    "GroupMemberList,SenderName,SenderOrganization,SenderPhone,SenderFaxNumber,SenderEmail,CoverNote,"
    "Year,Month,MonthDay,Hour,Minute,Key,";

} // namespace

Tarvik40FaxRecipient::Tarvik40FaxRecipient() = default;
Tarvik40FaxRecipient::~Tarvik40FaxRecipient() = default;

void Tarvik40FaxRecipient::setRecipientType(int type) { recipientType = type; }

int Tarvik40FaxRecipient::getRecipientType() { return recipientType; }

/// The field of a key; null for a key that names none.
std::string* Tarvik40FaxRecipient::field(const char* key)
{
    if (key == nullptr)
        return nullptr;
    switch (host::tokenNumber(recipientFieldKeys, key, false)) {
    case 1:
        return &recipientName;
    case 2:
        return &recipientOrganization;
    case 3:
        return &recipientPhone;
    case 4:
        return &recipientFaxNumber;
    case 5:
        return &recipientEmail;
    case 6:
        return &recipientMailbox;
    case 7:
        return &groupMemberText;
    case 8:
        return &senderName;
    case 9:
        return &senderOrganization;
    case 10:
        return &senderPhone;
    case 11:
        return &senderFaxNumber;
    case 12:
        return &senderEmail;
    case 13:
        return &coverNote;
    case 14:
        return &year;
    case 15:
        return &month;
    case 16:
        return &monthDay;
    case 17:
        return &hour;
    case 18:
        return &minute;
    default:
        return nullptr; // "Key" is token 19: the recipient key is formed, never stored
    }
}

const char* Tarvik40FaxRecipient::getRecipientData(const char* key)
{
    const std::string* text = field(key);
    return text != nullptr && !text->empty() ? text->c_str() : nullptr;
}

bool Tarvik40FaxRecipient::setRecipientData(const char* key, const char* value)
{
    std::string* text = field(key);
    if (text == nullptr || value == nullptr)
        return false;
    *text = value;
    if (text == &recipientFaxNumber)
        cleanseFaxNumber();
    return true;
}

bool Tarvik40FaxRecipient::setRecipientData(const char* key, std::string& value)
{
    return setRecipientData(key, value.c_str());
}

void Tarvik40FaxRecipient::cleanseFaxNumber()
{
    cleansedFaxNumber = recipientFaxNumber;
    std::erase_if(cleansedFaxNumber, [](char c) { return c == '(' || c == ')' || c == ' ' || c == '-'; });
}

bool Tarvik40FaxRecipient::assembleXMLRecipientData(std::string* out)
{
    struct Element {
        const char* name;
        const std::string& text;
    };
    const std::array elements{
        Element{"Name", recipientName},           Element{"Organization", recipientOrganization},
        Element{"FaxNumber", recipientFaxNumber}, Element{"Phone", recipientPhone},
        Element{"Email", recipientEmail},         Element{"Mailbox", recipientMailbox},
    };
    *out = "      <Recipient Key=\"" + recipientName + recipientFaxNumber + "\">\r\n";
    for (const auto& [name, text] : elements)
        out->append("         <")
            .append(name)
            .append(">")
            .append(text)
            .append("</")
            .append(name)
            .append(">\r\n");
    out->append("      </Recipient>\r\n");
    return true;
}

bool hasRecipientKey(const Tarvik40FaxRecipient& recipient, std::string_view key)
{
    const std::string& name = recipient.recipientName;
    return key.size() == name.size() + recipient.recipientFaxNumber.size() && key.starts_with(name) &&
           key.ends_with(recipient.recipientFaxNumber);
}

std::array<const std::string*, 6> listedTexts(const Tarvik40FaxRecipient& recipient)
{
    return {&recipient.recipientName,  &recipient.recipientFaxNumber, &recipient.recipientOrganization,
            &recipient.recipientPhone, &recipient.recipientEmail,     &recipient.recipientMailbox};
}
