// The component's entry point.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef FRAME_STARTUP_H
#define FRAME_STARTUP_H

#pragma GCC visibility push(default)
extern "C" {
/// Builds the dialogs, publishes the fax job and opens the personal phonebook, creating what is
/// missing. Non-zero on success. On failure nothing is shown, and what was set before stays set.
/// Called once; a later call publishes a new fax job and leaves the phonebook alone.
int InitializeFaxComponent();
}
#pragma GCC visibility pop

#endif
