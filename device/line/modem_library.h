// The modem library's declarations, without the macros of its own that would change those of others.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DEVICE_LINE_MODEM_LIBRARY_H
#define DEVICE_LINE_MODEM_LIBRARY_H

#include <spandsp.h>
#include <spandsp/expose.h>

// In C++ it redefines functions of <cmath> by others that round differently.
#undef lrint
#undef lrintf
#undef TRUE
#undef FALSE

namespace quelm::device {

/// Makes the libraries' tables, and keeps them from writing to standard error. To be called ahead of anything
/// else of theirs; may be called again, on any thread.
void prepareModemLibrary();

} // namespace quelm::device

#endif
