// Copies a document into a job so that nothing in it is taken for a line of the job.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/documents/document_copy.h"

#include "base/error.h"
#include "base/translation.h"
#include "driver/documents/print_wrapping.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <charconv>
#include <cstring>
#include <optional>
#include <span>
#include <sstream>
#include <string>
#include <string_view>

namespace quelm {
namespace {

bool isLineEnd(char byte) { return byte == '\n' || byte == '\r'; }

/// What may stand ahead of a line that a device takes for one of its own.
constexpr std::string_view blankBytes(" \t\f\v\0", 5);

bool startsLike(std::string_view line, std::string_view prefix)
{
    const auto same = [](unsigned char left, unsigned char right) {
        return std::toupper(left) == std::toupper(right);
    };
    return line.size() >= prefix.size() && std::equal(prefix.begin(), prefix.end(), line.begin(), same);
}

/// The size that "%%BeginBinary: N" or "%%BeginData: N [Binary [Bytes]]" announces; nothing for data
/// that consists of lines or characters, and for other lines.
std::optional<std::uint64_t> announcedBinarySize(std::string_view line)
{
    constexpr std::string_view binary = "%%BeginBinary:";
    constexpr std::string_view data = "%%BeginData:";
    const bool isData = line.starts_with(data);
    if (!isData && !line.starts_with(binary))
        return std::nullopt;

    std::istringstream words{std::string(line.substr(isData ? data.size() : binary.size()))};
    std::string number;
    std::string type;
    std::string unit;
    words >> number >> type >> unit;
    std::uint64_t size = 0;
    const auto parsed = std::from_chars(number.data(), number.data() + number.size(), size);
    if (number.empty() || parsed.ec != std::errc() || parsed.ptr != number.data() + number.size())
        return std::nullopt;
    if (isData &&
        ((!type.empty() && !startsLike(type, "Binary")) || (!unit.empty() && !startsLike(unit, "Bytes"))))
        return std::nullopt;
    return size;
}

/// Finds the line ends of a text one after the other. Looks at no byte twice, even when only one of the two
/// kinds occurs.
class LineEnds {
public:
    explicit LineEnds(std::string_view text)
        : text_(text), carriageReturn_(find('\r', 0)), lineFeed_(find('\n', 0))
    {
    }

    /// The first line end at or behind `position`, which never goes back; the text's size without one.
    std::size_t from(std::size_t position)
    {
        if (carriageReturn_ < position)
            carriageReturn_ = find('\r', position);
        if (lineFeed_ < position)
            lineFeed_ = find('\n', position);
        return std::min(carriageReturn_, lineFeed_);
    }

private:
    std::size_t find(char byte, std::size_t position) const
    {
        return std::min(text_.find(byte, position), text_.size());
    }

    std::string_view text_;
    std::size_t carriageReturn_;
    std::size_t lineFeed_;
};

class DocumentCopier {
public:
    DocumentCopier(const DocumentBytes& document, JobSink& sink) : document_(document), sink_(sink) {}

    DocumentEnd copy(const Progress& progress)
    {
        for (bool atEnd = false; !atEnd;) {
            const auto room = buffer_.size() - filled_;
            const auto count = document_.read(offset_ + filled_, buffer_.data() + filled_, room);
            filled_ += count;
            atEnd = count < room;
            put(scan(atEnd));
            if (progress)
                progress(offset_, document_.size());
        }
        return end_;
    }

private:
    /// Where in a line the next byte stands.
    enum class Place { start, behindBlanks, inside };

    /// The most of a line that is looked at; a structuring comment is no longer.
    static constexpr std::size_t longestComment = 255;
    /// Needed at the start of a line to judge it and to see both bytes of its line end.
    static constexpr std::size_t lookAhead = longestComment + 2;

    /// Neutralises what the buffer holds; returns how much of it is done. Unless it is the document's
    /// end, what can only be judged with the bytes behind it is left for later.
    std::size_t scan(bool atEnd)
    {
        std::size_t position = 0;
        LineEnds lineEnds(std::string_view(buffer_.data(), filled_));
        while (position < filled_) {
            if (place_ != Place::inside) {
                const std::string_view rest(buffer_.data() + position, filled_ - position);
                if (const std::size_t blanks = std::min(rest.find_first_not_of(blankBytes), rest.size())) {
                    place_ = Place::behindBlanks;
                    position += blanks;
                    continue;
                }
                if (!atEnd && filled_ - position < lookAhead)
                    return position;
                judgeLine(position);
                place_ = Place::inside;
            }
            const std::size_t lineEnd = lineEnds.from(position);
            if (const auto undecided = neutraliseJobEnds(position, lineEnd, atEnd))
                return *undecided;
            position = lineEnd;
            if (position < filled_) {
                ++position; // of "\r\n" the second byte then is an empty line, which changes nothing
                place_ = Place::start;
            }
        }
        return position;
    }

