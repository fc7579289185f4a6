// Listing a large phonebook in its dialog on the screen, beside filling the widget tree alone.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "bench/comparison.h"
#include "bench/desktop_phonebook_dialog.h"
#include "bench/samples.h"

namespace bench {

namespace {

void listOnScreen(benchmark::State& state)
{
    const int count = static_cast<int>(state.range(0));
    const std::string last = entryNumber(count - 1).name;
    PhonebookDialog dialog([count](QuelmLegacyDatabase& phonebook) {
        for (int number = 0; number < count; ++number)
            require(phonebook.saveRecord(entryRecord(entryNumber(number)).get()), "an entry was not saved");
    });
    compareMeasured(
        state, count,
        [&] {
            dialog.show();
            const double seconds =
                secondsOf([&] { dialog.actAndDraw(PhonebookDialog::entries, [&dialog] { dialog.list(); }); });
            dialog.requireRows(PhonebookDialog::entries, count, last);
            dialog.remove();
            return seconds;
        },
        [&] {
            const double seconds = secondsOf([&dialog] { dialog.list(); });
            dialog.requireRows(PhonebookDialog::entries, count, last);
            return seconds;
        });
}
BENCHMARK(listOnScreen)
    ->Name("list_phonebook_on_screen")
    ->Arg(100000)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

} // namespace

} // namespace bench
