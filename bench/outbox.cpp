// Putting jobs into the outbox and listing ten thousand of them, beside the file system and SQLite alone.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/outbox/outbox.h"

#include "base/file_io.h"
#include "base/sqlite/sqlite.h"
#include "bench/comparison.h"
#include "driver/outbox/outbox_log.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

namespace bench {

namespace {

namespace fs = std::filesystem;

constexpr std::time_t noon = 1'700'000'000;

/// A folder that is removed at the end.
class Folder {
public:
    Folder() : path_(fs::temp_directory_path() / "quelm-bench-XXXXXX")
    {
        require(::mkdtemp(path_.data()) != nullptr, "there is no temporary folder");
    }
    ~Folder()
    {
        std::error_code ignored;
        fs::remove_all(path_, ignored);
    }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;

    const std::string& path() const { return path_; }

private:
    std::string path_;
};

quelm::OutboxDraft someDraft()
{
    quelm::OutboxDraft draft;
    draft.target = quelm::NetworkAddress{"fax.example", 9100};
    draft.title = "A letter.pdf";
    draft.user = "ann";
    draft.recipients = {{1, "Ann Example", "+49 (30) 555-1234", "Example Ltd.", "", "ann@example.com", ""},
                        {1, "Zoe Example", "+49 (30) 555-1235", "Example Ltd.", "", "zoe@example.com", ""}};
    for (int i = 0; i < 30; ++i)
        draft.options.emplace("An option of the dialogs, number " + std::to_string(i), "1");
    draft.due = noon;
    return draft;
}

/// Jobs with their folders, as they are after some years.
void fill(const std::string& path, int count)
{
    const quelm::OutboxFolder folder(path);
    quelm::OutboxLog log(folder);
    quelm::LogRow row;
    static_cast<quelm::OutboxDraft&>(row) = someDraft();
    row.document = "A letter.pdf";
    log.transaction([&] {
        for (int i = 0; i < count; ++i)
            require(::mkdir((path + "/jobs/" + std::to_string(log.add(row))).c_str(), S_IRWXU) == 0,
                    "a job has no folder");
    });
}

void listOutbox(benchmark::State& state)
{
    const Folder folder;
    const std::string path = folder.path() + "/outbox";
    const int count = static_cast<int>(state.range(0));
    fill(path, count);
    std::size_t listed = 0;
    std::size_t selected = 0;
    compare(
        state, count,
        [&] {
            quelm::Outbox outbox({path, 30});
            listed = outbox.jobs().size();
        },
        [&] {
            const auto database = quelm::sqlite::open(path + "/log.db", SQLITE_OPEN_READONLY);
            quelm::sqlite::Statement select(database, "SELECT * FROM job ORDER BY number");
            std::vector<std::string> texts;
            for (selected = 0; select.step(); ++selected)
                for (const int column : {1, 2, 3, 6, 7, 9, 10, 19, 20})
                    texts.push_back(select.bytes(column));
        });
    require(listed == static_cast<std::size_t>(count) && selected == listed, "a job is not listed");
}

void putIntoOutbox(benchmark::State& state)
{
    const Folder folder;
    quelm::Outbox outbox({folder.path() + "/outbox", 30});
    const std::string stream(static_cast<std::size_t>(state.range(0)), 'x');
    const quelm::OutboxDraft draft = someDraft();
    compare(
        state, static_cast<double>(stream.size()),
        [&] {
            const auto entry = outbox.newEntry();
            entry->sink().write(stream);
            require(entry->commit(draft, nullptr) > 0, "a job has no number");
        },
        [&] {
            constexpr mode_t ownerAlone = S_IRUSR | S_IWUSR;
            const std::string path = folder.path() + "/file";
            const quelm::FileHandle file(::open(path.c_str(), O_RDWR | O_CREAT | O_TRUNC, ownerAlone));
            quelm::writeAll(file.get(), stream, path);
            require(::fsync(file.get()) == 0, "a file is not durable");
        });
}

BENCHMARK(listOutbox)->Name("list_outbox")->Arg(10'000)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(putIntoOutbox)
    ->Name("put_into_outbox")
    ->Arg(1'000'000)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

} // namespace

} // namespace bench
