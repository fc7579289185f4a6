// Showing the job's recipients in their list, beside a host that is handed the same rows directly.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "bench/comparison.h"
#include "bench/samples.h"
#include "common/module_state.h"
#include "host/fax_session.h"
#include "model/fax_job.h"

#include <array>

namespace bench {

namespace {

void refreshList(benchmark::State& state)
{
    const std::vector<Entry> shown = entries(static_cast<int>(state.range(0)));
    for (const Entry& entry : shown)
        pFaxSession->addFaxRecipient(recipientOf(entry).release(), false);
    GTKObject factory;
    compare(
        state, static_cast<double>(shown.size()), [] { pFaxSession->updatePBEntryList(RECIPIENT_LIST); },
        [&] {
            recipientListWidget->clearListItems();
            for (const Entry& entry : shown) {
                const std::array<const char*, 7> cells{entry.name.c_str(),
                                                       entry.faxNumber.c_str(),
                                                       entry.organization.c_str(),
                                                       entry.phone.c_str(),
                                                       entry.email.c_str(),
                                                       pEmptyString,
                                                       nullptr};
                require(host::addListRow(factory, recipientListWidget, cells.data()), "a row was refused");
            }
        });
    state.SetComplexityN(state.range(0));

    pFaxSession->updatePBEntryList(RECIPIENT_LIST);
    host::TextBuffer cell;
    char* text = cell.text;
    const Entry& last = shown.back();
    require(recipientListWidget->getListItemData(&text, 4, static_cast<int>(shown.size()) - 1) &&
                last.email == text,
            "the list does not show the last recipient");
    pFaxSession->removeAllFaxRecipients(RECIPIENT_LIST);
    recipientListWidget->clearListItems();
}
BENCHMARK(refreshList)
    ->Name("refresh_list")
    ->DenseRange(2000, 10000, 2000)
    ->UseManualTime()
    ->Unit(benchmark::kMicrosecond)
    ->Complexity(benchmark::oN);

} // namespace

} // namespace bench
