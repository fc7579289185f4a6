// Decides how each value prints, and writes it.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/cover/printed_values.h"

#include "base/error.h"
#include "base/module.h"
#include "base/texts.h"
#include "base/translation.h"
#include "driver/cover/composed_text.h"
#include "driver/cover/drawings.h"
#include "driver/cover/note_texts.h"
#include "driver/cover/page_fonts.h"
#include "driver/cover/postscript_string.h"
#include "driver/cover/refusals.h"

#include <fmt/format.h>
#include <glib.h>

#include <algorithm>
#include <cstddef>
#include <limits>
#include <memory>
#include <optional>
#include <string_view>
#include <utility>

#if defined(__has_feature)
#    if __has_feature(address_sanitizer)
// Fontconfig, which a module brings, reaches what it keeps by offsets, which the search for leaks does not
// follow: the default configuration, which Pango loads for the process, and what a thread of Pango's holds
// that the end of the process finds at work.
extern "C" const char* __lsan_default_suppressions() { return "leak:libfontconfig"; }
extern "C" const char* __lsan_default_options() { return "print_suppressions=0"; }
#    endif
#endif

namespace quelm {
namespace {

// Where the page program prints values, and where it clips them: at the margins of the page.
constexpr double rightMargin = 540;
constexpr double roomForValue = rightMargin - 221;
constexpr double roomForNote = rightMargin - 77;
constexpr std::size_t linesForNote = 13; // from 270 down to the margin at 72, 16 points apart

/// What a line may take up without running into those above and below it, which are 16 or 20 points away.
constexpr Drawings::LineRoom roomForNoteLine{15, 6, roomForNote};
constexpr Drawings::LineRoom roomForValueLine{15, 6, roomForValue};

bool isAscii(std::string_view text) { return std::ranges::all_of(text, isPrintableAscii); }

bool hasPairedParentheses(std::string_view text)
{
    int depth = 0;
    for (const char byte : text) {
        depth += byte == '(' ? 1 : byte == ')' ? -1 : 0;
        if (depth < 0)
            return false;
    }
    return depth == 0;
}

/// Whether a text in a PostScript string prints as it was typed without being changed. The page's fonts print
/// a hyphen as a minus sign, which passes for one, and a grave accent as a quotation mark.
bool printsAsTyped(std::string_view text)
{
    return isAscii(text) && text.find_first_of("\\`") == std::string_view::npos && hasPairedParentheses(text);
}

std::string cutValue(std::string_view text)
{
    return localized("the cover sheet has no room for all of \"%s\": the text is cut off; shorten it",
                     shownText(text));
}

/// The text without the blanks at its end, which print as nothing.
std::string_view withoutLastBlanks(std::string_view text)
{
    return text.substr(0, text.find_last_not_of(' ') + 1);
}

bool isVisible(gunichar code)
{
    return g_unichar_isgraph(code) != FALSE && g_unichar_ismark(code) == FALSE &&
           g_unichar_type(code) != G_UNICODE_PRIVATE_USE;
}

/// The characters as a sentence names them: "x" (U+0078), as many as a person reads.
std::string namesOf(std::string_view characters)
{
    constexpr int most = 5;
    std::string names;
    const std::string all(characters);
    int count = 0;
    const char* next = nullptr;
    for (const char* at = all.c_str(); *at != '\0'; at = next) {
        next = g_utf8_next_char(at);
        const gunichar code = g_utf8_get_char(at);
        names += names.empty() ? "" : ", ";
        if (++count > most)
            return names + "...";
        if (isVisible(code))
            names += "\"" + std::string(at, next) + "\" ";
        names += fmt::format("U+{:04X}", code);
    }
    return names;
}

std::string tallText(std::string_view text)
{
    return localized("the cover sheet has no room for letters as tall as those of \"%s\": they run into the "
                     "lines beside them; change that text",
                     shownText(text));
}

std::string cutNote()
{
    return localized("the cover sheet has no room for more than %d lines of its note: what comes behind "
                     "them is cut off; shorten the note",
                     linesForNote);
}

/// Collects what is written anew, and what that needs ahead of the page.
class NewValues {
public:
    /// The text as the content of a string that prints in Helvetica.
    std::string value(const std::string& typed)
    {
        const std::string text = composedText(typed);
        if (const auto plain = latin1(text)) {
            const std::string codes = latin1Codes(*plain);
            if (printedWidth(withoutLastBlanks(codes), PageFont::helvetica) > roomForValue)
                cut_.push_back(cutValue(typed));
            return postScriptEscaped(codes);
        }
        const auto line = drawings()
                              .add(withoutLastBlanks(text), Typeface::sans, pageFontSize,
                                   std::numeric_limits<double>::infinity(), roomForValueLine)
                              .front();
        if (line.width > roomForValue)
            cut_.push_back(cutValue(typed));
        if (line.isTooTall)
            cut_.push_back(tallText(typed));
        return keyFor(line);
    }

    /// The texts of a note as the strings of an array that print in Times-Roman.
    std::string note(const std::vector<std::string_view>& texts)
    {
        std::string strings = " ";
        std::size_t count = 0;
        const auto append = [&](const auto& lines, const auto& contentOf) {
            for (const auto& line : lines)
                if (++count <= linesForNote)
                    strings += "(" + contentOf(line) + ") ";
        };
        for (const auto typed : texts) {
            const std::string text = composedText(typed);
            if (const auto plain = latin1(text)) {
                append(brokenLines(*plain, PageFont::timesRoman, roomForNote),
                       [this](std::string_view line) { return noteLine(line); });
                continue;
            }
            const auto lines = drawings().add(withoutLastBlanks(text), Typeface::serif, pageFontSize,
                                              roomForNote, roomForNoteLine);
            append(lines, [this](const Drawings::Line& line) { return keyFor(line); });
            if (std::ranges::any_of(lines, &Drawings::Line::isTooTall))
                cut_.push_back(tallText(typed));
        }
        if (count > linesForNote)
            cut_.push_back(cutNote());
        return strings;
    }

