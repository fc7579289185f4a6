// Keeps the writes of a print stream.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "tests/support/recording_writer.h"

#include "tests/support/fake_host.h"

#include <ostream>

namespace fake {

bool RecordingWriter::add(const char* operation, const std::string& text)
{
    writes.push_back({operation, text});
    fakeHost().journal.add(Journal::Kind::effect, std::string(operation) + " " + fake::quoted(text));
    const int number = static_cast<int>(writes.size());
    succeeded_.push_back(number != failAt && (failFrom == 0 || number < failFrom));
    return succeeded_.back();
}

std::string RecordingWriter::stream() const
{
    std::string result;
    for (std::size_t i = 0; i < writes.size(); ++i)
        if (succeeded_[i])
            result += writes[i].text;
    return result;
}

void PrintTo(const RecordingWriter::Write& write, std::ostream* out)
{
    *out << write.operation << ' ' << fake::quoted(write.text);
}

} // namespace fake
