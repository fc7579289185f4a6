// Entries and groups in CSV files.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/error.h"
#include "base/translation.h"
#include "driver/phonebook/contacts.h"
#include "driver/phonebook/csv_rows.h"

#include <algorithm>
#include <array>

namespace quelm {
namespace {

constexpr std::array<std::string_view, 8> columnNames{"name",  "number", "organization", "phone",
                                                      "email", "type",   "members",      "mailbox"};
enum Column : std::size_t { name, number, organization, phone, email, type, members, mailbox };

/// For each field of a row the column that it belongs to.
using Header = std::vector<Column>;

std::string list(std::size_t count)
{
    std::string names;
    for (std::size_t i = 0; i < count; ++i)
        names += (i == 0 ? "" : ", ") + std::string(columnNames.at(i));
    return names;
}

Header readHeader(const CsvRow& row, const std::string& file)
{
    const auto fail = [&](const std::string& problem) {
        return Error(file + ":" + std::to_string(row.line) + ": " + problem);
    };
    if (!row.problem.empty())
        throw fail(row.problem);
    Header header;
    for (const auto& field : row.fields) {
        const auto* const found = std::ranges::find(columnNames, field);
        if (found == columnNames.end())
            throw fail(
                localized("unknown column \"%s\"; the columns are %s", field, list(columnNames.size())));
        const auto column = static_cast<Column>(found - columnNames.begin());
        if (std::ranges::find(header, column) != header.end())
            throw fail(localized("the column %s stands twice", field));
        header.push_back(column);
    }
    for (const auto needed : {name, number}) {
        if (std::ranges::find(header, needed) == header.end())
            throw fail(localized("the column %s is missing; the first line names the columns",
                                 columnNames.at(needed)));
    }
    return header;
}

std::vector<std::string> splitMembers(std::string_view text)
{
    std::vector<std::string> names;
    while (!text.empty()) {
        const auto end = text.find(',');
        names.emplace_back(text.substr(0, end));
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    }
    return names;
}

void readRow(const CsvRow& row, const Header& header, Contacts& all)
{
    const auto refuse = [&](const std::string& reason) { all.refused.push_back({row.line, reason}); };
    if (!row.problem.empty())
        return refuse(row.problem);
    if (row.fields.size() != header.size())
        return refuse(
            localized("has %d fields where the first line names %d", row.fields.size(), header.size()));
    std::array<std::string, columnNames.size()> cells;
    for (std::size_t i = 0; i < header.size(); ++i)
        cells.at(header[i]) = row.fields[i];
    if (cells[type] == "group") {
        for (const auto column : {number, organization, phone, email, mailbox})
            if (!cells.at(column).empty())
                // Translators: %s is the name of a column, such as number.
                return refuse(localized("a group has no %s", columnNames.at(column)));
        addContact(all, row.line, PhonebookGroup{cells[name], splitMembers(cells[members])});
        return;
    }
    if (!cells[type].empty() && cells[type] != "entry")
        return refuse(localized("the type \"%s\" is neither entry nor group", cells[type]));
    if (!cells[members].empty())
        return refuse(localized("only a group has members; write group as its type"));
    const bool added = addContact(
        all, row.line,
        PhonebookEntry{cells[name], cells[number], cells[organization], cells[phone], cells[email]});
    if (added && !cells[mailbox].empty())
        ++all.mailboxes;
}

std::string joined(const std::vector<std::string>& names)
{
    std::string text;
    for (const auto& member : names)
        text += (text.empty() ? "" : ",") + member;
    return text;
}

} // namespace

Contacts readCsvContacts(std::string_view text, const std::string& file)
{
    const auto rows = readCsvRows(text);
    if (rows.empty())
        throw Error(file + ":1: " + localized("the first line must name the columns, such as name,number"));
    const auto header = readHeader(rows.front(), file);
    Contacts all;
    all.contacts.reserve(rows.size() - 1);
    for (auto row = rows.begin() + 1; row != rows.end(); ++row)
        readRow(*row, header, all);
    return all;
}

std::string writeCsvContacts(const std::vector<std::variant<PhonebookEntry, PhonebookGroup>>& contents)
{
    std::string text = csvLine({columnNames.begin(), columnNames.end() - 1});
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
