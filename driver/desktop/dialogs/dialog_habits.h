// What people expect of the dialogs beyond what their definition says: keys, names for controls.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_DESKTOP_DIALOGS_DIALOG_HABITS_H
#define DRIVER_DESKTOP_DIALOGS_DIALOG_HABITS_H

#include "driver/widgets/widget.h"

#include <string>

namespace quelm {

/// The button that Enter presses in a window: its "Ok", else the only button that it has; null when
/// there is neither.
Widget* defaultButton(const Widget& window);

/// The button that Enter in a text field presses instead: one beside the field, as in a search; null
/// when there is none.
Widget* buttonBeside(const Widget& field);

/// The button that a double click on a row of a list, or Enter, presses; null when there is none.
Widget* openingButton(const Widget& list);

/// The button that the Delete key in a list presses; null when there is none.
Widget* removingButton(const Widget& list);

/// How assistive tools call a control: by its own text, that of the label or box that it belongs to, or
/// its window's title. In the user's language, without mnemonics and colons.
std::string accessibleName(const Widget& control);

/// Whether a file chooser also takes the name of a file that does not exist yet: a personal phonebook is
/// made when it is first listed, a shared one must exist.
bool takesNewFiles(const Widget& chooser);

} // namespace quelm

#endif
