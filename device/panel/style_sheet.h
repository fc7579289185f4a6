// How the status pages look.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DEVICE_PANEL_STYLE_SHEET_H
#define DEVICE_PANEL_STYLE_SHEET_H

namespace quelm::device {

/// CSS, ASCII.
extern const char* const styleSheet;

} // namespace quelm::device

#endif
