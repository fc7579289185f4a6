// The slot in which the component publishes its one fax job to the host.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef HOST_FAX_SESSION_H
#define HOST_FAX_SESSION_H

#pragma GCC visibility push(default)

// Declared in here: a compiler may go by a class's first declaration for the visibility of its members.
class Tarvik40Fax;

extern "C" {
/// The fax job object. The host defines the slot, null at first; `InitializeFaxComponent` fills
/// it. The object is the component's and lives until the process ends.
extern Tarvik40Fax* pFaxSession;
}

#pragma GCC visibility pop

#endif
