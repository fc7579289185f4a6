// Temporary files that take their target's place when they are complete.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/atomic_file.h"

#include "base/error.h"
#include "base/file_handle.h"
#include "base/system_reason.h"
#include "base/translation.h"

#include <fcntl.h>
#include <sys/random.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
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

std::string folderOf(const std::string& path)
{
    const std::size_t slash = path.rfind('/');
    if (slash == std::string::npos)
        return ".";
    return slash == 0 ? "/" : path.substr(0, slash);
}

/// The file that is to be replaced: where `path` leads when it is a symbolic link.
std::string followLinks(const std::string& path)
{
    std::string target = path;
    constexpr int mostLinks = 40;
    for (int links = 0; links < mostLinks; ++links) {
        std::array<char, PATH_MAX> buffer{};
        const ssize_t length = readlink(target.c_str(), buffer.data(), buffer.size());
        if (length < 0)
            return target;
        const std::string link(buffer.data(), static_cast<std::size_t>(length));
        target = link.empty() || link.front() == '/' ? link : folderOf(target) + "/" + link;
    }
    errno = ELOOP;
    return "";
}

std::string randomName()
{
    std::array<unsigned char, 8> bytes{};
    if (getrandom(bytes.data(), bytes.size(), 0) != static_cast<ssize_t>(bytes.size())) {
        static std::atomic<unsigned> counter{0};
        const unsigned long long mixed = (static_cast<unsigned long long>(getpid()) << 32U) + ++counter;
        std::memcpy(bytes.data(), &mixed, bytes.size());
    }
    std::string name = ".quelm-";
    for (const unsigned char byte : bytes) {
        constexpr const char* digits = "0123456789abcdef";
        name += digits[byte >> 4U];
        name += digits[byte & 15U];
    }
    return name + ".tmp";
}

} // namespace

struct AtomicFile::State {
    std::string path;  ///< as given
    std::string name;  ///< of the target in `folder`
    FileHandle folder; ///< the target's folder; none when the target is written directly
    std::string folderPath;
    FileHandle file;
    Unfinished* entry = nullptr; ///< the temporary file, while there is one
    std::vector<char> buffer;

    ~State()
    {
        file.close(); // first: some file systems keep what is removed while it is open
        if (entry != nullptr) {
            unlinkat(folder.get(), entry->name.data(), 0);
            releaseEntry();
        }
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

    void openDirectly()
    {
        file = FileHandle(open(path.c_str(), O_WRONLY | O_CLOEXEC | O_NOCTTY));
        if (!file.isOpen())
            fail(reasonAndRemedy(errno));
    }

    /// `present` describes the file that is to be replaced, or is null.
    void openTemporary(const struct stat* present)
    {
        folder = FileHandle(open(folderPath.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
        if (!folder.isOpen())
            failOpening(errno);
        constexpr mode_t readAndWrite = 0666;
        file = FileHandle(
            openat(folder.get(), nameTemporary(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, readAndWrite));
        if (!file.isOpen()) {
            const int error = errno;
            releaseEntry();
            failOpening(error);
        }
        if (present != nullptr) {
            // Only root can keep the owner; the permissions follow, because chown clears some.
            if (fchown(file.get(), present->st_uid, present->st_gid) != 0)
                (void)fchown(file.get(), static_cast<uid_t>(-1), present->st_gid);
            constexpr mode_t permissionBits = 07777;
            (void)fchmod(file.get(), present->st_mode & permissionBits);
        }
    }

    /// Names a new temporary file, which a signal removes from now on.
    const char* nameTemporary()
    {
        const std::string temporary = randomName();
        entry = &takeEntry();
        entry->folder = folder.get();
        temporary.copy(entry->name.data(), entry->name.size() - 1);
        entry->name[temporary.size()] = '\0';
        entry->active = true; // before the file exists: a signal may come at any moment
        return entry->name.data();
    }

    /// Goes on in a new file, which nobody but its owner can have opened, under the old descriptor.
    void moveToPrivateFile()
    {
        Unfinished* const before = entry;
        constexpr mode_t ownersAlone = 0600;
        const FileHandle moved(
            openat(folder.get(), nameTemporary(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, ownersAlone));
        int error = errno;
        if (moved.isOpen()) {
            error = copyTo(moved.get());
            // Past any umask; the owner, which only root can change, is that of a file that is replaced.
            if (error == 0 && (fchmod(moved.get(), ownersAlone) != 0 ||
                               dup3(moved.get(), file.get(), O_CLOEXEC) != file.get()))
                error = errno;
        }
        unlinkat(folder.get(), before->name.data(), 0);
        before->active = false;
        before->taken = false;
        if (error != 0 || !moved.isOpen())
            fail(reasonAndRemedy(error));
    }

    /// Gives another, empty file this one's owner and content, and its place to write at. Returns the error.
    int copyTo(int other) const
    {
        struct stat present {};
        if (fstat(file.get(), &present) == 0 && present.st_uid != geteuid())
            (void)fchown(other, present.st_uid, present.st_gid);
        std::array<char, 65536> block{};
        off_t at = 0;
        for (;;) {
            ssize_t size = pread(file.get(), block.data(), block.size(), at);
            if (size > 0)
                size = ::write(other, block.data(), static_cast<std::size_t>(size));
            if (size == 0)
                return 0;
            if (size < 0 && errno != EINTR)
                return errno;
            at += std::max<ssize_t>(size, 0);
        }
    }

    void writeOut(const char* bytes, std::size_t size) const
    {
        while (size > 0) {
            const ssize_t written = ::write(file.get(), bytes, size);
            if (written < 0) {
                if (errno == EINTR)
                    continue;
                fail(reasonAndRemedy(errno));
            }
            bytes += written;
            size -= static_cast<std::size_t>(written);
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
        // A device or a fifo cannot be synchronised, and need not be.
        if (fsync(file.get()) != 0 && errno != EINVAL && errno != ENOTSUP && errno != EROFS)
            fail(reasonAndRemedy(errno));
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

AtomicFile::AtomicFile(const std::string& path) : state_(std::make_unique<State>())
{
    handleSignals();
    state_->path = path;
    if (path.empty())
        state_->fail(localized("the file name is empty; name a file"));
    const std::string target = followLinks(path);
    if (target.empty())
        state_->fail(reasonAndRemedy(errno));
    state_->folderPath = folderOf(target);
    state_->name = target.substr(target.rfind('/') + 1);
    struct stat present {};
    const bool exists = stat(target.c_str(), &present) == 0;
    if ((exists && S_ISDIR(present.st_mode)) || state_->name.empty())
        state_->fail(localized("that is a folder; name a file"));
    if (exists && !S_ISREG(present.st_mode)) {
        state_->openDirectly();
        return;
    }
    if (!exists && errno != ENOENT)
        state_->failOpening(errno);
    if (exists && faccessat(AT_FDCWD, target.c_str(), W_OK, AT_EACCESS) != 0)
        state_->fail(reasonAndRemedy(errno));
    state_->openTemporary(exists ? &present : nullptr);
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
    return state_->file.get();
}

void AtomicFile::restrictToOwner()
{
    if (!state_->folder.isOpen())
        return;
    state_->flush();
    state_->moveToPrivateFile();
}

void AtomicFile::commit()
{
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
