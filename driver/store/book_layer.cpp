// Puts itself between SQLite and its own file layer where a phonebook's files are opened and looked for.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/store/book_layer.h"

#include <fcntl.h>
#include <sqlite3.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <map>
#include <mutex>
#include <optional>
#include <string_view>
#include <utility>

namespace quelm::book_layer {

namespace {

constexpr const char* layerName = "quelm-phonebook";

/// What SQLite keeps beside a file, by the endings of its names.
constexpr std::array<std::string_view, 3> sideEndings{"-journal", "-wal", "-shm"};

/// A phonebook as it was looked at.
struct Book {
    dev_t device;
    ino_t file;
    uid_t owner;
};

/// All that are watched, by path; of one path the one that was looked at last is behind the others. SQLite
/// may be called from several threads.
struct Watched {
    std::mutex mutex;
    unsigned long count = 0;
    std::map<std::string, std::map<unsigned long, Book>, std::less<>> books;
};

Watched& watched()
{
    static auto* const all = new Watched; // phonebooks may be closed as late as the process ends
    return *all;
}

/// What may be opened under a name.
struct Rule {
    bool isBook = false;
    Book book{};
};

/// The path of the phonebook that a journal belongs to; nothing for another file.
std::optional<std::string_view> bookOfSideFile(std::string_view path)
{
    for (const auto ending : sideEndings)
        if (path.size() > ending.size() && path.ends_with(ending))
            return path.substr(0, path.size() - ending.size());
    return std::nullopt;
}

/// Nothing for files that are none of a phonebook.
std::optional<Rule> ruleFor(std::string_view path)
{
    auto& all = watched();
    const std::lock_guard lock(all.mutex);
    if (const auto found = all.books.find(path); found != all.books.end())
        return Rule{true, found->second.rbegin()->second};
    if (const auto book = bookOfSideFile(path))
        if (const auto found = all.books.find(*book); found != all.books.end())
            return Rule{false, found->second.rbegin()->second};
    return std::nullopt;
}

/// A second name of a file would let somebody choose which of the owner's files is taken for a journal.
bool isTrusted(const struct stat& journal, uid_t owner)
{
    return S_ISREG(journal.st_mode) && journal.st_nlink <= 1 &&
           (journal.st_uid == owner || journal.st_uid == geteuid() || journal.st_uid == 0);
}

bool isAllowed(const Rule& rule, const struct stat& opened)
{
    if (!rule.isBook)
        return isTrusted(opened, rule.book.owner);
    return S_ISREG(opened.st_mode) && opened.st_dev == rule.book.device && opened.st_ino == rule.book.file;
}

using OpenCall = int (*)(const char*, int, int);
OpenCall systemOpen = nullptr;

/// What SQLite opens files with. What was opened is looked at, not what a name stood for a moment ago.
int openCarefully(const char* path, int flags, int mode)
{
    const auto rule = ruleFor(path);
    if (!rule)
        return systemOpen(path, flags, mode);
    const int descriptor = systemOpen(path, flags | O_NONBLOCK | O_NOCTTY | O_NOFOLLOW, mode);
    if (descriptor < 0) {
        if (rule->isBook && errno == ELOOP) // by a link
            errno = ESTALE;
        return descriptor;
    }
    struct stat opened {};
    if (fstat(descriptor, &opened) == 0 && isAllowed(*rule, opened))
        return descriptor;
    ::close(descriptor);
    errno = rule->isBook ? ESTALE : EPERM; // a phonebook was replaced since it was looked at
    return -1;
}

sqlite3_vfs* systemLayer() { return sqlite3_vfs_find(nullptr); }

int openFile(sqlite3_vfs* /*layer*/, const char* path, sqlite3_file* file, int flags, int* given)
{
    return systemLayer()->xOpen(systemLayer(), path, file, flags, given);
}

int deleteFile(sqlite3_vfs* /*layer*/, const char* path, int sync)
{
    return systemLayer()->xDelete(systemLayer(), path, sync);
}

/// A stranger's journal is not there. (Whether it can be opened is asked for folders, too.)
int lookForFile(sqlite3_vfs* /*layer*/, const char* path, int flags, int* answer)
{
    const auto rule = ruleFor(path);
    struct stat status {};
    if (rule && !rule->isBook && lstat(path, &status) == 0 && !isTrusted(status, rule->book.owner)) {
        *answer = 0;
        return SQLITE_OK;
    }
    return systemLayer()->xAccess(systemLayer(), path, flags, answer);
}

/// The path as it was looked at: looking for links again could lead elsewhere.
int takePath(sqlite3_vfs* /*layer*/, const char* path, int size, char* full)
{
    const std::size_t length = std::strlen(path);
    if (length >= static_cast<std::size_t>(size))
        return SQLITE_CANTOPEN;
    std::memcpy(full, path, length + 1);
    return SQLITE_OK;
}

const char* registerLayer()
{
    static sqlite3_vfs layer;
    sqlite3_vfs* below = systemLayer();
    layer = *below;
    layer.pNext = nullptr;
    layer.zName = layerName;
    layer.xOpen = openFile;
    layer.xDelete = deleteFile;
    layer.xAccess = lookForFile;
    layer.xFullPathname = takePath;
    sqlite3_vfs_register(&layer, 0);
    systemOpen = reinterpret_cast<OpenCall>(below->xGetSystemCall(below, "open"));
    below->xSetSystemCall(below, "open", reinterpret_cast<sqlite3_syscall_ptr>(openCarefully));
    return layerName;
}

} // namespace

const char* name()
{
    static const char* const registered = registerLayer();
    return registered;
}

Watch::Watch(std::string path, const struct stat& looked) : path_(std::move(path))
{
    auto& all = watched();
    const std::lock_guard lock(all.mutex);
    number_ = ++all.count;
    all.books[path_].emplace(number_, Book{looked.st_dev, looked.st_ino, looked.st_uid});
}

Watch::~Watch()
{
    auto& all = watched();
    const std::lock_guard lock(all.mutex);
    const auto found = all.books.find(path_);
    found->second.erase(number_);
    if (found->second.empty())
        all.books.erase(found);
}

std::string foreignJournal(const std::string& path, uid_t owner)
{
    for (const auto ending : sideEndings) {
        std::string journal = path + std::string(ending);
        struct stat status {};
        if (lstat(journal.c_str(), &status) == 0 && !isTrusted(status, owner))
            return journal;
    }
    return "";
}

} // namespace quelm::book_layer
