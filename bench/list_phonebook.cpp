// Listing a large phonebook from its SQLite file into the driver's widget tree, beside SQLite alone.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/sqlite/sqlite.h"
#include "bench/comparison.h"
#include "bench/phonebooks.h"
#include "bench/samples.h"
#include "common/module_state.h"
#include "phonebook/phonebook_listing.h"
#include "phonebook/phonebook_state.h"

namespace bench {

namespace {

void fill(QuelmLegacyDatabase& phonebook, int count)
{
    for (int number = 0; number < count; ++number)
        require(phonebook.saveRecord(entryRecord(entryNumber(number)).get()), "an entry was not saved");
}

using Rows = std::vector<std::pair<std::string, std::string>>;

/// The rows as strings, straight from the file.
void selectRows(const std::string& path, Rows& rows)
{
    const quelm::sqlite::Database database = quelm::sqlite::open(path, SQLITE_OPEN_READONLY);
    quelm::sqlite::Statement select(database, "SELECT key, data FROM record ORDER BY position");
    while (select.step())
        rows.emplace_back(select.bytes(0), select.bytes(1));
}

template <class Prepare>
void list(benchmark::State& state, Prepare prepare)
{
    const int count = static_cast<int>(state.range(0));
    usePhonebook("list", fill, count);
    Rows rows;
    compare(
        state, count, PopulatePersonalPBEntries, [&] { selectRows(*personalPBPath, rows); },
        [&] {
            rows = {};
            prepare();
        });

    host::TextBuffer cell;
    char* text = cell.text;
    require(rows.size() == static_cast<std::size_t>(count) &&
                pbListWidget->getListItemData(&text, 0, count - 1) && entryNumber(count - 1).name == text,
            "the list does not show the last entry");
    closePhonebook();
}

void listNewlyOpened(benchmark::State& state) { list(state, closePhonebook); }
void listAgain(benchmark::State& state) { list(state, nothing); }

BENCHMARK(listNewlyOpened)
    ->Name("list_phonebook")
    ->Arg(100000)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK(listAgain)
    ->Name("list_phonebook_again")
    ->Arg(100000)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

} // namespace

} // namespace bench
