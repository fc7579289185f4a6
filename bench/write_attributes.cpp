// Writing a job's attributes into memory, beside copying the same bytes.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "bench/comparison.h"
#include "bench/memory_writer.h"
#include "bench/samples.h"
#include "host/fax_session.h"
#include "model/fax_job.h"

#include <cstring>

namespace bench {

namespace {

void writeAttributes(benchmark::State& state)
{
    const auto count = static_cast<std::size_t>(state.range(0));
    for (const Entry& entry : entries(static_cast<int>(count)))
        pFaxSession->addFaxRecipient(recipientOf(entry).release(), false);
    MemoryWriter writer;
    pFaxSession->serializeFaxJob(&writer);
    const std::string expected = writer.text;
    std::vector<char> copy(expected.size());
    compare(
        state, static_cast<double>(count),
        [&] {
            writer.text.clear();
            pFaxSession->serializeFaxJob(&writer);
        },
        [&] {
            std::memcpy(copy.data(), expected.data(), expected.size());
            benchmark::DoNotOptimize(copy.data());
            benchmark::ClobberMemory();
        });
    state.counters["bytes"] = static_cast<double>(expected.size());

    std::size_t destinations = 0;
    for (auto at = writer.text.find("FAX_DESTINATION"); at != std::string::npos;
         at = writer.text.find("FAX_DESTINATION", at + 1))
        ++destinations;
    require(destinations == count && writer.text == expected, "the job lacks destinations");
    pFaxSession->removeAllFaxRecipients(RECIPIENT_LIST);
}
BENCHMARK(writeAttributes)
    ->Name("write_attributes")
    ->Arg(10000)
    ->UseManualTime()
    ->Unit(benchmark::kMicrosecond);

} // namespace

} // namespace bench
