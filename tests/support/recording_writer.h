// A print-stream writer that keeps what is written, and fails when told to.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef TESTS_SUPPORT_RECORDING_WRITER_H
#define TESTS_SUPPORT_RECORDING_WRITER_H

#include "host/print_stream.h"

#include <string>
#include <vector>

namespace fake {

class RecordingWriter : public AbstractPDLWriter {
public:
    /// One write as it came: the operation and the text.
    struct Write {
        std::string operation;
        std::string text;

        bool operator==(const Write&) const = default;
    };

    bool writeText(const char* text) override { return add("writeText", text); }
    void writeString(const std::string& text) override { add("writeString", text); }

    /// The texts of all writes that succeeded, one after the other.
    std::string stream() const;

    std::vector<Write> writes; ///< failed ones included
    int failAt = 0;            ///< the number, from 1, of the write that fails; 0: none
    int failFrom = 0;          ///< this write and all later ones fail; 0: none

private:
    bool add(const char* operation, const std::string& text);

    std::vector<bool> succeeded_;
};

/// Prints a write in a failed comparison.
void PrintTo(const RecordingWriter::Write& write, std::ostream* out);

} // namespace fake

#endif
