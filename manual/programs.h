// All programs that users start, as their manual shows them.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef MANUAL_PROGRAMS_H
#define MANUAL_PROGRAMS_H

#include "base/command_line/command_view.h"

#include <vector>

namespace quelm {

/// quelm-driver, quelm-desktop, fennodial and quelm-device, with their texts in the user's language.
std::vector<CommandView> describedPrograms();

} // namespace quelm

#endif
