// Decoding phonebook records, beside libebook-contacts parsing vCards of the same entries.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "bench/comparison.h"
#include "bench/samples.h"
#include "phonebook/record_format.h"

#include <libebook-contacts/libebook-contacts.h>

#include <array>

namespace bench {

namespace {

constexpr std::array vCardFields{E_CONTACT_FULL_NAME, E_CONTACT_PHONE_BUSINESS_FAX, E_CONTACT_ORG,
                                 E_CONTACT_PHONE_BUSINESS, E_CONTACT_EMAIL_1};

/// Looks at all five values: the library parses a card only when it is asked for one.
std::size_t parseVCard(const std::string& card)
{
    EContact* contact = e_contact_new_from_vcard(card.c_str());
    std::size_t bytes = 0;
    for (const EContactField field : vCardFields) {
        const auto* value = static_cast<const char*>(e_contact_get_const(contact, field));
        require(value != nullptr, "a vCard lacks a value");
        bytes += std::char_traits<char>::length(value);
    }
    g_object_unref(contact);
    return bytes;
}

std::size_t decodeRecord(Record& record, LegacyDBRecipient& recipient)
{
    ClearLegacyDBRecipientInfo(recipient);
    require(ParseLegacyPBEntry(record.get(), recipient), "a record was not decoded");
    return recipient.name.size() + recipient.faxNumber.size() + recipient.company.size() +
           recipient.voiceNumber.size() + recipient.email.size();
}

void decodeRecords(benchmark::State& state)
{
    std::vector<Record> records;
    std::vector<std::string> cards;
    for (const Entry& entry : entries(static_cast<int>(state.range(0)))) {
        records.push_back(entryRecord(entry));
        cards.push_back(vCardOf(entry));
    }
    LegacyDBRecipient recipient;
    std::size_t decoded = 0;
    std::size_t parsed = 0;
    compare(
        state, static_cast<double>(records.size()),
        [&] {
            for (Record& record : records)
                decoded += decodeRecord(record, recipient);
        },
        [&] {
            for (const std::string& card : cards)
                parsed += parseVCard(card);
        });
    require(decoded == parsed, "records and vCards gave different values");
}
BENCHMARK(decodeRecords)->Name("decode_records")->Arg(1000)->UseManualTime()->Unit(benchmark::kMicrosecond);

} // namespace

} // namespace bench
