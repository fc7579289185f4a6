// The names of the functions that a host may call.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef FRAME_EXPORT_LIST_H
#define FRAME_EXPORT_LIST_H

/// ",InitializeFaxComponent,...,": every name is a function with C linkage that the library exports.
extern const char exportList[];

#endif
