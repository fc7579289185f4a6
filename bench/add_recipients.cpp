// Writing the attributes of a job whose recipients are in a file, beside the component's own redraws under a
// host that does next to nothing: it shows all recipients again for each one that is added.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "bench/comparison.h"
#include "bench/program.h"
#include "bench/program_paths.h"
#include "bench/samples.h"
#include "common/module_state.h"
#include "host/fax_session.h"
#include "model/fax_job.h"
#include "tests/support/temporary_folder.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>

namespace bench {

namespace {

void writeFile(const std::string& file, const std::vector<Entry>& rows)
{
    std::ofstream stream(file);
    stream << "name,number,organization,phone,email\n";
    for (const Entry& row : rows)
        stream << row.name << ',' << row.faxNumber << ',' << row.organization << ',' << row.phone << ','
               << row.email << '\n';
    require(stream.flush().good(), "the file of recipients was not written");
}

/// The recipients that the attributes of a job name.
std::ptrdiff_t recipientsIn(const std::string& attributes)
{
    std::ifstream stream(attributes);
    std::ptrdiff_t count = 0;
    for (std::string line; std::getline(stream, line);)
        count += line.find("OID_ATT_FAX_DESTINATION_PHONE") != std::string::npos ? 1 : 0;
    return count;
}

void addRecipients(benchmark::State& state)
{
    const std::vector<Entry> rows = entries(static_cast<int>(state.range(0)));
    const TemporaryFolder folder;
    for (const char* name : {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_STATE_HOME", "XDG_CACHE_HOME"})
        ::setenv(name, folder.path().c_str(), 1);
    const std::string file = folder / "recipients.csv";
    writeFile(file, rows);
    const std::string output = folder / "attributes";
    compareMeasured(
        state, static_cast<double>(rows.size()),
        [&] {
            return timesOf({inStage("quelm-driver"), "--user", "ann", "attributes", "--recipients", file},
                           output)
                .cpu;
        },
        [&] {
            const double seconds = secondsOf([&] {
                for (const Entry& row : rows) {
                    pFaxSession->addFaxRecipient(recipientOf(row).release(), false);
                    pFaxSession->updatePBEntryList(RECIPIENT_LIST);
                }
            });
            pFaxSession->removeAllFaxRecipients(RECIPIENT_LIST);
            recipientListWidget->clearListItems();
            return seconds;
        });
    require(recipientsIn(output) == static_cast<std::ptrdiff_t>(rows.size()),
            "the job does not go to all recipients");
}
BENCHMARK(addRecipients)
    ->Name("add_recipients")
    ->Arg(1000)
    ->Arg(10000)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

} // namespace

} // namespace bench
