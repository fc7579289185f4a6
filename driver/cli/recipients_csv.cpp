// From the rows of a CSV text to recipients, by its columns.
#include "driver/cli/recipients_csv.h"

#include "driver/core/error.h"
#include "driver/core/text_checks.h"
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
            throw refuse("unknown column \"" + name + "\"; the columns are " + knownColumns());
        if (std::ranges::find(columns, &*field) != columns.end())
            throw refuse("the column " + name + " stands twice");
        columns.push_back(&*field);
    }
    for (const auto& field : recipientFields)
        if (field.required && std::ranges::find(columns, &field) == columns.end())
            throw refuse("the column " + std::string(field.column) +
                         " is missing; the first line names the columns");
    return columns;
}

RecipientInput readRow(const CsvRow& row, const std::vector<const RecipientField*>& columns,
                       const std::string& origin)
{
    const std::string where = origin + ": ";
    if (row.fields.size() != columns.size())
        throw Error(where + "has " + std::to_string(row.fields.size()) +
                    " fields where the first line names " + std::to_string(columns.size()));
    RecipientInput recipient;
    recipient.origin = origin;
    for (std::size_t i = 0; i < columns.size(); ++i) {
        const auto& field = *columns[i];
        const auto refuse = [&](const char* problem) {
            return Error(where + "the " + std::string(field.label) + problem);
        };
        if (row.fields[i].empty() && field.required)
            throw refuse(" is missing");
        if (hasControlCharacter(row.fields[i]))
            throw refuse(" holds a line break or control character");
        recipient.*field.text = row.fields[i];
    }
    return recipient;
}

} // namespace

std::vector<RecipientInput> parseRecipientsCsv(const std::string& text, const std::string& name)
{
    const auto rows = readCsvRows(text);
    const auto origin = [&](const CsvRow& row) { return name + ":" + std::to_string(row.line); };
    for (const auto& row : rows) {
        if (!row.problem.empty())
            throw Error(origin(row) + ": " + row.problem);
    }
    if (rows.empty())
        throw Error(name + ":1: the first line must name the columns, such as name,number");
    const auto columns = readHeader(rows.front(), origin(rows.front()) + ": ");
    if (rows.size() == 1)
        throw Error(name + ":" + std::to_string(rows.front().line) + ": no recipient follows the first line");
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
