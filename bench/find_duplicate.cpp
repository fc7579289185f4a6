// Looking for a recipient that is not there, beside comparing the bytes of the same keys.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "bench/allocations.h"
#include "bench/comparison.h"
#include "bench/samples.h"
#include "host/fax_session.h"
#include "model/fax_job.h"

#include <cstring>

namespace bench {

namespace {

void findDuplicate(benchmark::State& state)
{
    std::vector<std::string> keys;
    for (const Entry& entry : entries(static_cast<int>(state.range(0)))) {
        keys.push_back(entry.name + entry.faxNumber);
        pFaxSession->addFaxRecipient(recipientOf(entry).release(), false);
    }
    // As long as the others, and different only in its last byte from the last one.
    std::string absent = keys.back();
    absent.back() = 'x';

    std::size_t allocated = 0;
    bool found = false;
    std::size_t equal = 0;
    compare(
        state, static_cast<double>(keys.size()),
        [&] {
            const std::size_t before = allocations();
            found = pFaxSession->isFaxRecipientAlreadyInList(absent) || found;
            allocated += allocations() - before;
        },
        [&] {
            for (const std::string& key : keys)
                equal +=
                    key.size() == absent.size() && std::memcmp(key.data(), absent.data(), key.size()) == 0
                        ? 1
                        : 0;
            benchmark::DoNotOptimize(equal);
        });
    state.counters["allocations"] = static_cast<double>(allocated);

    require(!found && equal == 0, "a key was found that is not there");
    require(pFaxSession->isFaxRecipientAlreadyInList(keys.back()), "a key that is there was not found");
    pFaxSession->removeAllFaxRecipients(RECIPIENT_LIST);
}
BENCHMARK(findDuplicate)->Name("find_duplicate")->Arg(10000)->UseManualTime()->Unit(benchmark::kMicrosecond);

} // namespace

} // namespace bench
