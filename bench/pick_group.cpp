// Picking a group whose members are shown one after the other, beside showing them alone.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "bench/comparison.h"
#include "bench/phonebooks.h"
#include "bench/samples.h"
#include "host/calls.h"
#include "host/fax_session.h"
#include "model/fax_job.h"
#include "ui/phonebook_picks.h"

namespace bench {

namespace {

/// Entries, and behind them a group of all of them.
void fill(QuelmLegacyDatabase& phonebook, int count)
{
    for (const Entry& entry : entries(count))
        require(phonebook.saveRecord(entryRecord(entry).get()), "an entry was not saved");
    require(phonebook.saveRecord(groupRecord("Team", count).get()), "the group was not saved");
}

void pickGroup(benchmark::State& state)
{
    const std::vector<Entry> members = entries(static_cast<int>(state.range(0)));
    usePhonebook("group", fill, static_cast<int>(members.size()));
    host::setIndex("Fax PB List", static_cast<int>(members.size()));
    std::vector<std::unique_ptr<Tarvik40FaxRecipient>> recipients;
    recipients.reserve(members.size());
    for (const Entry& entry : members)
        recipients.push_back(recipientOf(entry));
    int picked = 0;
    compare(state, static_cast<double>(members.size()), T40AddFaxRecipientFromPBTest, [&] {
        picked = pFaxSession->getRecipientListCount(CUR_RECIPIENT_LIST);
        pFaxSession->removeAllFaxRecipients(CUR_RECIPIENT_LIST);
        for (const auto& recipient : recipients) {
            pFaxSession->addFaxRecipient(recipient.get(), true);
            pFaxSession->updatePBEntryList(CUR_RECIPIENT_LIST);
        }
        pFaxSession->updatePBEntryList(CUR_RECIPIENT_LIST); // once more when all are picked
        pFaxSession->clearAllFaxRecipients(CUR_RECIPIENT_LIST);
    });
    require(picked == static_cast<int>(members.size()), "not every member was picked");
    pFaxSession->updatePBEntryList(CUR_RECIPIENT_LIST);
}
BENCHMARK(pickGroup)->Name("pick_group")->Arg(1000)->UseManualTime()->Unit(benchmark::kMillisecond);

} // namespace

} // namespace bench
