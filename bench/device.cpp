// Rendering pages and faxing them, beside coding the same pages alone; and the memory of a long job.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "bench/comparison.h"
#include "device/line/fax_call.h"
#include "device/pages/page_file.h"
#include "tests/device/tiff/page_support.h"
#include "tests/support/temporary_folder.h"

#include <algorithm>
#include <chrono>
#include <fstream>
#include <string>

namespace bench {

namespace {

using quelm::device::CallResult;
using quelm::device::carryCall;
using quelm::device::renderPages;

/// A letter of one page and so many lines, so many times.
std::string letters(int count, int lines)
{
    return "%!PS\n<< /PageSize [612 792] >> setpagedevice\n" + std::to_string(count) +
           " { /Times-Roman findfont 12 scalefont setfont 700 -18 " + std::to_string(700 - 18 * (lines - 1)) +
           " { 72 exch moveto\n"
           "(The quick brown fox jumps over the lazy dog, and the dog lets it do so for the whole day.) "
           "show\n"
           "} for showpage } repeat\n";
}

int render(const TemporaryFolder& folder, int pages, int lines, int down)
{
    const std::string job = letters(pages, lines);
    writeFile(folder / "job.ps", job);
    return renderPages(folder / "job.ps", 0, job.size(), {.across = 204, .down = down}, folder / "pages.tif");
}

CallResult fax(const TemporaryFolder& folder, const quelm::device::CallWatch& watch = {})
{
    quelm::device::CallingFax caller;
    caller.pages = folder / "pages.tif";
    caller.identity = "+1 555 010 0000";
    quelm::device::AnsweringParty answering;
    answering.identity = "+1 555 010 4477";
    answering.keepAs = folder / "kept.tif";
    return carryCall(caller, answering, watch);
}

/// Pages through the line: coded, made sound of, heard, decoded and kept. `range` is the density.
void faxPages(benchmark::State& state)
{
    constexpr int count = 10;
    const TemporaryFolder folder;
    require(render(folder, count, 34, static_cast<int>(state.range(0))) == count, "a page is not rendered");
    const auto pages = quelm::device::tests::pagesIn(folder / "pages.tif");
    CallResult result;
    compare(
        state, count, [&] { result = fax(folder); },
        [&] { quelm::device::tests::writePages(folder / "coded.tif", pages); });
    require(result.kind == CallResult::Kind::sent && result.pagesKept == count, "a page is not sent");
    state.counters["line"] = std::chrono::duration<double>(result.duration).count();
}

/// Kilobytes of memory that this process has, without what it only sees of files.
long memoryNow()
{
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;)
        if (long kilobytes = 0; word == "RssAnon:" && status >> kilobytes)
            return kilobytes;
    require(false, "the system does not say how much memory is used");
    return 0;
}

/// The most memory, in kilobytes, that a call of so many pages has at the end of one.
long peakOfCall(const TemporaryFolder& folder, int count)
{
    require(render(folder, count, 8, 98) == count, "a page is not rendered");
    long peak = 0;
    int pages = 0;
    const CallResult result = fax(folder, [&](const quelm::device::CallProgress& progress) {
        if (progress.pagesSent > pages) {
            pages = progress.pagesSent;
            peak = std::max(peak, memoryNow());
        }
        return true;
    });
    require(result.pagesKept == count, "a page is not sent");
    return peak;
}

/// What a call of a thousand pages needs more than one of ten.
void thousandPages(benchmark::State& state)
{
    constexpr int few = 10;
    constexpr int many = 1000;
    constexpr long allowed = 4096; // KB; as dots, the pages that the ten do not have are 230 MB
    const TemporaryFolder folder;
    while (state.KeepRunning()) {
        const long peakOfFew = peakOfCall(folder, few);
        long peakOfMany = 0;
        state.SetIterationTime(secondsOf([&] { peakOfMany = peakOfCall(folder, many); }));
        state.counters["kb"] = static_cast<double>(peakOfMany);
        state.counters["more_kb"] = static_cast<double>(peakOfMany - peakOfFew);
        require(peakOfMany - peakOfFew < allowed, "a call needs more memory for more pages");
    }
}

BENCHMARK(faxPages)
    ->Name("fax_pages")
    ->Arg(98)
    ->Arg(196)
    ->Arg(391)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK(thousandPages)->Name("thousand_pages")->Iterations(1)->UseManualTime()->Unit(benchmark::kSecond);

} // namespace

} // namespace bench
