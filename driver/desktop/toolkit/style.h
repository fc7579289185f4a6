// The look that all windows of the driver share.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_DESKTOP_TOOLKIT_STYLE_H
#define DRIVER_DESKTOP_TOOLKIT_STYLE_H

namespace quelm {

/// Puts the driver's style sheet over the user's theme, for all windows of this process; only once,
/// however often it is called. The dialogs' positions are made for controls of some 22 pixels, which
/// themes with large controls exceed by half.
void useDriverStyle();

} // namespace quelm

#endif
