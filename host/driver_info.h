// What the host knows about its installation, its user, its language and its clock.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef HOST_DRIVER_INFO_H
#define HOST_DRIVER_INFO_H

#pragma GCC visibility push(default)

/// The driver's facts. The component reaches the one instance through `pDriverGlobals` and
/// never creates or destroys it.
class __attribute__((visibility("default"))) GlobalDriverInfo {
public:
    /// The directory of the driver's installation, without a trailing "/": it holds the
    /// programs, `icon/` and `db/phonebook/`. The host owns the text, which stays valid and
    /// unchanged for the life of the process. Never null.
    char* getExecutableLocation();

    /// The login name of the user for whom the driver runs. Ownership and lifetime as above.
    char* getCurrentUserName();

    /// Looks up the translation of `text` (an English text of the component or of the host)
    /// and writes it to `out`, at most 4,096 bytes, terminator included, cut at a character
    /// boundary. Returns true when a translation was written. On false `out` may hold a copy
    /// of `text` or what it held before: a caller depends on neither.
    bool translateMessage(char* text, char* out);
};

extern "C" {
/// The host's facts. Set before `InitializeFaxComponent` is called, never null from then on.
extern GlobalDriverInfo* pDriverGlobals;

/// Formats the local date and time into `out` as strftime does: at most `outSize` bytes,
/// terminator included. With `flag` 1 the clock is read anew; with 0 the time of the last
/// reading is formatted, so that several calls describe one moment. A text that does not
/// fit leaves an empty text.
void GetCurrentTimeWithFormat(char* out, int outSize, char* format, int flag);
}

#pragma GCC visibility pop

#endif