    /// What has to stand ahead of the page. Throws Error when a character cannot be printed.
    std::string ahead() const
    {
        if (drawings_ != nullptr && !drawings_->missing().empty())
            // Translators: %s is a list such as "x" U+0078, U+E000.
            throw Error(
                localized("the cover sheet cannot be printed: no font of this computer has %s; install "
                          "a font that does, or change the text",
                          namesOf(drawings_->missing())));
        if (texts_.empty())
            return {};
        std::string text = "% What the fonts of the cover page cannot print is looked up here instead.\n"
                           "save\n"
                           "8 dict begin\n";
        if (needsAccents_)
            text += accentedFont;
        if (drawings_ != nullptr)
            text += drawings_->postScript("QuelmDrawings");
        text += "/QuelmShow /show load def\n/QuelmTexts [\n";
        for (const auto& procedure : texts_)
            text += "{ " + procedure + " }\n";
        return text + "] def\n" + std::string(showInstead);
    }

    std::string behind() const { return texts_.empty() ? "" : "end\nrestore\n"; }

    std::vector<std::string> cut() && { return std::move(cut_); }

private:
    Drawings& drawings()
    {
        if (drawings_ == nullptr)
            drawings_ = part<DrawingLibrary>().start();
        return *drawings_;
    }

    /// The content of the string that stands for this line.
    std::string keyFor(const Drawings::Line& line)
    {
        return keyFor("QuelmDrawings " + std::to_string(line.drawing) + " get exec");
    }

    /// No value that a person types begins with a control character. The strings are never keys of a
    /// dictionary, which on a device may have no more than 127 bytes.
    std::string keyFor(std::string procedure)
    {
        texts_.push_back(std::move(procedure));
        return std::string("\\001Quelm") + static_cast<char>('A' + texts_.size() - 1);
    }

    /// One line in ISO Latin 1. The page prints notes in a font that has the characters of ASCII alone.
    std::string noteLine(std::string_view line)
    {
        if (isAscii(line) && line.find('`') == std::string_view::npos)
            return postScriptEscaped(line);
        needsAccents_ = true;
        return keyFor("/QuelmTimes " + std::to_string(static_cast<int>(pageFontSize)) + " selectfont (" +
                      postScriptEscaped(latin1Codes(line)) + ") QuelmShow");
    }

    // A copy without FID, which definefont makes anew.
    static constexpr const char* accentedFont = "/Times-Roman findfont dup length dict begin\n"
                                                "{ 1 index /FID ne { def } { pop pop } ifelse } forall\n"
                                                "/Encoding ISOLatin1Encoding def\n"
                                                "currentdict end /QuelmTimes exch definefont pop\n";

    // The page program's procedures look `show` up when they are run, for it is a procedure here. What a
    // device shows on a page of its own accord is no such string, in whatever encoding.
    static constexpr const char* showInstead =
        "/show {\n"
        "dup length 7 eq { dup 0 6 getinterval (\\001Quelm) eq } { false } ifelse\n"
        "{ 6 get 65 sub QuelmTexts exch get currentfont exch exec setfont }\n"
        "{ QuelmShow } ifelse\n"
        "} bind def\n";

    std::unique_ptr<Drawings> drawings_; ///< none without a text to draw: looking for fonts takes a while
    std::vector<std::string> texts_;     ///< the procedures that show them
    std::vector<std::string> cut_;
    bool needsAccents_ = false;
};

/// What of a page on which all values stay does not fit.
std::vector<std::string> cutAsTyped(const CoverValues& typed, std::size_t noteLines)
{
    std::vector<std::string> cut;
    for (std::size_t slot = 0; slot < noteSlot; ++slot)
        if (printedWidth(withoutLastBlanks(typed.at(slot)), PageFont::helvetica) > roomForValue)
            cut.push_back(cutValue(typed.at(slot)));
    if (noteLines > linesForNote)
        cut.push_back(cutNote());
    return cut;
}

/// The note's texts up to the last one that shows something; below it there is nothing to be cut off.
std::vector<std::string_view> shownTexts(std::vector<std::string_view> texts)
{
    while (texts.size() > 1 && withoutLastBlanks(texts.back()).empty())
        texts.pop_back();
    return texts;
}

} // namespace

PrintedValues printedValues(const CoverValues& typed)
{
    const auto note = noteTexts(typed.at(noteSlot));
    if (!note)
        refuseValue(typed.at(noteSlot));
    const bool notePrints = std::ranges::all_of(*note, [](std::string_view text) {
        return printsAsTyped(text) &&
               printedWidth(latin1Codes(withoutLastBlanks(text)), PageFont::timesRoman) <= roomForNote;
    });
    PrintedValues printed{typed, "", "", {}};
    if (notePrints && std::all_of(typed.begin(), typed.begin() + noteSlot, printsAsTyped)) {
        printed.cut = cutAsTyped(typed, shownTexts(*note).size());
        return printed;
    }
    NewValues anew;
    for (std::size_t slot = 0; slot < noteSlot; ++slot)
        printed.values.at(slot) = anew.value(typed.at(slot));
    printed.values.at(noteSlot) = anew.note(shownTexts(*note));
    printed.ahead = anew.ahead();
    printed.behind = anew.behind();
    printed.cut = std::move(anew).cut();
    return printed;
}

} // namespace quelm
