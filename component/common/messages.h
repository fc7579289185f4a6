// Texts shown to the user, offered to the host for translation first.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef COMMON_MESSAGES_H
#define COMMON_MESSAGES_H

#include <string>

/// The host's translation of `text`, or `text` itself when there is none. The result is valid
/// until the next message is translated.
[[nodiscard]] const char* translated(const char* text);

/// Marks a text that is translated where it is shown, for the extraction of the catalogues' template.
[[nodiscard]] constexpr const char* forTranslation(const char* text) { return text; }

/// A line of a question in plain text: the translation, or the English text, without markup.
[[nodiscard]] std::string questionText(const char* text);

/// A line of the duplicate question: what the host left in the message buffer, without a look at
/// whether it translated. A host that leaves the buffer alone gets an empty line; hosts that show
/// the English text copy it into the buffer.
[[nodiscard]] std::string duplicateQuestionText(const char* text);

/// A labelled line of a question: the label, three blanks and the value as typed.
[[nodiscard]] std::string labelledValue(const std::string& label, const char* value);

#endif
