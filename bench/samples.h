// The entries that the benchmarks work on: as recipients, as phonebook records and as vCards.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef BENCH_SAMPLES_H
#define BENCH_SAMPLES_H

#include "host/record_database.h"
#include "model/recipient.h"

#include <memory>
#include <string>
#include <vector>

namespace bench {

/// One entry. Entries of different numbers differ in every field, and have the same length.
struct Entry {
    std::string name;
    std::string faxNumber;
    std::string organization;
    std::string phone;
    std::string email;
};
Entry entryNumber(int number);
std::vector<Entry> entries(int count);

/// A phonebook record of its own texts.
class Record {
public:
    Record(std::string recordKey, std::string recordData);

    /// As the boundary exchanges it, valid while this object lives and stays where it is.
    LegacyDBRecord* get();
    const std::string& dataText() const { return data_; }

private:
    std::string key_;
    std::string data_;
    LegacyDBRecord record_{};
};

/// One field of a record's text.
std::string taggedField(const std::string& tag, const std::string& value);

/// The record of an entry, and that of a group of the entries from 0 on.
Record entryRecord(const Entry& entry);
Record groupRecord(const std::string& name, int members);

std::unique_ptr<Tarvik40FaxRecipient> recipientOf(const Entry& entry);

/// The entry as a vCard 3.0.
std::string vCardOf(const Entry& entry);

} // namespace bench

#endif
