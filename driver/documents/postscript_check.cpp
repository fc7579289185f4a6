// Lets a document run inside of a small PostScript program that watches it.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/documents/postscript_check.h"

#include "base/error.h"
#include "base/texts.h"
#include "base/translation.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <optional>
#include <string_view>

namespace quelm {
namespace {

/// Runs the file that is standard input, and says on lines of their own which faults there were. It opens the
/// file by a name, because Ghostscript reads standard input byte by byte.
///
/// The state is a string, because `restore` leaves the content of strings alone: "e" after an error, "s"
/// after a `stop` of the document's own; then "p" once a page was shown since the error; then "p" once any
/// was. Nothing of it stays in a dictionary where a document could come across it.
constexpr char watcher[] = R"ps(
/quelmstate (   ) def
/quelmtext { { 255 string cvs } stopped { pop pop (?) } if } bind def
/quelmpages { currentpagedevice /PageCount 2 copy known { get } { pop pop 0 } ifelse } bind def
/quelmfault {
  $error /newerror get {
    (\nquelm fault: ) print //quelmpages exec 1 add //quelmtext exec print
    [ /errorname /command ] { ( ) print $error exch get //quelmtext exec print } forall
    (\n) print flush
  } if
} bind def
errordict {
  1 index /handleerror eq
  { [ //quelmfault /exec load 3 index /exec load ] }
  { [ //quelmstate 0 (e ) /putinterval load 5 index /exec load ] } ifelse
  cvx exch pop errordict 3 1 roll put
} forall
userdict /showpage [ //quelmstate 1 (pp) /putinterval load /showpage load ] cvx put
userdict /stop [ //quelmstate 0 (s) /putinterval load /stop load ] cvx put
/quelmend {
  //quelmpages exec dup 0 ne //quelmstate 2 get 32 eq or
  { (\nquelm pages: ) print //quelmtext exec print (\n) print flush } { pop } ifelse
} bind def
userdict /quit [
  //quelmstate { 1 get 32 eq } /exec load { //quelmfault exec } /if load /quelmend load /exec load /quit load
] cvx put
{
  { (/proc/self/fd/0) (r) file cvx exec } stopped
  { //quelmstate dup 0 get 101 eq exch 1 get 32 eq or { //quelmfault exec } if } if
  //quelmend exec
  systemdict /quit get exec
}
[ /quelmstate /quelmtext /quelmpages /quelmfault /quelmend ] { userdict exch undef } forall
exec
)ps";

constexpr std::string_view faultMark = "\nquelm fault: ";
constexpr std::string_view pagesMark = "\nquelm pages: ";

/// An error of the interpreter.
struct Fault {
    long page = 0; ///< from 1
    std::string error;
    std::string command;
};

std::string_view takeWord(std::string_view& text)
{
    const std::string_view word = text.substr(0, text.find(' '));
    text.remove_prefix(std::min(word.size() + 1, text.size()));
    return word;
}

/// What a document calls a command, as far as it can be shown.
std::string shownCommand(std::string_view command)
{
    constexpr std::size_t longest = 40;
    std::string shown(command.substr(0, longest));
    std::ranges::replace_if(
        shown, [](unsigned char byte) { return byte <= ' ' || byte > '~'; }, '?');
    return shown;
}

/// The first fault in Ghostscript's messages.
std::optional<Fault> faultIn(std::string_view messages)
{
    const auto mark = messages.find(faultMark);
    if (mark == std::string_view::npos)
        return std::nullopt;
    messages.remove_prefix(mark + faultMark.size());
    std::string_view line = messages.substr(0, messages.find('\n'));
    Fault fault;
    const std::string_view page = takeWord(line);
    std::from_chars(page.data(), page.data() + page.size(), fault.page);
    fault.error = shownCommand(takeWord(line));
    fault.command = shownCommand(line);
    return fault;
}

/// How many pages were put out, as the watcher says at the document's end; nothing when it could not tell.
std::optional<std::size_t> pagesIn(std::string_view messages)
{
    // The document may have written such a line of its own ahead of it.
    const auto mark = messages.rfind(pagesMark);
    if (mark == std::string_view::npos)
        return std::nullopt;
    messages.remove_prefix(mark + pagesMark.size());
    std::size_t pages = 0;
    const auto result = std::from_chars(messages.data(), messages.data() + messages.size(), pages);
    return result.ec == std::errc() ? std::optional(pages) : std::nullopt;
}

struct Explanation {
    std::string_view error;
    const char* words;
};

/// What an error means, for who has only the document at hand.
std::string explain(const std::string& error)
{
    static constexpr std::array<Explanation, 12> explanations{{
        {"undefined", forTranslation("it uses a command that is not known")},
        {"undefinedresource", forTranslation("it needs a font or another resource that is missing")},
        {"invalidfont", forTranslation("it needs a font or another resource that is missing")},
        {"syntaxerror", forTranslation("it is damaged or ends too early")},
        {"ioerror", forTranslation("it is damaged or ends too early")},
        {"VMerror", forTranslation("it needs too much memory")},
        {"limitcheck", forTranslation("it needs too much memory")},
        {"invalidfileaccess", forTranslation("it uses another file, which a document may not")},
        {"undefinedfilename", forTranslation("it uses another file, which a document may not")},
        {"configurationerror", forTranslation("it asks for what a fax device cannot do")},
        {"invalidaccess", forTranslation("it does what only a device's administrator may")},
        {"timeout", forTranslation("it takes too long")},
    }};
    const auto* found = std::ranges::find(explanations, error, &Explanation::error);
    return localized(found == explanations.end() ? forTranslation("there is a mistake in it") : found->words);
}

} // namespace

std::optional<std::size_t> checkPostScript(const FileHandle& postScript, const std::string& name,
                                           const GhostscriptBounds& bounds)
{
    GhostscriptStreams streams;
    streams.inputFile = "/proc/self/fd/" + std::to_string(postScript.get());
    streams.takeOutput = [](std::string_view) {}; // whatever it writes there is no part of it
    ProcessResult result;
    try {
        result = runGhostscript(
            bounds, {"-q", "-sDEVICE=nullpage", "--permit-file-read=/proc/self/fd/0", "-c", watcher},
            streams);
    } catch (const Error& error) {
        throw Error(localized("%s: cannot be checked: %s", name, error.what()));
    }
    if (const auto fault = faultIn(result.errors))
        // Translators: the document, a page's number, what is wrong with it, and PostScript's names of an
        // error and of a command, such as "/undefined in foo".
        throw Error(
            localized("%s: page %d cannot be faxed: %s (PostScript error /%s in %s); print or save the "
                      "document again and fax that",
                      name, fault->page, explain(fault->error), fault->error, fault->command));
    if (result.exitStatus != 0)
        throw Error(
            localized("%s: cannot be faxed: Ghostscript, which runs it beforehand, ended with status %d; "
                      "print or save the document again and fax that",
                      name, result.exitStatus));
    return pagesIn(result.errors);
}

} // namespace quelm
