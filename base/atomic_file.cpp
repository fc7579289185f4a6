// Temporary files that take their target's place when they are complete.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/atomic_file.h"

#include "base/error.h"
#include "base/file_handle.h"
#include "base/pipe_wait.h"
#include "base/system_reason.h"
#include "base/temporary_file.h"
#include "base/translation.h"
#include "base/write_target.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <system_error>
#include <utility>
#include <vector>

namespace quelm {

namespace {

/// A temporary file that a signal must remove. Entries are reused and never freed, so that a
/// signal handler can walk the list at any moment.
struct Unfinished {
    std::atomic<bool> taken{false};
    std::atomic<bool> active{false};
    int folder = -1;
    std::array<char, 48> name{};
    Unfinished* next = nullptr;
};

std::atomic<Unfinished*> unfinishedFiles{nullptr};
static_assert(std::atomic<Unfinished*>::is_always_lock_free && std::atomic<bool>::is_always_lock_free);

Unfinished& takeEntry()
{
    for (Unfinished* entry = unfinishedFiles; entry != nullptr; entry = entry->next)
        if (!entry->taken.exchange(true))
            return *entry;
    auto entry = std::make_unique<Unfinished>();
    entry->taken = true;
    entry->next = unfinishedFiles;
    while (!unfinishedFiles.compare_exchange_weak(entry->next, entry.get())) {
    }
    return *entry.release();
}

extern "C" void removeUnfinishedAndEnd(int signal)
{
    removeUnfinishedFiles();
    // End the program the way the signal does.
    std::signal(signal, SIG_DFL);
    raise(signal);
}

/// Handlers that the program installed itself, and signals that it ignores, stay as they are.
void handleSignals()
{
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        struct sigaction present {};
        if (sigaction(signal, nullptr, &present) != 0 || (present.sa_flags & SA_SIGINFO) != 0 ||
            present.sa_handler != SIG_DFL)
            continue;
        struct sigaction action {};
        action.sa_handler = removeUnfinishedAndEnd;
        sigemptyset(&action.sa_mask);
        sigaction(signal, &action, nullptr);
    }
    struct sigaction present {};
    if (sigaction(SIGXFSZ, nullptr, &present) == 0 && present.sa_handler == SIG_DFL)
        std::signal(SIGXFSZ, SIG_IGN);
}

/// What to do about it, where that depends on its being a file to write.
std::string reasonAndRemedy(int error)
{
    switch (error) {
    case EACCES:
    case EPERM:
        return localized("permission denied; choose a place where you may write");
    case EROFS:
        return localized("the file system is read-only; choose another place");
    case ENAMETOOLONG:
        return localized("the name is too long; choose a shorter one");
    case ELOOP:
        return localized("its symbolic links lead nowhere; choose another name");
    default:
        return systemReason(error);
    }
}

} // namespace

struct AtomicFile::State {
    std::string path;  ///< as given
    std::string name;  ///< of the target in `folder`
    FileHandle folder; ///< the target's folder; none when the target is written directly
    std::string folderPath;
    FileHandle file;
    FileHandle lock; ///< keeps the temporary file's lock behind the closing of `file`
    PipeLimits limits;
    std::optional<struct stat> replaced; ///< the file that is there now
    mode_t newPermissions = 0;           ///< for the file when none is
    bool ownerAlone = false;
    Unfinished* entry = nullptr; ///< the temporary file, while there is one
    std::string prepared;        ///< its name once it is complete and another one than the entry's
    std::vector<char> buffer;

    ~State()
    {
        file.close(); // first: some file systems keep what is removed while it is open
        lock.close();
        if (entry != nullptr) {
            unlinkat(folder.get(), entry->name.data(), 0);
            releaseEntry();
        }
        if (!prepared.empty())
            unlinkat(folder.get(), prepared.c_str(), 0);
    }

    void releaseEntry()
    {
        entry->active = false;
        entry->taken = false;
        entry = nullptr;
    }

    [[noreturn]] void fail(const std::string& reason) const
    {
        throw Error(localized("\"%s\" cannot be written: %s", path, reason));
    }

