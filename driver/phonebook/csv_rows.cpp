// libcsv takes the rows apart; this file keeps the line numbers.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/phonebook/csv_rows.h"

#include "base/error.h"
#include "base/texts.h"
#include "base/translation.h"

#include <csv.h>
#include <glib.h>

#include <algorithm>
#include <array>
#include <new>
#include <optional>
#include <utility>

namespace quelm {
namespace {

constexpr std::size_t bytesOfMebibyte = 1048576;
constexpr std::size_t largestRow = bytesOfMebibyte; // a group has a thousand members and more

/// libcsv counts no lines, so it is fed one line at a time: a row that is still open after a line
/// goes on in the next.
class RowReader {
public:
    RowReader(std::string_view text, const CsvDialect& dialect) : rest_(text), separator_(dialect.separator)
    {
        // Without an LF each CR ends a line, as on old systems.
        lineEnd_ = text.find('\n') == std::string_view::npos ? '\r' : '\n';
        start();
        if (dialect.isNamed) {
            ++line_;
            takeLine();
            startRow();
        }
    }
    ~RowReader() { csv_free(&parser_); }
    RowReader(const RowReader&) = delete;
    RowReader& operator=(const RowReader&) = delete;

    std::vector<CsvRow> readAll()
    {
        while (!rest_.empty()) {
            ++line_;
            std::string unguarded;
            const auto line = rowStart_ == line_ ? withoutGuards(takeLine(), unguarded) : takeLine();
            const auto problem = problemWithLine(line);
            if (!problem.empty()) {
                refuse(line_, problem);
                continue;
            }
            rowSize_ += line.size();
            if (rowSize_ > largestRow) {
                refuse(rowStart_, localized("is longer than %d MiB; a quotation mark may be missing",
                                            largestRow / bytesOfMebibyte));
                continue;
            }
            const auto rowsBefore = rows_.size();
            if (csv_parse(&parser_, line.data(), line.size(), onField, onRow, this) != line.size()) {
                requireMemory();
                refuse(rowStart_,
                       localized("quotation marks stand amid a field; quote the whole field and double "
                                 "the marks within it"));
                continue;
            }
            const bool blank = line.find_first_not_of(" \t\r\n") == std::string_view::npos;
            if (rows_.size() != rowsBefore || (blank && rowStart_ == line_))
                startRow();
        }
        if (csv_fini(&parser_, onField, onRow, this) != 0) {
            requireMemory();
            refuse(rowStart_, localized("a quoted field is not closed; end it with a quotation mark"));
        }
        return std::move(rows_);
    }

private:
    static void onField(void* text, std::size_t size, void* self)
    {
        static_cast<RowReader*>(self)->fields_.emplace_back(static_cast<const char*>(text), size);
    }
    static void onRow(int, void* self)
    {
        auto& reader = *static_cast<RowReader*>(self);
        reader.rows_.push_back({reader.rowStart_, std::move(reader.fields_), ""});
        reader.fields_.clear();
    }

    void start()
    {
        if (csv_init(&parser_, CSV_STRICT | CSV_STRICT_FINI) != 0)
            throw std::bad_alloc();
        // By itself it asks for memory every 128 bytes of a field.
        constexpr std::size_t blockSize = 65536;
        csv_set_blk_size(&parser_, blockSize);
        csv_set_delim(&parser_, static_cast<unsigned char>(separator_));
        if (separator_ == '\t') // would be taken for a blank beside a field
            csv_set_space_func(&parser_, [](unsigned char character) { return character == ' ' ? 1 : 0; });
    }

    /// The next row begins on the next line.
    void startRow()
    {
        rowStart_ = line_ + 1;
        rowSize_ = 0;
    }

    void requireMemory()
    {
        if (csv_error(&parser_) == CSV_ENOMEM)
            throw std::bad_alloc();
    }

    /// Goes on with the next line.
    void refuse(std::size_t line, const std::string& problem)
    {
        rows_.push_back({line, {}, problem});
        fields_.clear();
        startRow();
        csv_free(&parser_);
        start();
    }

    std::string_view takeLine()
    {
        const auto end = rest_.find(lineEnd_);
        const auto size = end == std::string_view::npos ? rest_.size() : end + 1;
        const auto line = rest_.substr(0, size);
        rest_.remove_prefix(size);
        return line;
    }

