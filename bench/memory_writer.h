// A print stream in memory.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef BENCH_MEMORY_WRITER_H
#define BENCH_MEMORY_WRITER_H

#include "host/print_stream.h"

#include <string>

namespace bench {

/// Keeps what the component writes.
class MemoryWriter final : public AbstractPDLWriter {
public:
    bool writeText(const char* part) override
    {
        text += part;
        return true;
    }
    void writeString(const std::string& part) override { text += part; }

    std::string text;
};

} // namespace bench

#endif
