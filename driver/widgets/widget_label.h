// What people know a widget by, which has no name on the screen.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_WIDGETS_WIDGET_LABEL_H
#define DRIVER_WIDGETS_WIDGET_LABEL_H

#include "driver/widgets/widget.h"

#include <string>
#include <string_view>

namespace quelm {

/// The window or file chooser that a widget stands in; the widget itself when it is one.
[[nodiscard]] const Widget& windowOf(const Widget& widget);

/// The widget whose text people know `control` by: itself when it shows a text, else the label that stands
/// left of it or above it, the check box or choice that it completes, or its window.
[[nodiscard]] const Widget& labelOf(const Widget& control);

/// That text in the user's language, as one line without mnemonics and colons; a file chooser's title. For
/// messages: no name of a widget is ever part of it.
[[nodiscard]] std::string labelText(const Widget& control);

/// A widget's text without the marks of its mnemonic ("_Ok"), blanks in place of line ends, and without the
/// colon at its end.
[[nodiscard]] std::string plainLabel(std::string text);

/// A place in the definition, such as "XPos"; 0 where it gives none.
[[nodiscard]] int coordinate(const Widget& widget, std::string_view key);

/// A text without its mnemonic: "_Add >>" is "Add >>", "__" stands for an underscore.
[[nodiscard]] std::string withoutMnemonic(std::string_view text);

} // namespace quelm

#endif
