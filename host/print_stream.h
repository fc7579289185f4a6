// The host's print-stream writer, through which a fax job reaches the device.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef HOST_PRINT_STREAM_H
#define HOST_PRINT_STREAM_H

#include <string>

#pragma GCC visibility push(default)

/// Receives the parts of one print stream in the order in which they are written.
///
/// A host derives its own writer from this class and hands it to
/// `Tarvik40Fax::serializeFaxJob` and `Tarvik40Fax::serializeFaxCoverSheet`. The
/// component calls it only during that call and keeps no pointer to it. The order of
/// the virtual members is the binary interface: never add one ahead of, or between, them.
/// No operation may throw.
class __attribute__((visibility("default"))) AbstractPDLWriter {
public:
    virtual ~AbstractPDLWriter() = default;

    /// Appends `text` (NUL-terminated, the bytes as they stand, no line end added).
    /// Returns false when the text could not be written. The text belongs to the caller
    /// and is valid during the call only.
    virtual bool writeText(const char* text) = 0;

    /// Appends the bytes of `text` as they stand. A host that can fail here remembers the
    /// failure itself: there is no result.
    virtual void writeString(const std::string& text) = 0;
};

#pragma GCC visibility pop

#endif