    /// For an `error` met while reaching or opening the target.
    [[noreturn]] void failOpening(int error) const
    {
        if (error == ENOENT)
            fail(
                localized("the folder \"%s\" does not exist; create it or choose another place", folderPath));
        if (error == ENOTDIR)
            fail(localized("\"%s\" is no folder; choose another place", folderPath));
        fail(reasonAndRemedy(error));
    }

    /// `target` is no plain file.
    void openDirectly(const WriteTarget& target)
    {
        try {
            file = openToWrite(target.folder.get(), target.name, openFlags(target), limits);
        } catch (const PipeTimeout& timeout) {
            fail(timeout.what());
        }
        if (!file.isOpen())
            fail(reasonAndRemedy(errno));
        if (!isFoundFile(file, target))
            fail(localized("it was replaced at this moment; try again"));
    }

    void openTemporary()
    {
        sweepTemporaryFiles(folder.get());
        if (!replaced)
            newPermissions = permissionsOfNewFile(folder.get());
        constexpr int mostTries = 100;
        for (int tries = 0; tries < mostTries && !file.isOpen(); ++tries) {
            const std::string temporary = temporaryName();
            entry = &takeEntry();
            entry->folder = folder.get();
            temporary.copy(entry->name.data(), entry->name.size() - 1);
            entry->name[temporary.size()] = '\0';
            entry->active = true; // before the file exists: a signal may come at any moment
            file = makeTemporaryFile(folder.get(), temporary);
            if (file.isOpen())
                return;
            const int error = errno;
            releaseEntry();
            if (error != EAGAIN)
                failOpening(error);
        }
        failOpening(EAGAIN);
    }

    /// The permissions, which so far were for this user alone; not for what is written directly.
    void openUp() const
    {
        if (!folder.isOpen())
            return;
        if (replaced) {
            // Only root can keep the owner; the permissions follow, because chown clears some.
            [[maybe_unused]] const bool groupKept =
                fchown(file.get(), replaced->st_uid, replaced->st_gid) == 0 ||
                fchown(file.get(), static_cast<uid_t>(-1), replaced->st_gid) == 0;
        }
        constexpr mode_t permissionBits = 07777;
        constexpr mode_t readAndWrite = S_IRUSR | S_IWUSR;
        const mode_t permissions = replaced ? replaced->st_mode & permissionBits : newPermissions;
        if (fchmod(file.get(), ownerAlone ? readAndWrite : permissions) != 0 && ownerAlone)
            fail(reasonAndRemedy(errno));
    }

    void writeOut(const char* bytes, std::size_t size) const
    {
        while (size > 0) {
            std::size_t written = 0;
            try {
                written = writeBounded(file, bytes, size, limits);
            } catch (const std::system_error& error) {
                fail(reasonAndRemedy(error.code().value()));
            } catch (const PipeTimeout& timeout) {
                fail(timeout.what());
            }
            bytes += written;
            size -= written;
        }
    }

    void flush()
    {
        writeOut(buffer.data(), buffer.size());
        buffer.clear();
    }

    void finishWriting()
    {
        flush();
        openUp();
        // A device or a fifo cannot be synchronised, and need not be.
        if (fsync(file.get()) != 0 && errno != EINVAL && errno != ENOTSUP && errno != EROFS)
            fail(reasonAndRemedy(errno));
        // The lock, which is the open file's, outlives the descriptor that says how writing ended.
        if (folder.isOpen())
            lock = FileHandle(fcntl(file.get(), F_DUPFD_CLOEXEC, 0));
        if (const int error = file.close(); error != 0)
            fail(reasonAndRemedy(error));
    }

    /// Makes the new name durable. A folder that may not be read cannot be synchronised; the
    /// file is complete all the same.
    void syncFolder() const
    {
        const FileHandle readable(openat(folder.get(), ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC));
        if (readable.isOpen())
            fsync(readable.get());
    }

    /// Publishes the temporary file under a name that must not exist. False when it does.
    bool publishNew()
    {
        if (linkat(folder.get(), entry->name.data(), folder.get(), name.c_str(), 0) == 0) {
            unlinkat(folder.get(), entry->name.data(), 0);
            return true;
        }
        if (errno == EEXIST)
            return false;
        // File systems without hard links.
        if (renameat2(folder.get(), entry->name.data(), folder.get(), name.c_str(), RENAME_NOREPLACE) == 0)
            return true;
        if (errno == EEXIST)
            return false;
        fail(reasonAndRemedy(errno));
    }
};

