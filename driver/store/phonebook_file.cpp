// Looks at what lies under a phonebook's name, makes new phonebooks and words what can go wrong.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/store/phonebook_file.h"

#include "base/error.h"
#include "base/file_handle.h"
#include "base/system_reason.h"
#include "base/translation.h"
#include "driver/store/book_layer.h"

#include <fcntl.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string_view>

namespace quelm::phonebook_file {

namespace {

// What makes a SQLite file a phonebook: its application number, its version and its one table.
constexpr std::uint32_t phonebookApplication = 0x51584442; // "QXDB"
constexpr std::uint32_t phonebookVersion = 1;
constexpr const char* markPhonebook = "PRAGMA application_id=0x51584442; PRAGMA user_version=1";
constexpr const char* tableDefinition =
    "CREATE TABLE record(position INTEGER PRIMARY KEY, key BLOB NOT NULL UNIQUE, data BLOB NOT NULL)";

std::string replacedMeanwhile() { return localized("it was replaced while it was being opened; try again"); }

/// What to do about it, where that depends on its being a phonebook.
std::string reasonAndRemedy(int error)
{
    switch (error) {
    case ENOENT:
        return localized("there is no such file; check the name");
    case EACCES:
    case EPERM:
        return localized("permission denied; ask its owner or choose another file");
    case EFBIG:
    case ENOSPC:
    case EDQUOT:
        return systemReason(error);
    default:
        return localized("%s; check the disk or choose another file", systemReason(error));
    }
}

/// The first bytes of the file, read through SQLite's file layer: closing a file of our own
/// would drop the locks that other connections of this process hold on it.
std::string fileHead(const std::string& path, std::size_t size)
{
    struct FileCloser {
        void operator()(sqlite3_file* file) const
        {
            if (file->pMethods != nullptr)
                file->pMethods->xClose(file);
            std::free(file);
        }
    };
    struct NameCloser {
        // SQLite before 3.41 takes it without const.
        void operator()(const char* name) const { sqlite3_free_filename(const_cast<char*>(name)); }
    };
    sqlite3_vfs* layer = sqlite3_vfs_find(book_layer::name());
    const std::unique_ptr<const char, NameCloser> name(
        sqlite3_create_filename(path.c_str(), "", "", 0, nullptr));
    const std::unique_ptr<sqlite3_file, FileCloser> file(
        static_cast<sqlite3_file*>(std::calloc(1, static_cast<std::size_t>(layer->szOsFile))));
    int code = SQLITE_NOMEM;
    if (name && file)
        code =
            layer->xOpen(layer, name.get(), file.get(), SQLITE_OPEN_READONLY | SQLITE_OPEN_MAIN_DB, nullptr);
    if (code != SQLITE_OK)
        throw sqlite::Failure{code, errno, sqlite3_errstr(code)};
    std::string head(size, '\0');
    code = file->pMethods->xRead(file.get(), head.data(), static_cast<int>(size), 0);
    if (code != SQLITE_OK && code != SQLITE_IOERR_SHORT_READ)
        throw sqlite::Failure{code, 0, sqlite3_errstr(code)};
    return head;
}

std::uint32_t bigEndian(std::string_view bytes, std::size_t at)
{
    std::uint32_t number = 0;
    for (const char byte : bytes.substr(at, 4))
        number = number << 8U | static_cast<unsigned char>(byte);
    return number;
}

/// False when the end of the file's last page is missing, which SQLite would read as zeros.
bool isWhole(const sqlite::Database& database)
{
    // Within one transaction, for nobody can then write to the file.
    sqlite::run(database, "BEGIN");
    sqlite::Statement size(database,
                           "SELECT page_count * page_size FROM pragma_page_count, pragma_page_size");
    size.step();
    // Of the file that is open, whatever lies under its name by now.
    sqlite3_file* file = nullptr;
    sqlite3_int64 bytes = 0;
    const bool whole =
        sqlite3_file_control(database.get(), "main", SQLITE_FCNTL_FILE_POINTER, &file) == SQLITE_OK &&
        file->pMethods->xFileSize(file, &bytes) == SQLITE_OK && size.number(0) <= bytes;
    size.reset();
    sqlite::run(database, "COMMIT");
    return whole;
}

/// What lies under a name and is no plain file, and what to do about it.
std::string noPlainFile(mode_t mode)
{
    if (S_ISLNK(mode))
        return localized("it is a link; put the file itself in its place or choose another file");
    if (S_ISDIR(mode))
        return localized("it is a folder; choose a file in it or another file");
    if (S_ISFIFO(mode))
        return localized("it is a pipe and no file; move it away or choose another file");
    return localized("it is a device or socket and no file; choose another file");
}

/// The login name, or the number where there is none.
std::string nameOf(uid_t user)
{
    const passwd* entry = ::getpwuid(user);
    return entry != nullptr ? entry->pw_name : std::to_string(user);
}

/// The path without links.
std::string absolutePath(const std::string& path)
{
    struct Freer {
        void operator()(char* text) const { std::free(text); }
    };
    const std::unique_ptr<char, Freer> absolute(realpath(path.c_str(), nullptr));
    if (!absolute)
        fail(path, Action::open, reasonAndRemedy(errno));
    return absolute.get();
}

/// What lies under the name, a link itself; nothing is opened, and so nobody waited for.
struct stat statusOf(const std::string& shown, const std::string& path)
{
    struct stat status {};
    if (lstat(path.c_str(), &status) != 0)
        fail(shown, Action::open, reasonAndRemedy(errno));
    return status;
}

const char* failureOf(Action action)
{
    switch (action) {
    case Action::open:
        return forTranslation("the phonebook \"%s\" cannot be opened: %s");
    case Action::save:
        return forTranslation("the phonebook \"%s\" cannot be saved: %s");
    case Action::create:
        break;
    }
    return forTranslation("the phonebook \"%s\" cannot be created: %s");
}

} // namespace

void fail(const std::string& path, Action action, const std::string& reason)
{
    throw Error(localized(failureOf(action), path, reason));
}

std::string reason(const sqlite::Failure& failure)
{
    switch (failure.primaryCode()) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        return localized("another program is saving to it; try again in a moment");
    case SQLITE_FULL:
        return reasonAndRemedy(ENOSPC);
    case SQLITE_READONLY:
        if (failure.code == SQLITE_READONLY_DIRECTORY)
            return localized(
                "its folder may not be written; change the folder's permissions or choose another file");
        return localized("it may not be written; change its permissions or choose another file");
    case SQLITE_CANTOPEN:
        if (failure.systemError == ESTALE)
            return replacedMeanwhile();
        return localized("the file or its folder may not be used; check their permissions");
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB:
        return localized("it is damaged; restore it from a copy or choose another file");
    case SQLITE_TOOBIG:
        return localized("a record is too large; shorten it");
    case SQLITE_IOERR:
        // Whatever the system said is gone after a commit was undone.
        if (failure.code == SQLITE_IOERR_WRITE && failure.systemError == 0)
            return localized(
                "its file could not be extended; make room on the disk or raise the size limit and try "
                "again");
        return failure.systemError != 0 ? reasonAndRemedy(failure.systemError)
                                        : localized("the disk answers with errors; check it");
    default:
        return failure.text;
    }
}