    bool inBinarySection(std::size_t position) const { return offset_ + position < binaryEnd_; }

    /// Neutralises the line at `position` where needed.
    void judgeLine(std::size_t position)
    {
        char* const start = buffer_.data() + position;
        if (*start != '%' && *start != '@' && *start != endOfTransmission)
            return;
        const auto rest = std::span(buffer_).subspan(position, std::min(lookAhead, filled_ - position));
        const auto length = static_cast<std::size_t>(std::ranges::find_if(rest, isLineEnd) - rest.begin());
        const std::string_view line(start, std::min(length, longestComment));
        const bool structural = place_ == Place::start && !inBinarySection(position);

        if (startsLike(line, "%%OID_ATT_") || startsLike(line, "%%QLM") || misleads(line, structural))
            start[1] = ' ';
        else if (startsLike(line, "@PJL"))
            start[0] = '%';
        else if (line.starts_with("\x04%!"))
            start[0] = ' ';
        else if (const auto size = announcedBinarySize(line); structural && size && length < rest.size())
            enterBinarySection(position + length, rest.subspan(length), *size);
    }

    /// Keeps count of embedded documents; true when the line would make a device count otherwise: by ending
    /// one that did not begin, or where only some devices see a line.
    bool misleads(std::string_view line, bool structural)
    {
        const bool begins = line.starts_with("%%BeginDocument");
        const bool ends = line.starts_with("%%EndDocument");
        if (!structural)
            return begins || ends;
        if (begins)
            ++end_.openDocuments;
        if (!ends)
            return false;
        if (end_.openDocuments == 0)
            return true;
        --end_.openDocuments;
        return false;
    }

    /// Takes note of a binary section of `size` bytes behind the line end that `rest` starts with.
    void enterBinarySection(std::size_t lineEnd, std::span<const char> rest, std::uint64_t size)
    {
        // Behind a "\r", a "\n" belongs to the line end or is the first byte of the data.
        const bool isPair = rest.size() > 1 && rest[0] == '\r' && rest[1] == '\n';
        for (const std::size_t bytes : {isPair ? 2U : 1U, 1U}) {
            const std::uint64_t begin = offset_ + lineEnd + bytes;
            if (endsBinarySection(begin, size)) {
                binaryEnd_ = begin + size;
                return;
            }
        }
    }

    /// Makes blanks of what would end a job ahead of the next one, between two positions of a line. Where the
    /// bytes that decide it are not there yet, returns that place.
    std::optional<std::size_t> neutraliseJobEnds(std::size_t begin, std::size_t end, bool atEnd)
    {
        constexpr std::string_view jobEnd = "\x04%!";
        const std::string_view line(buffer_.data(), end);
        for (auto found = line.find(jobEnd.front(), begin); found != std::string_view::npos;
             found = line.find(jobEnd.front(), found + 1)) {
            if (inBinarySection(found))
                continue;
            if (!atEnd && filled_ - found < jobEnd.size())
                return found;
            if (line.substr(found, jobEnd.size()) == jobEnd)
                buffer_[found] = ' ';
        }
        return std::nullopt;
    }

    /// True when a binary section of `size` bytes from `offset` on is followed by the comment that ends it.
    bool endsBinarySection(std::uint64_t offset, std::uint64_t size) const
    {
        if (size > document_.size() || offset > document_.size() - size)
            return false;
        std::array<char, 32> bytes{};
        const auto count = document_.read(offset + size, bytes.data(), bytes.size());
        std::string_view next(bytes.data(), count);
        for (int lineEnds = 0; lineEnds < 2 && !next.empty() && isLineEnd(next.front()); ++lineEnds)
            next.remove_prefix(1);
        return next.starts_with("%%EndBinary") || next.starts_with("%%EndData");
    }

    void put(std::size_t size)
    {
        if (size == 0)
            return;
        const std::string_view done(buffer_.data(), size);
        if (searchUel_(done))
            throw Error(localized(
                "%s: holds a command that ends a print job (UEL) in its middle, so that only a part "
                "of it would be faxed; print it to a file again as one document",
                document_.path()));
        sink_.write(done);
        end_.insideLine = !isLineEnd(done.back());
        std::memmove(buffer_.data(), buffer_.data() + size, filled_ - size);
        filled_ -= size;
        offset_ += size;
    }

    const DocumentBytes& document_;
    JobSink& sink_;
    std::string buffer_ = std::string(std::size_t{256} * 1024, '\0');
    std::size_t filled_ = 0;
    std::uint64_t offset_ = 0; ///< of the buffer's first byte in the document
    Place place_ = Place::start;
    std::uint64_t binaryEnd_ = 0; ///< where the last binary section ends in the document
    UelSearch searchUel_;
    DocumentEnd end_;
};

} // namespace

DocumentEnd copyDocument(const DocumentBytes& document, JobSink& sink, const Progress& progress)
{
    return DocumentCopier(document, sink).copy(progress);
}

} // namespace quelm
