// In which charset a file of contacts is written, and its text as UTF-8.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_PHONEBOOK_TEXT_CHARSET_H
#define DRIVER_PHONEBOOK_TEXT_CHARSET_H

#include <string>
#include <string_view>

namespace quelm {

/// A file's text.
struct DecodedText {
    std::string
        text; ///< UTF-8 without a byte order mark; with `charset` UTF-8 it may hold bytes that are none
    std::string charset;  ///< what it was read as, such as "UTF-8" or "windows-1252"
    bool guessed = false; ///< nothing in the file or from the user says so
};

/// Whether texts of a charset of that name can be read.
[[nodiscard]] bool isKnownCharset(const std::string& name);

/// `text` of a charset as UTF-8. Throws Error "FILE:LINE: ..." for the first line that is none of that
/// charset; `file` is the name in messages.
[[nodiscard]] std::string textFromCharset(std::string_view text, const std::string& charset,
                                          const std::string& file);

/// Reads the bytes of a file. With a `charset` they are of that one; without, a byte order mark decides, then
/// whether they are UTF-8 or UTF-16, and at last what the words look like. A text that is UTF-8 but for
/// some lines is left so, for those lines to be refused. Throws Error where nothing can be guessed, and as
/// `textFromCharset` does.
[[nodiscard]] DecodedText decodeText(std::string bytes, const std::string& charset, const std::string& file);

/// The line that the user is told about a guessed charset, with the option that names another.
[[nodiscard]] std::string guessedCharsetNote(const std::string& charset, const char* option = "--charset");

} // namespace quelm

#endif
