// libcsv takes the rows apart; this file keeps the line numbers.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/phonebook/csv_rows.h"

#include "base/error.h"
#include "base/texts.h"
#include "base/translation.h"

#include <csv.h>

#include <new>
#include <utility>

namespace quelm {
namespace {

constexpr std::size_t bytesOfMebibyte = 1048576;
constexpr std::size_t largestRow = bytesOfMebibyte; // a group has a thousand members and more

/// libcsv counts no lines, so it is fed one line at a time: a row that is still open after a line
/// goes on in the next.
class RowReader {
public:
    explicit RowReader(std::string_view text) : rest_(text) { start(); }
    ~RowReader() { csv_free(&parser_); }
    RowReader(const RowReader&) = delete;
    RowReader& operator=(const RowReader&) = delete;

    std::vector<CsvRow> readAll()
    {
        while (!rest_.empty()) {
            ++line_;
            const auto line = takeLine();
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
        const auto end = rest_.find('\n');
        const auto size = end == std::string_view::npos ? rest_.size() : end + 1;
        const auto line = rest_.substr(0, size);
        rest_.remove_prefix(size);
        return line;
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
    std::size_t line_ = 0;
    std::size_t rowStart_ = 1;
    std::size_t rowSize_ = 0; ///< in bytes, so far
    std::vector<std::string> fields_;
    std::vector<CsvRow> rows_;
};

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

std::vector<CsvRow> readCsvRows(std::string_view text)
{
    if (text.starts_with("\xff\xfe") || text.starts_with("\xfe\xff"))
        return {{1, {}, localized("is UTF-16; save the list as UTF-8 text")}};
    if (text.starts_with("\xef\xbb\xbf"))
        text.remove_prefix(3);
    return RowReader(text).readAll();
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
