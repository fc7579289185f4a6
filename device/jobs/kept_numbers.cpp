// Lists the files of a device's state for the numbers that they bear.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/jobs/kept_numbers.h"

#include "device/jobs/state_files.h"

#include <algorithm>
#include <filesystem>
#include <functional>
#include <string>
#include <system_error>

namespace quelm::device {
namespace {

namespace fs = std::filesystem;

/// Calls `see` with each entry of a folder; one that is missing has none.
void forEachIn(const fs::path& folder, const std::function<void(const fs::directory_entry&)>& see)
{
    std::error_code error;
    for (fs::directory_iterator entry(folder, error); !error && entry != fs::directory_iterator();
         entry.increment(error))
        see(*entry);
    if (error && error != std::errc::no_such_file_or_directory)
        failState(folder, error.value());
}

bool isFolder(const fs::directory_entry& entry)
{
    std::error_code error;
    return entry.symlink_status(error).type() == fs::file_type::directory;
}

} // namespace

KeptNumbers keptNumbers(const StateFolder& folder)
{
    KeptNumbers kept;
    const auto seeJob = [&kept](int number) { kept.job = std::max(kept.job, number); };
    const auto seeCall = [&kept](const fs::directory_entry& entry) {
        kept.call = std::max(kept.call, StateFolder::callOf(entry.path()));
    };
    for (const int job : keptJobs(folder))
        seeJob(job);
    for (const fs::path& named : {folder.printedFile(1), folder.reportPdf(1)})
        forEachIn(named.parent_path(), [&](const fs::directory_entry& entry) {
            for (const char* tail : {".tif", ".pdf", ".txt"})
                seeJob(numberIn(entry.path().filename().string(), "job-", tail));
        });
    forEachIn(folder.unknown(), [&](const fs::directory_entry& entry) {
        seeJob(numberIn(entry.path().filename().string(), "", ""));
        seeCall(entry);
    });
    forEachIn(folder.incoming(), seeCall);
    forEachIn(folder.received(), [&](const fs::directory_entry& entry) {
        if (isFolder(entry))
            forEachIn(entry.path(), seeCall);
    });
    return kept;
}

std::vector<int> keptJobs(const StateFolder& folder)
{
    std::vector<int> jobs;
    forEachIn(folder.jobFile(1).parent_path().parent_path(), [&](const fs::directory_entry& entry) {
        if (const int number = numberIn(entry.path().filename().string(), "", ""); number != 0)
            jobs.push_back(number);
    });
    std::ranges::sort(jobs);
    return jobs;
}

} // namespace quelm::device
