// From the rows of a CSV text to recipients, by its columns.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/cli/job/recipients_csv.h"

#include "base/error.h"
#include "base/texts.h"
#include "base/translation.h"
#include "base/whole_file.h"
#include "driver/phonebook/csv_rows.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace quelm {
namespace {

constexpr std::size_t largestFile = std::size_t{64} * 1024 * 1024;

std::string knownColumns()
{
    std::string names;
    for (const auto& field : recipientFields)
        names += (names.empty() ? "" : ", ") + std::string(field.column);
    return names;
}

std::vector<const RecipientField*> readHeader(const CsvRow& header, const std::string& where)
{
    const auto refuse = [&where](const std::string& problem) { return Error(where + problem); };
    std::vector<const RecipientField*> columns;
    for (const auto& name : header.fields) {
        const auto field =
            std::ranges::find_if(recipientFields, [&](const auto& known) { return known.column == name; });
        if (field == recipientFields.end())
            throw refuse(localized("unknown column \"%s\"; the columns are %s", name, knownColumns()));
        if (std::ranges::find(columns, &*field) != columns.end())
            throw refuse(localized("the column %s stands twice", name));
        columns.push_back(&*field);
    }
    for (const auto& field : recipientFields)
        if (field.required && std::ranges::find(columns, &field) == columns.end())
            throw refuse(
                localized("the column %s is missing; the first line names the columns", field.column));
    return columns;
}

RecipientInput readRow(const CsvRow& row, const std::vector<const RecipientField*>& columns,
                       const std::string& origin)
{
    const auto refuse = [&origin](const std::string& problem) { return Error(origin + ": " + problem); };
    if (row.fields.size() != columns.size())
        throw refuse(
            localized("has %d fields where the first line names %d", row.fields.size(), columns.size()));
    RecipientInput recipient;
    recipient.origin = origin;
    for (std::size_t i = 0; i < columns.size(); ++i) {
        const auto& field = *columns[i];
        if (row.fields[i].empty() && field.required)
            throw refuse(localized("%s is missing", translated(field.label)));
        if (hasControlCharacter(row.fields[i]))
            throw refuse(localized("%s holds a line break or control character", translated(field.label)));
        recipient.*field.text = row.fields[i];
    }
    return recipient;
}

} // namespace

std::vector<RecipientInput> parseRecipientsCsv(const std::string& text, const std::string& name)
{
    const auto rows = readCsvRows(text);
    const auto origin = [&](const CsvRow& row) { return name + ":" + std::to_string(row.line); };
    for (const auto& row : rows)
        if (!row.problem.empty())
            throw Error(origin(row) + ": " + row.problem);
    if (rows.empty())
        throw Error(name + ":1: " + localized("the first line must name the columns, such as name,number"));
    const auto columns = readHeader(rows.front(), origin(rows.front()) + ": ");
    if (rows.size() == 1)
        throw Error(origin(rows.front()) + ": " + localized("no recipient follows the first line"));
    std::vector<RecipientInput> recipients;
    recipients.reserve(rows.size() - 1);
    for (auto row = rows.begin() + 1; row != rows.end(); ++row)
        recipients.push_back(readRow(*row, columns, origin(*row)));
    return recipients;
}

std::vector<RecipientInput> readRecipientsCsv(const std::filesystem::path& file)
{
    return parseRecipientsCsv(readTextFile(file, largestFile), displayName(file));
}

} // namespace quelm