AtomicFile::AtomicFile(const std::string& path, const PipeLimits& limits) : state_(std::make_unique<State>())
{
    handleSignals();
    state_->path = path;
    state_->limits = limits;
    if (path.empty())
        state_->fail(localized("the file name is empty; name a file"));
    WriteTarget target = findWriteTarget(path);
    state_->folderPath = target.folderPath;
    state_->name = target.name;
    if (!target.problem.empty())
        state_->fail(target.problem);
    if (target.error != 0)
        state_->failOpening(target.error);
    if (target.name.empty() || (target.present && S_ISDIR(target.present->st_mode)))
        state_->fail(localized("that is a folder; name a file"));
    if (target.present && !S_ISREG(target.present->st_mode)) {
        state_->openDirectly(target);
        return;
    }
    if (target.present && faccessat(target.folder.get(), target.name.c_str(), W_OK, AT_EACCESS) != 0)
        state_->fail(reasonAndRemedy(errno));
    state_->folder = std::move(target.folder);
    state_->replaced = target.present;
    state_->openTemporary();
}

AtomicFile::~AtomicFile() = default;

void AtomicFile::write(std::string_view bytes)
{
    constexpr std::size_t mostBuffered = std::size_t{1} << 16U;
    if (!state_->file.isOpen())
        state_->fail(localized("it was committed already"));
    if (state_->buffer.size() + bytes.size() > mostBuffered)
        state_->flush();
    if (bytes.size() > mostBuffered)
        state_->writeOut(bytes.data(), bytes.size());
    else
        state_->buffer.insert(state_->buffer.end(), bytes.begin(), bytes.end());
}

int AtomicFile::descriptor()
{
    state_->flush();
    // Who writes to it knows of no file that does not block.
    const int flags = fcntl(state_->file.get(), F_GETFL);
    if (flags >= 0 && (flags & O_NONBLOCK) != 0)
        fcntl(state_->file.get(), F_SETFL, flags & ~O_NONBLOCK);
    return state_->file.get();
}

void AtomicFile::restrictToOwner() { state_->ownerAlone = true; }

void AtomicFile::denyWritingToOthers() { state_->newPermissions &= ~static_cast<mode_t>(S_IWGRP | S_IWOTH); }

std::optional<ino_t> AtomicFile::prepare(const std::string& name)
{
    if (!state_->folder.isOpen())
        return std::nullopt;
    struct stat status {};
    if (fstat(state_->file.get(), &status) != 0)
        state_->fail(reasonAndRemedy(errno));
    state_->finishWriting();
    if (renameat(state_->folder.get(), state_->entry->name.data(), state_->folder.get(), name.c_str()) != 0)
        state_->fail(reasonAndRemedy(errno));
    state_->prepared = name;
    state_->releaseEntry();
    state_->syncFolder();
    return status.st_ino;
}

void AtomicFile::commit()
{
    if (!state_->prepared.empty()) {
        if (renameat(state_->folder.get(), state_->prepared.c_str(), state_->folder.get(),
                     state_->name.c_str()) != 0)
            state_->fail(reasonAndRemedy(errno));
        state_->prepared.clear();
        state_->syncFolder();
        return;
    }
    state_->finishWriting();
    if (!state_->folder.isOpen())
        return;
    if (renameat(state_->folder.get(), state_->entry->name.data(), state_->folder.get(),
                 state_->name.c_str()) != 0)
        state_->fail(reasonAndRemedy(errno));
    state_->releaseEntry();
    state_->syncFolder();
}

bool AtomicFile::commitNew()
{
    if (!state_->folder.isOpen())
        return false;
    state_->finishWriting();
    if (!state_->publishNew())
        return false;
    state_->releaseEntry();
    state_->syncFolder();
    return true;
}

const std::string& AtomicFile::path() const { return state_->path; }

void removeUnfinishedFiles() noexcept
{
    const int error = errno;
    for (Unfinished* entry = unfinishedFiles; entry != nullptr; entry = entry->next)
        if (entry->active)
            unlinkat(entry->folder, entry->name.data(), 0);
    errno = error;
}

} // namespace quelm
