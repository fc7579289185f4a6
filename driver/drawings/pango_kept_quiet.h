// Keeps what Pango says to programmers from the user's terminal.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_DRAWINGS_PANGO_KEPT_QUIET_H
#define DRIVER_DRAWINGS_PANGO_KEPT_QUIET_H

namespace quelm {

/// While it lives, warnings of Pango that its thread causes are dropped: what matters of them ends as an
/// error. Those of other threads, which may draw windows, go where they went.
class PangoKeptQuiet {
public:
    PangoKeptQuiet();
    ~PangoKeptQuiet();
    PangoKeptQuiet(const PangoKeptQuiet&) = delete;
    PangoKeptQuiet& operator=(const PangoKeptQuiet&) = delete;
};

} // namespace quelm

#endif
