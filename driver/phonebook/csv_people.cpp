// From the rows of a CSV text to people.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/phonebook/csv_people.h"

#include "base/error.h"
#include "base/texts.h"
#include "base/translation.h"

#include <algorithm>
#include <map>
#include <utility>

namespace quelm {
namespace {

/// The parts of a text between `separators`, trimmed; empty ones are left out.
std::vector<std::string> parted(std::string_view text, std::string_view separators)
{
    std::vector<std::string> parts;
    while (!text.empty()) {
        const auto end = std::min(text.find_first_of(separators), text.size());
        if (const auto part = trimmed(text.substr(0, end)); !part.empty())
            parts.emplace_back(part);
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return parts;
}

/// The values of a field in which several stand, parted by " ::: ".
std::vector<std::string> valuesOf(std::string_view text)
{
    constexpr std::string_view between = ":::";
    std::vector<std::string> values;
    while (true) {
        const auto end = std::min(text.find(between), text.size());
        if (const auto value = trimmed(text.substr(0, end)); !value.empty())
            values.emplace_back(value);
        if (end == text.size())
            return values;
        text.remove_prefix(end + between.size());
    }
}

std::vector<std::string> categoriesOf(const std::string& text)
{
    const bool isList = text.find(":::") != std::string::npos || text.starts_with('*');
    auto categories = isList ? valuesOf(text) : parted(text, ";,");
    // Groups of the address book's own: "* My Contacts".
    std::erase_if(categories, [](const std::string& category) { return category.starts_with('*'); });
    return categories;
}

/// What spreadsheets are kept with from taking a number for a value: ="0123" and '0123.
std::string_view withoutGuard(std::string_view number)
{
    if (number.starts_with("=\"") && number.ends_with('"') && number.size() > 2)
        return number.substr(2, number.size() - 3);
    if (number.starts_with('\''))
        number.remove_prefix(1);
    return number;
}

/// One row, taken field by field.
class RowReading {
public:
    RowReading(std::size_t line, bool isOurs) : isOurs_(isOurs) { person_.line = line; }

    void take(const CsvColumn& column, const std::string& value)
    {
        if (value.empty())
            return;
        switch (column.field) {
        case CsvField::fax:
            return add(person_.faxes, value, column.use);
        case CsvField::phone:
            return add(person_.phones, value, column.use);
        case CsvField::email:
            return add(person_.emails, value, column.use);
        case CsvField::numberLabel:
            labels_[column.index] = value;
            return;
        case CsvField::number:
            labelled_[column.index] = value;
            return;
        case CsvField::categories:
            for (auto& category : categoriesOf(value))
                person_.categories.push_back(std::move(category));
            return;
        case CsvField::none:
            return;
        default:
            // Of two columns of a kind the first that is filled counts.
            if (auto& text = texts_[column.field]; text.empty())
                text = value;
        }
    }

    const std::string& text(CsvField field) { return texts_[field]; }
    bool isGroup() { return text(CsvField::type) == "group"; }

    CsvPerson finished()
    {
        for (const auto& [index, value] : labelled_) {
            const auto& label = labels_[index];
            add(isFaxLabel(label) ? person_.faxes : person_.phones, value, useByLabel(label));
        }
        person_.organization = text(CsvField::organization);
        person_.name = name();
        return {std::move(person_), text(CsvField::mailbox)};
    }

private:
    void add(std::vector<PersonNumber>& numbers, const std::string& text, Use use) const
    {
        if (isOurs_)
            return numbers.push_back({text, use});
        for (const auto& value : valuesOf(text))
            numbers.push_back({std::string(withoutGuard(value)), use});
    }

    /// The name as it is shown, or as it is spoken, or that of the organization.
    std::string name()
    {
        const auto& whole = text(CsvField::name);
        const auto& given = text(CsvField::givenName);
        const auto& family = text(CsvField::familyName);
        std::string spoken = given;
        // Lists of people's own have a column of names beside one of first names.
        const bool isFamilyName =
            !whole.empty() && family.empty() && !given.empty() && whole.find(given) == std::string::npos;
        if (!whole.empty() && !isFamilyName)
            return whole;
        for (const auto& part : {text(CsvField::middleName), isFamilyName ? whole : family})
            if (!part.empty())
                spoken += (spoken.empty() ? "" : " ") + part;
        return spoken.empty() ? text(CsvField::organization) : spoken;
    }

    bool isOurs_; ///< texts are as they stand
    Person person_;
    std::map<CsvField, std::string> texts_;
    std::map<std::size_t, std::string> labels_;
    std::map<std::size_t, std::string> labelled_;
};

class PeopleReader {
public:
    explicit PeopleReader(CsvPeople& people) : people_(people) {}

    void read(const CsvRow& row)
    {
        if (!row.problem.empty())
            return refuse(row, row.problem);
        const auto& columns = people_.header.columns;
        const auto fields = row.fields.size();
        const bool isBlank = std::ranges::all_of(row.fields, &std::string::empty);
        if (isBlank && !people_.header.isOurs)
            return;
        const bool tooMany =
            fields > columns.size() &&
            (people_.header.isOurs ||
             !std::all_of(row.fields.begin() + static_cast<std::ptrdiff_t>(columns.size()), row.fields.end(),
                          [](const auto& field) { return field.empty(); }));
        if (tooMany || (fields < columns.size() && people_.header.isOurs))
            return refuse(row,
                          localized("has %d fields where the first line names %d", fields, columns.size()));
        RowReading reading(row.line, people_.header.isOurs);
        for (std::size_t i = 0; i < std::min(fields, columns.size()); ++i)
            reading.take(columns[i], row.fields[i]);
        if (reading.isGroup())
            return takeGroup(row, reading);
        const auto& type = reading.text(CsvField::type);
        if (!type.empty() && type != "entry")
            return refuse(row, localized("the type \"%s\" is neither entry nor group", shownText(type)));
        if (!reading.text(CsvField::members).empty())
            return refuse(row, localized("only a group has members; write group as its type"));
        people_.rows.emplace_back(reading.finished());
    }

private:
    void takeGroup(const CsvRow& row, RowReading& reading)
    {
        // The column's own name: it is one of our files.
        for (std::size_t i = 0; i < row.fields.size(); ++i) {
            const auto field = people_.header.columns[i].field;
            const bool isForEntries = field == CsvField::fax || field == CsvField::organization ||
                                      field == CsvField::phone || field == CsvField::email ||
                                      field == CsvField::mailbox;
            if (isForEntries && !row.fields[i].empty())
                // Translators: %s is the name of a column, such as number.
                return refuse(row, localized("a group has no %s", nameOf(field)));
        }
        people_.rows.emplace_back(CsvGroup{
            row.line,
            {reading.text(CsvField::name), parted(reading.text(CsvField::members), ",")},
        });
    }

    static const char* nameOf(CsvField field)
    {
        switch (field) {
        case CsvField::fax:
            return "number";
        case CsvField::organization:
            return "organization";
        case CsvField::phone:
            return "phone";
        case CsvField::email:
            return "email";
        default:
            return "mailbox";
        }
    }

    void refuse(const CsvRow& row, const std::string& reason)
    {
        people_.refused.push_back({row.line, reason});
    }

    CsvPeople& people_;
};

std::string leftOutNote(const std::vector<std::string>& columns)
{
    constexpr std::size_t most = 5;
    std::string names;
    for (std::size_t i = 0; i < std::min(columns.size(), most); ++i)
        names += (names.empty() ? "" : ", ") + shownText(columns[i]);
    if (columns.size() > most)
        names += ", ...";
    // Translators: the names of columns.
    return localizedCount("%d column is not used: %s", "%d columns are not used: %s", columns.size(),
                          columns.size(), names);
}

} // namespace

CsvPeople readCsvPeople(std::string_view text, const std::string& file, std::optional<char> separator)
{
    auto dialect = dialectOf(text);
    if (separator)
        dialect.separator = *separator;
    const auto rows = readCsvRows(text, dialect);
    if (rows.empty())
        throw Error(file + ":1: " + localized("the first line must name the columns, such as name,number"));
    CsvPeople people;
    people.header = readCsvHeader(rows.front(), file);
    if (people.header.isMissing)
        people.notes.push_back(
            people.header.columns.size() == 1
                ? localized("the first line names no columns; all is read as fax numbers")
                : localized("the first line names no columns; they are read as name, number, organization, "
                            "phone, email"));
    if (!people.header.leftOut.empty())
        people.notes.push_back(leftOutNote(people.header.leftOut));
    PeopleReader reader(people);
    people.rows.reserve(rows.size());
    for (auto row = rows.begin() + (people.header.isMissing ? 0 : 1); row != rows.end(); ++row)
        reader.read(*row);
    return people;
}

} // namespace quelm
