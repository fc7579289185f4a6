// Tells the comments of a document's header from its own lines further down.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/stream/document_comments.h"

#include "base/texts.h"
#include "device/stream/titles.h"
#include "device/stream/words.h"

namespace quelm::device {
namespace {

/// Lines of the header begin with "%" and a sign that shows.
bool isComment(std::string_view line)
{
    return line.size() >= 2 && line[0] == '%' && line[1] > ' ' && line[1] <= '~';
}

/// A line without the sign with which some systems end what they send.
std::string_view withoutTransmissionEnd(std::string_view line)
{
    constexpr char endOfTransmission = '\x04';
    while (line.starts_with(endOfTransmission))
        line.remove_prefix(1);
    return line;
}

bool isBlankLine(std::string_view line) { return trimmed(withoutTransmissionEnd(line)).empty(); }

} // namespace

void DocumentComments::take(const Line& line)
{
    if (!isBlankLine(line.text)) {
        hasContent_ = true;
        endsInForm_ = line.text == lastDocumentLine;
    }
    if (place_ == Place::firstLine) {
        place_ = Place::header;
        beginsInForm_ = line.text.starts_with(firstDocumentLine);
        if (line.text.starts_with("%!"))
            return;
    }
    if (place_ == Place::header)
        return takeComment(line);
    takeBehind(line);
}

void DocumentComments::takeBehind(const Line& line)
{
    const auto note = [&line](std::uint64_t& first) { first = first == 0 ? line.number : first; };
    const auto text = withoutTransmissionEnd(line.text);
    if (text.starts_with(lastDocumentLine) || text.starts_with("%!PS"))
        isAheadOfPostScript_ = true;
    if (text.starts_with('%'))
        if (const auto parts = attributeLine(JobForm::dsc, text); parts && parts->known != nullptr) {
            note(strayAttribute_);
            // A document's own lines of this kind are made others by a driver: "% OID_ATT_...".
            if (isAheadOfPostScript_ && parts->prefix.starts_with("%%"))
                note(anotherJob_);
        }
    if (place_ == Place::behindHeader && looksLikeAttribute(text))
        note(nearAttribute_);
    else if (const auto shown = trimmed(text); !shown.empty() && !shown.starts_with('%')) {
        isAheadOfPostScript_ = false;
        place_ = Place::body;
    }
}

void DocumentComments::takeComment(const Line& line)
{
    const std::string_view text = line.text;
    hasWholeHeader_ = text == headerEnd;
    if (hasWholeHeader_ || !isComment(text)) {
        place_ = Place::behindHeader;
        headerEndLine_ = line.number;
        return takeBehind(line);
    }
    constexpr std::string_view title = "%%Title:";
    if (text.starts_with(title) && title_.empty())
        title_ = titleOfComment(text.substr(title.size()));
    attributes_.take(line);
}

} // namespace quelm::device
