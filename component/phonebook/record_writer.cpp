// Writes recipients and groups as phonebook records.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "host/record_database.h"
#include "model/recipient.h"

namespace {

std::string taggedField(const char* tag, const std::string& value)
{
    return std::string(".s") + tag + "\r\n" + value + "\r\n.e" + tag + "\r\n";
}

std::string taggedFieldUnlessEmpty(const char* tag, const std::string& value)
{
    return value.empty() ? std::string() : taggedField(tag, value);
}

/// Saves the record and writes the phonebook to its file at once.
bool save(QuelmLegacyDatabase& database, std::string key, std::string data)
{
    LegacyDBRecord record{};
    record.keyLength = static_cast<std::uint16_t>(key.size());
    record.dataLength = static_cast<std::uint16_t>(data.size());
    record.recordLength = static_cast<std::uint16_t>(record.keyLength + record.dataLength);
    record.key = key.data();
    record.data = data.data();
    return database.saveRecord(&record) && database.serializeDatabase();
}

} // namespace

bool Tarvik40FaxRecipient::serializeRecipientToDatabase(QuelmLegacyDatabase* database)
{
    switch (recipientType) {
    case SINGLE_RECIPIENT:
        return serializeUserToDatabase(database);
    case GROUP_RECIPIENT:
        return serializeGroupToDatabase(database);
    default:
        return false;
    }
}

bool Tarvik40FaxRecipient::serializeUserToDatabase(QuelmLegacyDatabase* database)
{
    if (database == nullptr)
        return false;
    // Name and number are written even when empty. The mailbox is not kept in phonebooks.
    return save(
        *database, "u" + recipientName,
        taggedField("usg", "0") + taggedField("nam", recipientName) + taggedField("fxn", recipientFaxNumber) +
            taggedFieldUnlessEmpty("cmp", recipientOrganization) +
            taggedFieldUnlessEmpty("von", recipientPhone) + taggedFieldUnlessEmpty("eml", recipientEmail));
}

bool Tarvik40FaxRecipient::serializeGroupToDatabase(QuelmLegacyDatabase* database)
{
    return database != nullptr && save(*database, "g" + recipientName, taggedField("gen", groupMemberText));
}