bool isTaken(const std::string& path)
{
    struct stat status {};
    return lstat(path.c_str(), &status) == 0;
}

Looked requirePhonebook(const std::string& path, Whose whose)
{
    const struct stat named = statusOf(path, path);
    if (whose == Whose::own && S_ISLNK(named.st_mode))
        fail(path, Action::open, noPlainFile(named.st_mode));
    Looked looked;
    looked.path = absolutePath(path);
    looked.status = statusOf(path, looked.path);
    if (!S_ISREG(looked.status.st_mode))
        fail(path, Action::open, noPlainFile(looked.status.st_mode));
    if (whose == Whose::own) {
        // A link that was put there since would lead to whatever its maker wants.
        if (looked.status.st_dev != named.st_dev || looked.status.st_ino != named.st_ino)
            fail(path, Action::open, replacedMeanwhile());
        if (looked.status.st_uid != geteuid())
            fail(path, Action::open,
                 // Translators: %s is a login name.
                 localized(
                     "it belongs to %s, who alone may change it; read it as a shared phonebook or choose "
                     "another file",
                     nameOf(looked.status.st_uid)));
    }
    if (looked.status.st_size == 0)
        fail(path, Action::open,
             localized("the file is empty and no phonebook; move it away or choose another file"));
    constexpr std::size_t headSize = 100;
    constexpr std::size_t versionOffset = 60;
    constexpr std::size_t applicationOffset = 68;
    constexpr std::string_view magic("SQLite format 3\0", 16);
    const book_layer::Watch watch(looked.path, looked.status);
    const std::string head = fileHead(looked.path, headSize);
    if (head.compare(0, magic.size(), magic) != 0 ||
        bigEndian(head, applicationOffset) != phonebookApplication)
        fail(path, Action::open, localized("the file is no phonebook; move it away or choose another file"));
    if (bigEndian(head, versionOffset) > phonebookVersion)
        fail(path, Action::open,
             localized("it was written by a newer version of this program; update the program"));
    return looked;
}

bool holdsPhonebook(const sqlite::Database& database)
{
    sqlite::Statement schema(database, "SELECT sql FROM sqlite_schema WHERE name NOT GLOB 'sqlite_*'");
    if (!schema.step() || schema.bytes(0) != tableDefinition || schema.step())
        return false;
    sqlite::Statement check(database, "PRAGMA quick_check(1)");
    return check.step() && check.bytes(0) == "ok" && isWhole(database);
}

std::string bytesOf(const std::deque<Record>& records)
{
    const sqlite::Database memory =
        sqlite::open(":memory:", SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_MEMORY);
    sqlite::run(memory, markPhonebook);
    sqlite::run(memory, tableDefinition);
    for (const Record& record : records) {
        sqlite::Statement insertion(memory, "INSERT INTO record(key, data) VALUES(?1, ?2)");
        insertion.bind(1, record.key);
        insertion.bind(2, record.data);
        insertion.step();
    }
    struct Freer {
        void operator()(unsigned char* bytes) const { sqlite3_free(bytes); }
    };
    sqlite3_int64 size = 0;
    const std::unique_ptr<unsigned char, Freer> image(sqlite3_serialize(memory.get(), "main", &size, 0));
    if (!image)
        throw sqlite::Failure{SQLITE_NOMEM, 0, sqlite3_errstr(SQLITE_NOMEM)};
    return {image.get(), image.get() + size};
}

} // namespace quelm::phonebook_file
