// Entries and groups in CSV files.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/error.h"
#include "base/translation.h"
#include "driver/phonebook/contacts.h"
#include "driver/phonebook/csv_people.h"

#include <array>
#include <utility>

namespace quelm {
namespace {

constexpr std::array ourColumns{"name", "number", "organization", "phone", "email", "type", "members"};

std::string joined(const std::vector<std::string>& names)
{
    std::string text;
    for (const auto& member : names)
        text += (text.empty() ? "" : ",") + member;
    return text;
}

} // namespace

Contacts readCsvContacts(std::string_view text, const std::string& file, std::optional<char> separator)
{
    auto people = readCsvPeople(text, file, separator);
    const auto& header = people.header;
    const bool hasNames = header.has(CsvField::name) || header.has(CsvField::givenName) ||
                          header.has(CsvField::familyName) || header.has(CsvField::organization);
    if (!hasNames)
        throw Error(file +
                    ":1: " + localized("the column %s is missing; the first line names the columns", "name"));
    Contacts all;
    all.notes = std::move(people.notes);
    all.refused = std::move(people.refused);
    all.contacts.reserve(people.rows.size());
    for (auto& row : people.rows) {
        if (auto* group = std::get_if<CsvGroup>(&row)) {
            addContact(all, group->line, std::move(group->group));
            continue;
        }
        const auto& [person, mailbox] = std::get<CsvPerson>(row);
        const auto before = all.contacts.size();
        // A list of ours is one of fax numbers, in an address book not everybody has one.
        if (hasFax(person) || !header.isOurs)
            addPerson(all, person);
        else
            addContact(all, person.line, PhonebookEntry{person.name, "", "", "", ""});
        if (all.contacts.size() > before)
            all.contacts[before].hasMailbox = !mailbox.empty();
    }
    return all;
}

std::string writeCsvContacts(const std::vector<std::variant<PhonebookEntry, PhonebookGroup>>& contents)
{
    std::string text = csvLine({ourColumns.begin(), ourColumns.end()});
    for (const auto& content : contents) {
        if (const auto* group = std::get_if<PhonebookGroup>(&content)) {
            text += csvLine({group->name, "", "", "", "", "group", joined(group->members)});
        } else {
            const auto& entry = std::get<PhonebookEntry>(content);
            text += csvLine(
                {entry.name, entry.number, entry.organization, entry.phone, entry.email, "entry", ""});
        }
    }
    return text;
}

} // namespace quelm
