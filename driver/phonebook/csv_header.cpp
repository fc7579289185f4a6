// Finds out what the columns of a CSV file hold.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/phonebook/csv_header.h"

#include "base/error.h"
#include "base/texts.h"
#include "base/translation.h"
#include "driver/phonebook/csv_column_names.h"
#include "driver/store/name_checks.h"

#include <glib.h>

#include <algorithm>
#include <array>
#include <initializer_list>
#include <optional>
#include <set>

namespace quelm {
namespace {

constexpr std::array<std::string_view, 8> ourNames{"name",  "number", "organization", "phone",
                                                   "email", "type",   "members",      "mailbox"};

std::string ourNamesListed()
{
    std::string names;
    for (const auto& name : ourNames)
        names += (names.empty() ? "" : ", ") + std::string(name);
    return names;
}

bool isOurName(std::string_view name) { return std::ranges::find(ourNames, name) != ourNames.end(); }

/// "phone1value" is the value of the first number; nothing for other names.
std::optional<CsvColumn> indexedColumn(std::string_view plain)
{
    constexpr std::string_view start = "phone";
    if (!plain.starts_with(start))
        return std::nullopt;
    plain.remove_prefix(start.size());
    CsvColumn column;
    constexpr std::size_t mostDigits = 4;
    std::size_t digits = 0;
    while (digits < plain.size() && digits < mostDigits && g_ascii_isdigit(plain[digits]) != 0)
        column.index = 10 * column.index + static_cast<std::size_t>(plain[digits++] - '0');
    const auto rest = plain.substr(digits);
    if (digits == 0)
        return std::nullopt;
    if (rest == "value")
        column.field = CsvField::number;
    else if (rest == "type" || rest == "label")
        column.field = CsvField::numberLabel;
    else
        return std::nullopt;
    return column;
}

CsvColumn columnNamed(std::string_view name)
{
    const auto plain = plainColumnName(name);
    if (const auto indexed = indexedColumn(plain))
        return *indexed;
    return columnByPlainName(plain);
}

bool isNumber(const std::string& text)
{
    constexpr std::size_t fewestDigits = 3;
    return !problemWithPhoneNumber(text, "- ( ) /") &&
           static_cast<std::size_t>(
               std::ranges::count_if(text, [](char c) { return g_ascii_isdigit(c) != 0; })) >= fewestDigits;
}

/// The columns of a list that does not name them, whose first row is `fields`; nothing when it is none.
std::optional<CsvHeader> headerOfNamelessList(const std::vector<std::string>& fields)
{
    CsvHeader header;
    header.isMissing = true;
    if (fields.size() == 1 && isNumber(fields[0])) {
        header.columns = {{CsvField::fax}};
        return header;
    }
    constexpr std::array ours{CsvField::name, CsvField::fax, CsvField::organization, CsvField::phone,
                              CsvField::email};
    if (fields.size() < 2 || fields.size() > ours.size() || !isNumber(fields[1]))
        return std::nullopt;
    for (std::size_t i = 0; i < fields.size(); ++i)
        header.columns.push_back({ours.at(i)});
    return header;
}

void leaveOut(CsvHeader& header, std::size_t at, const std::string& name)
{
    header.columns[at].field = CsvField::none;
    header.leftOut.push_back(name);
}

/// A column "number" beside one of fax numbers is of something else, such as customers.
void leaveOtherNumbers(CsvHeader& header, const std::vector<std::string>& names)
{
    const auto isFax = [](const CsvColumn& column) {
        return column.field == CsvField::fax || column.field == CsvField::number;
    };
    if (std::ranges::count_if(header.columns, isFax) < 2)
        return;
    for (std::size_t i = 0; i < header.columns.size(); ++i)
        if (plainColumnName(names[i]) == "number")
            leaveOut(header, i, names[i]);
}

/// In lists of people a column of types or members may hold anything; ours come together.
void leaveForeignTypes(CsvHeader& header, const std::vector<std::string>& names)
{
    if (header.isOurs || (header.has(CsvField::type) && header.has(CsvField::members)))
        return;
    for (std::size_t i = 0; i < header.columns.size(); ++i)
        if (header.columns[i].field == CsvField::type || header.columns[i].field == CsvField::members)
            leaveOut(header, i, names[i]);
}

} // namespace

bool CsvHeader::has(CsvField field) const
{
    return std::ranges::find(columns, field, &CsvColumn::field) != columns.end();
}

CsvHeader readCsvHeader(const CsvRow& row, const std::string& file)
{
    const auto fail = [&](const std::string& problem) {
        return Error(file + ":" + std::to_string(row.line) + ": " + problem);
    };
    if (!row.problem.empty())
        throw fail(row.problem);
    CsvHeader header;
    header.isOurs = std::ranges::all_of(row.fields, isOurName);
    std::set<std::string> used;
    for (const auto& name : row.fields) {
        header.columns.push_back(columnNamed(name));
        if (header.columns.back().field == CsvField::none) {
            if (!name.empty())
                header.leftOut.push_back(name);
        } else if (!used.insert(plainColumnName(name)).second) {
            throw fail(localized("the column %s stands twice", shownText(name)));
        }
    }
    if (used.empty()) {
        if (auto nameless = headerOfNamelessList(row.fields))
            return *nameless;
        throw fail(localized("unknown column \"%s\"; the columns are %s", shownText(row.fields.front()),
                             ourNamesListed()));
    }
    if (!header.has(CsvField::fax) && !header.has(CsvField::number))
        throw fail(localized("the column %s is missing; the first line names the columns", "number"));
    leaveForeignTypes(header, row.fields);
    leaveOtherNumbers(header, row.fields);
    return header;
}

bool isFaxLabel(std::string_view label)
{
    const auto plain = plainColumnName(label);
    return std::ranges::any_of(std::initializer_list<std::string_view>{"fax", "faks", "факс", "télécopie",
                                                                       "ファックス", "传真", "傳真", "팩스"},
                               [&](std::string_view word) { return plain.find(word) != plain.npos; });
}

Use useByLabel(std::string_view label)
{
    const auto plain = plainColumnName(label);
    const auto has = [&](std::initializer_list<std::string_view> words) {
        return std::ranges::any_of(words, [&](auto word) { return plain.find(word) != plain.npos; });
    };
    if (has({"home", "privat", "domicile", "casa", "particular", "thuis", "domow", "personal", "личн",
             "дом"}))
        return Use::home;
    if (has({"work", "business", "geschäft", "gesch", "dienst", "arbeit", "büro", "office", "bureau",
             "trabajo", "lavoro", "uff", "werk", "comercial", "trabalho", "służb", "firm", "рабоч"}))
        return Use::work;
    return Use::unmarked;
}

} // namespace quelm
