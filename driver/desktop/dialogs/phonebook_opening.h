// Opening a phonebook in the phonebook program, which the component starts without a look at what becomes of
// it.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_DESKTOP_DIALOGS_PHONEBOOK_OPENING_H
#define DRIVER_DESKTOP_DIALOGS_PHONEBOOK_OPENING_H

#include "driver/widgets/widget.h"

namespace quelm {

/// Throws Error when `button` would start the phonebook program only for that to fail: it says why on
/// standard error, where nobody at a desktop reads it. Any other button passes.
void requireOpenablePhonebook(const Widget& button);

} // namespace quelm

#endif
