// What a device reads of the PostScript in a job: its header comments and its end.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DEVICE_STREAM_DOCUMENT_COMMENTS_H
#define DEVICE_STREAM_DOCUMENT_COMMENTS_H

#include "device/stream/attribute_section.h"
#include "device/stream/line_splitter.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace quelm::device {

/// Lines that a job in DSC form has.
inline constexpr std::string_view firstDocumentLine = "%!PS-Adobe-3.0";
inline constexpr std::string_view headerEnd = "%%EndComments";
inline constexpr std::string_view lastDocumentLine = "%%EOF";

/// Reads the lines of one document. The header comments reach from the first line to `%%EndComments`, or up
/// to a line that is no comment.
class DocumentComments {
public:
    /// Attribute lines among the header comments go to `attributes`, which outlives this.
    explicit DocumentComments(AttributeSection& attributes) : attributes_(attributes) {}

    void take(const Line& line);

    /// True when there was anything but blank lines.
    [[nodiscard]] bool hasContent() const { return hasContent_; }
    /// True when the first line is that of a PostScript document with comments.
    [[nodiscard]] bool beginsInForm() const { return beginsInForm_; }
    /// True when `%%EndComments` ended the header.
    [[nodiscard]] bool hasWholeHeader() const { return hasWholeHeader_; }
    /// True when the last line that is not blank is `%%EOF`.
    [[nodiscard]] bool endsInForm() const { return endsInForm_; }
    [[nodiscard]] const std::string& title() const { return title_; }
    /// The line with which the header ended; 0 while it has not.
    [[nodiscard]] std::uint64_t headerEndLine() const { return headerEndLine_; }

    // Lines behind the header, of each kind the first; 0 for none.

    /// An attribute, wherever it stands.
    [[nodiscard]] std::uint64_t strayAttribute() const { return strayAttribute_; }
    /// What somebody may have meant as an attribute, with nothing but comments between it and the header.
    [[nodiscard]] std::uint64_t nearAttribute() const { return nearAttribute_; }
    /// An attribute as another job would have it: directly behind the header, or at the head of a second
    /// document.
    [[nodiscard]] std::uint64_t anotherJob() const { return anotherJob_; }

private:
    enum class Place { firstLine, header, behindHeader, body };

    void takeComment(const Line& line);
    void takeBehind(const Line& line);

    AttributeSection& attributes_;
    Place place_ = Place::firstLine;
    bool hasContent_ = false;
    bool beginsInForm_ = false;
    bool hasWholeHeader_ = false;
    bool endsInForm_ = false;
    std::string title_;
    std::uint64_t headerEndLine_ = 0;
    std::uint64_t strayAttribute_ = 0;
    std::uint64_t nearAttribute_ = 0;
    std::uint64_t anotherJob_ = 0;
    bool isAheadOfPostScript_ = true; ///< of the document, or of one within it or behind it
};

} // namespace quelm::device

#endif
