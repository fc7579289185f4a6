// Making the cover page that goes out, beside what the component writes of it.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "bench/comparison.h"
#include "bench/memory_writer.h"
#include "bench/samples.h"
#include "driver/cover/cover_page.h"
#include "host/fax_session.h"
#include "model/fax_job.h"
#include "output/cover_page.h"

namespace bench {

namespace {

/// Fills a job for so many recipients, whose names begin with `name`.
void fillJob(int count, const std::string& name)
{
    for (Entry entry : entries(count)) {
        entry.name = name + entry.name;
        pFaxSession->addFaxRecipient(recipientOf(entry).release(), false);
    }
    pFaxSession->showRecipientInfo = true;
    pFaxSession->coverNotes = " (" + name + " Please call back before noon) ";
}

/// The page as the component writes it.
std::string componentsPage()
{
    MemoryWriter writer;
    pFaxSession->coverRecipientText.clear();
    pFaxSession->serializeFaxCoverSheet(&writer);
    return writer.text;
}

void writeCoverSheet(benchmark::State& state, const std::string& name)
{
    fillJob(static_cast<int>(state.range(0)), name);
    const quelm::CoverPageTemplate expected{coverPageHeaderText, coverPageTrailerText};
    const std::string typed = componentsPage();
    std::string printed;
    compare(
        state, 1, [&] { printed = quelm::makeCoverPage(componentsPage(), expected).postScript; },
        [&] { benchmark::DoNotOptimize(componentsPage()); });
    state.counters["bytes"] = static_cast<double>(printed.size());
    require((printed == typed) == name.empty(), "the page is not the one that goes out");
    pFaxSession->removeAllFaxRecipients(RECIPIENT_LIST);
}
BENCHMARK_CAPTURE(writeCoverSheet, plain, std::string())
    ->Name("write_cover_sheet/plain")
    ->Arg(1)
    ->Arg(500)
    ->UseManualTime()
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(writeCoverSheet, latin, std::string("J\u00fcrgen"))
    ->Name("write_cover_sheet/latin")
    ->Arg(1)
    ->Arg(500)
    ->UseManualTime()
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(writeCoverSheet, drawn, std::string("\u738b\u5c0f\u660e"))
    ->Name("write_cover_sheet/drawn")
    ->Arg(1)
    ->Arg(500)
    ->UseManualTime()
    ->Unit(benchmark::kMicrosecond);

} // namespace

} // namespace bench
