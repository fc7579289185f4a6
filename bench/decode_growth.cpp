// Decoding records that grow: the time for a byte stays the same. The yardstick copies the same bytes.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "bench/comparison.h"
#include "bench/samples.h"
#include "phonebook/record_format.h"

#include <algorithm>

namespace bench {

namespace {

void decode(benchmark::State& state, Record record, const std::string LegacyDBRecipient::*grown,
            std::size_t expectedSize)
{
    const std::string& text = record.dataText();
    LegacyDBRecipient recipient;
    std::string copy;
    compare(
        state, static_cast<double>(text.size()),
        [&] {
            ClearLegacyDBRecipientInfo(recipient);
            benchmark::DoNotOptimize(ParseLegacyPBEntry(record.get(), recipient));
        },
        [&] {
            copy.assign(text);
            benchmark::DoNotOptimize(copy.data());
            benchmark::ClobberMemory();
        });
    require((recipient.*grown).size() == expectedSize, "the record was not decoded whole");
    state.SetComplexityN(static_cast<benchmark::IterationCount>(text.size()));
}

/// One value of that many bytes, with a full stop at every fourth: each might begin an end tag.
void decodeLongValue(benchmark::State& state)
{
    const auto size = static_cast<std::size_t>(state.range(0));
    std::string value;
    while (value.size() < size)
        value += ".abc";
    decode(state, {"uLong", taggedField("nam", value)}, &LegacyDBRecipient::name, size);
}

/// That many fields, each with a short value; the last one counts.
void decodeManyFields(benchmark::State& state)
{
    std::string text;
    for (std::int64_t number = 0; number < state.range(0); ++number)
        text += taggedField("eml", "recipient@example.com");
    decode(state, {"uMany", text}, &LegacyDBRecipient::email, 21);
}

/// A group of that many members.
void decodeMembers(benchmark::State& state)
{
    const int members = static_cast<int>(state.range(0));
    const std::size_t nameSize = entryNumber(0).name.size();
    decode(state, groupRecord("Team", members), &LegacyDBRecipient::groupMembers,
           static_cast<std::size_t>(members) * (nameSize + 1) + 1);
}

void grow(benchmark::internal::Benchmark* benchmark, std::int64_t from, std::int64_t to)
{
    for (; from <= to; from *= 2)
        benchmark->Arg(from);
    benchmark->UseManualTime()->Unit(benchmark::kMicrosecond)->Complexity(benchmark::oN);
}

BENCHMARK(decodeLongValue)->Name("decode_long_value")->Apply([](auto* b) { grow(b, 64 << 10, 1 << 20); });
BENCHMARK(decodeManyFields)->Name("decode_many_fields")->Apply([](auto* b) { grow(b, 1250, 20000); });
BENCHMARK(decodeMembers)->Name("decode_members")->Apply([](auto* b) { grow(b, 1250, 10000); });

} // namespace

} // namespace bench
