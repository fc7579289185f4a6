// Takes the right to send, and sends what is due.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/outbox/outbox_worker.h"

#include "base/error.h"
#include "base/file_io.h"
#include "base/system_reason.h"
#include "base/translation.h"
#include "driver/outbox/outbox_failure.h"
#include "driver/outbox/outbox_folder.h"
#include "driver/outbox/process_lock.h"

#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <string_view>
#include <utility>
#include <vector>

namespace quelm {
namespace {

constexpr const char* lockName = "worker";

// The first byte is the right; the second says that what stands in the file is the holder's.
constexpr off_t rightByte = 0;
constexpr off_t wordByte = 1;

const char* wordOf(WorkerKind kind) { return kind == WorkerKind::desktop ? "desktop" : "command"; }

std::optional<WorkerPresence> presenceIn(std::string_view text)
{
    WorkerPresence presence;
    const auto blank = text.find(' ');
    if (blank == std::string_view::npos)
        return std::nullopt;
    presence.kind =
        text.substr(0, blank) == wordOf(WorkerKind::desktop) ? WorkerKind::desktop : WorkerKind::command;
    const std::string_view number = text.substr(blank + 1);
    if (std::from_chars(number.data(), number.data() + number.size(), presence.process).ec != std::errc())
        return std::nullopt;
    return presence;
}

} // namespace

std::unique_ptr<OutboxWorker> OutboxWorker::start(const OutboxSettings& settings, WorkerKind kind)
{
    const OutboxFolder folder(settings.folder);
    FileHandle lock = folder.file(lockName);
    const std::string path = folder.path() + "/" + lockName;
    if (!lockByte(lock, rightByte)) {
        if (errno != EAGAIN && errno != EACCES)
            failOutbox(path, systemReason(errno));
        return nullptr;
    }
    // Ahead of the second lock, so that nobody takes the words of a worker that is gone for this one's.
    const std::string words = std::string(wordOf(kind)) + " " + std::to_string(::getpid()) + "\n";
    if (::ftruncate(lock.get(), 0) != 0)
        failOutbox(path, systemReason(errno));
    writeAll(lock.get(), words, path);
    if (!lockByte(lock, wordByte))
        failOutbox(path, systemReason(errno));
    return std::unique_ptr<OutboxWorker>(new OutboxWorker(std::move(lock)));
}

std::optional<WorkerPresence> OutboxWorker::living(const OutboxSettings& settings)
{
    if (::access((settings.folder + "/" + lockName).c_str(), F_OK) != 0 && errno == ENOENT)
        return std::nullopt;
    const OutboxFolder folder(settings.folder);
    const FileHandle lock = folder.file(lockName);
    constexpr int mostTries = 100;
    for (int tries = 0; tries < mostTries && isByteLocked(lock, rightByte); ++tries) {
        if (isByteLocked(lock, wordByte)) {
            std::array<char, 64> words{};
            const auto size = readFully(lock.get(), words.data(), words.size(), 0, lockName);
            const auto presence = presenceIn(std::string_view(words.data(), size));
            if (presence && isByteLocked(lock, wordByte))
                return presence;
        }
        ::poll(nullptr, 0, 1); // it has just begun
    }
    return isByteLocked(lock, rightByte) ? std::optional(WorkerPresence{}) : std::nullopt;
}

void OutboxWorker::sendDue(Outbox& outbox, std::time_t now, const Transfer& transfer,
                           const std::function<void(const OutboxJob&, const HandoverEnd&)>& ended)
{
    outbox.removeOld();
    outbox.settleOrphans(now, transfer);
    std::vector<OutboxJob> due = outbox.jobs(OutboxState::waiting);
    std::erase_if(due, [now](const OutboxJob& job) { return job.due > now || job.isOverdue(now); });
    std::ranges::stable_sort(due, {}, &OutboxJob::due);
    for (const OutboxJob& job : due) {
        if (transfer.isCancelled())
            return;
        try {
            // It may have been cancelled, or sent by its user, since.
            if (outbox.job(job.number).state != OutboxState::waiting)
                continue;
            const HandoverEnd end = outbox.handOver(job.number, now, transfer);
            if (ended)
                ended(job, end);
        } catch (const JobUnavailable&) {
            continue;
        }
    }
}

} // namespace quelm
