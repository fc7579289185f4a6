// Makes the entries and writes them in their forms.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "bench/samples.h"

#include <array>
#include <cstdint>
#include <cstdio>
#include <utility>

namespace bench {

Entry entryNumber(int number)
{
    std::array<char, 16> digits{};
    std::snprintf(digits.data(), digits.size(), "%06d", number);
    const std::string text = digits.data();
    return {"Recipient " + text, "(0123) 555-" + text, "Office " + text + " of the Works",
            "(0123) 444-" + text, "recipient." + text + "@example.com"};
}

std::vector<Entry> entries(int count)
{
    std::vector<Entry> made;
    made.reserve(static_cast<std::size_t>(count));
    for (int number = 0; number < count; ++number)
        made.push_back(entryNumber(number));
    return made;
}

Record::Record(std::string recordKey, std::string recordData)
    : key_(std::move(recordKey)), data_(std::move(recordData))
{
}

LegacyDBRecord* Record::get()
{
    record_ = {static_cast<std::uint16_t>(key_.size() + data_.size()),
               static_cast<std::uint16_t>(key_.size()), static_cast<std::uint16_t>(data_.size()), key_.data(),
               data_.data()};
    return &record_;
}

std::string taggedField(const std::string& tag, const std::string& value)
{
    return ".s" + tag + "\r\n" + value + "\r\n.e" + tag + "\r\n";
}

Record entryRecord(const Entry& entry)
{
    return {"u" + entry.name, taggedField("usg", "0") + taggedField("nam", entry.name) +
                                  taggedField("fxn", entry.faxNumber) +
                                  taggedField("cmp", entry.organization) + taggedField("von", entry.phone) +
                                  taggedField("eml", entry.email)};
}

Record groupRecord(const std::string& name, int members)
{
    std::string list;
    for (int number = 0; number < members; ++number)
        list += ",u" + entryNumber(number).name;
    return {"g" + name, taggedField("gen", list)};
}

std::string vCardOf(const Entry& entry)
{
    return "BEGIN:VCARD\r\nVERSION:3.0\r\nFN:" + entry.name + "\r\nTEL;TYPE=WORK,FAX:" + entry.faxNumber +
           "\r\nORG:" + entry.organization + "\r\nTEL;TYPE=WORK,VOICE:" + entry.phone +
           "\r\nEMAIL:" + entry.email + "\r\nEND:VCARD\r\n";
}

} // namespace bench
