// The language of driver scripts: one user action or question about the screen a line.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_CLI_SCRIPT_SCRIPT_PARSER_H
#define DRIVER_CLI_SCRIPT_SCRIPT_PARSER_H

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace quelm {

enum class ScriptVerb {
    press,   ///< press "W"
    type,    ///< type "W" "text"
    tick,    ///< tick "W" on|off
    choose,  ///< choose "W" N
    select,  ///< select "LIST" N...
    close,   ///< close "WINDOW"
    answer,  ///< answer yes|no
    call,    ///< call NAME
    show,    ///< show "W"
    rows,    ///< rows "LIST"
    windows, ///< windows
    cover,   ///< cover FILE.png
    summary, ///< summary DOCUMENT, and the places of fax
    fax,     ///< fax DOCUMENT OUTPUT, fax DOCUMENT device ADDRESS, fax DOCUMENT queue NAME
};

/// What takes the job of `fax`; nothing is named where `summary` leaves that open.
enum class ScriptPlace { file, device, queue, none };

/// One line of a script. Which members hold something follows from the verb.
struct ScriptStep {
    std::size_t line = 0; ///< counted from 1
    ScriptVerb verb = ScriptVerb::windows;
    std::string target; ///< the widget, list, window, function, document or picture
    std::string text;   ///< the text to type, or the file, address or queue of `fax`
    ScriptPlace place = ScriptPlace::file;
    bool on = false;          ///< `on` or `yes`
    std::vector<int> numbers; ///< the index of `choose`, the rows of `select`
};

/// Takes a script apart. Words are parted by blanks; a word that holds blanks stands in
/// quotation marks, where \" \\ \n \r \t and \xNN (a byte) stand for themselves. Empty lines
/// and what follows a "#" outside quotation marks are passed over. Throws Error
/// "NAME:LINE: what" for the first line that is no script line.
std::vector<ScriptStep> parseScript(std::string_view script, const std::string& name);

/// `text` in quotation marks, as `parseScript` reads it back.
std::string inQuotes(std::string_view text);

} // namespace quelm

#endif