    /// A line in which spreadsheets' ="0123", which keeps them from calculating, is a plain quoted field.
    /// `buffer` holds the line where it had to be changed.
    std::string_view withoutGuards(std::string_view line, std::string& buffer) const
    {
        if (line.find("=\"") == std::string_view::npos)
            return line;
        bool quoted = false;
        bool fieldStarts = true;
        for (std::size_t at = 0; at < line.size(); ++at) {
            const bool guarded = !quoted && fieldStarts && line.substr(at, 2) == "=\"";
            if (guarded)
                continue; // the quotation mark begins the field
            if (line[at] == '"')
                quoted = !quoted;
            fieldStarts = !quoted && line[at] == separator_;
            buffer += line[at];
        }
        return buffer;
    }

    static std::string problemWithLine(std::string_view line)
    {
        if (line.find('\0') != std::string_view::npos)
            return localized("holds a NUL byte; save the list as UTF-8 text");
        if (!isUtf8(line))
            return localized("is not UTF-8; save the list as UTF-8 text");
        return "";
    }

    csv_parser parser_{};
    std::string_view rest_;
    char separator_;
    char lineEnd_ = '\n';
    std::size_t line_ = 0;
    std::size_t rowStart_ = 1;
    std::size_t rowSize_ = 0; ///< in bytes, so far
    std::vector<std::string> fields_;
    std::vector<CsvRow> rows_;
};

void skipMark(std::string_view& text)
{
    if (text.starts_with("\xef\xbb\xbf"))
        text.remove_prefix(3);
}

/// What spreadsheets go by: a first line "sep=;", which some quote.
std::optional<char> namedSeparator(std::string_view text)
{
    auto line = trimmed(text.substr(0, std::min(text.find_first_of("\r\n"), text.size())));
    // A tab is white space; it is looked for where it stood.
    const bool isTab = text.substr(0, 6).find("sep=\t") != std::string_view::npos;
    if (line.starts_with('"') && line.ends_with('"') && line.size() > 2)
        line = line.substr(1, line.size() - 2);
    constexpr std::string_view word = "sep=";
    if (line.size() < word.size() || g_ascii_strncasecmp(line.data(), word.data(), word.size()) != 0)
        return std::nullopt;
    if (line.size() == word.size() && isTab)
        return '\t';
    const bool isOne = line.size() == word.size() + 1 && isPrintableAscii(line.back()) && line.back() != '"';
    return isOne ? std::optional(line.back()) : std::nullopt;
}

bool needsQuotes(std::string_view field)
{
    return field.find_first_of(",\"\r\n") != std::string_view::npos || field.starts_with(' ') ||
           field.ends_with(' ') || field.starts_with('\t') || field.ends_with('\t');
}

std::string quoted(const std::string& field)
{
    std::string text(2 * field.size() + 2, '\0');
    text.resize(csv_write(text.data(), text.size(), field.data(), field.size()));
    return text;
}

} // namespace

CsvDialect dialectOf(std::string_view text)
{
    skipMark(text);
    if (const auto named = namedSeparator(text))
        return {*named, true};
    text.remove_prefix(std::min(text.find_first_not_of(" \r\n"), text.size()));
    constexpr std::string_view separators = ",;\t";
    std::array<std::size_t, separators.size()> counts{};
    bool quoted = false;
    for (const char character : text) {
        if (character == '"')
            quoted = !quoted;
        if (quoted)
            continue;
        if (character == '\r' || character == '\n')
            break;
        if (const auto at = separators.find(character); at != std::string_view::npos)
            ++counts.at(at);
    }
    return {separators[static_cast<std::size_t>(std::ranges::max_element(counts) - counts.begin())], false};
}

std::optional<char> separatorNamed(std::string_view name)
{
    if (name == "comma")
        return ',';
    if (name == "semicolon")
        return ';';
    if (name == "tab" || name == "\t" || name == "\\t")
        return '\t';
    if (name.size() != 1 || g_ascii_ispunct(name[0]) == 0 || name[0] == '"')
        return std::nullopt;
    return name[0];
}

std::vector<CsvRow> readCsvRows(std::string_view text, const CsvDialect& dialect)
{
    skipMark(text);
    return RowReader(text, dialect).readAll();
}

std::string csvLine(const std::vector<std::string>& fields)
{
    std::string line;
    for (std::size_t i = 0; i < fields.size(); ++i) {
        line += i == 0 ? "" : ",";
        line += needsQuotes(fields[i]) ? quoted(fields[i]) : fields[i];
    }
    return line + "\n";
}

} // namespace quelm
