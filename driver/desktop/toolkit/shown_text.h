// What a widget's text looks like on the screen: translated, in valid UTF-8, with its line breaks.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_DESKTOP_TOOLKIT_SHOWN_TEXT_H
#define DRIVER_DESKTOP_TOOLKIT_SHOWN_TEXT_H

#include "driver/widgets/widget.h"

#include <string>
#include <string_view>

namespace quelm {

/// Any bytes as UTF-8 that can be drawn: what is not UTF-8 becomes replacement characters. A phonebook
/// may hold anything.
std::string drawable(std::string_view text);

/// A message as a window shows it: drawable, on one line, and with a capital where it begins with a word.
/// Messages begin with a small letter, as they stand behind a program's name elsewhere; what a file is called
/// stays.
std::string shownMessage(std::string_view message);

/// `text` with every kind of line end ("\r\n", "\r") as "\n".
std::string withPlainLineEnds(std::string_view text);

/// What a widget shows for its text: the translation of a text from the dialog definition, mnemonics
/// included; the component's own texts, which it has translated itself, as they are.
std::string shownText(const Widget& widget);

/// Whether underscores in the widget's text mark mnemonics: only texts of the definition do that.
bool hasMnemonics(const Widget& widget);

/// The title of a column (from 0) of a list, translated.
std::string columnTitle(const Widget& list, std::size_t column);

} // namespace quelm

#endif
