// Keeps a phonebook's records in memory and its changes in one SQLite transaction.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/store/record_store.h"

#include "base/atomic_file.h"
#include "base/file_handle.h"
#include "base/sqlite/sqlite.h"
#include "base/system_reason.h"
#include "base/translation.h"
#include "driver/store/book_layer.h"
#include "driver/store/phonebook_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <cstdint>
#include <utility>

namespace quelm {

using phonebook_file::Action;
using phonebook_file::fail;
using phonebook_file::wording;

namespace {

std::chrono::milliseconds patience{5000};

} // namespace

struct RecordStore::Connection {
    book_layer::Watch watch; ///< as long as the database is open
    sqlite::Database database;
    struct stat identity {};
    std::int64_t version = 0; ///< of the content in memory; changes when others commit
    std::optional<sqlite::Statement> upsert;

    Connection(const phonebook_file::Looked& looked, int flags)
        : watch(looked.path, looked.status), database(sqlite::open(looked.path, flags, book_layer::name())),
          identity(looked.status)
    {
        sqlite3_busy_timeout(database.get(), static_cast<int>(patience.count()));
        sqlite3_db_config(database.get(), SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
        sqlite3_db_config(database.get(), SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
        // Durable through a power cut, the end of the transaction included. (A connection that
        // only reads must not look at the file here: it may have to be repaired first.)
        if ((flags & SQLITE_OPEN_READWRITE) != 0)
            sqlite::run(database, "PRAGMA synchronous=EXTRA");
    }

    /// Gives up the transaction, if SQLite has not done so itself.
    void rollBack() const
    {
        if (sqlite3_get_autocommit(database.get()) == 0)
            sqlite3_exec(database.get(), "ROLLBACK", nullptr, nullptr, nullptr);
    }
};

struct RecordStore::Change {
    enum class Kind { save, remove, clear };
    Kind kind;
    Record record; ///< for `remove` the key alone
};

RecordStore::RecordStore(const std::string& path, Access wanted) : file_(path), access_(wanted)
{
    // A file size limit is to be reported like a full disk, not to end the program.
    struct sigaction present {};
    if (sigaction(SIGXFSZ, nullptr, &present) == 0 && present.sa_handler == SIG_DFL)
        std::signal(SIGXFSZ, SIG_IGN);
    reconnect();
}

RecordStore::~RecordStore() = default;

void RecordStore::create(const std::string& path, Readers readers)
{
    if (phonebook_file::isTaken(path)) {
        // What is wrong with the file helps more than that it is there.
        const RecordStore present(path, Access::readWrite);
        fail(path, Action::create, localized("it exists already; open it or choose another name"));
    }
    if (!createUnlessThere(path, readers))
        fail(path, Action::create, localized("a file of that name has just appeared; try again"));
}

bool RecordStore::createUnlessThere(const std::string& path, Readers readers,
                                    const std::deque<Record>& records)
{
    return !phonebook_file::isTaken(path) && wording(path, Action::create, [&] {
        AtomicFile created(path);
        if (readers == Readers::owner)
            created.restrictToOwner();
        else
            created.denyWritingToOthers();
        created.write(phonebook_file::bytesOf(records));
        return created.commitNew();
    });
}

void RecordStore::makePrivate()
{
    constexpr mode_t forOthers = S_IRWXG | S_IRWXO;
    constexpr mode_t permissionBits = 07777;
    // A descriptor that stands for the name alone: closing any other one would drop the locks of this
    // process.
    const FileHandle file(open(file_.c_str(), O_PATH | O_NOFOLLOW | O_CLOEXEC));
    struct stat present {};
    if (!file.isOpen() || fstat(file.get(), &present) != 0 || !isSameFile() ||
        present.st_ino != connection_->identity.st_ino || (present.st_mode & forOthers) == 0)
        return;
    const std::string name = "/proc/self/fd/" + std::to_string(file.get());
    if (chmod(name.c_str(), present.st_mode & permissionBits & ~forOthers) != 0)
        fail(file_, Action::open,
             localized("others can read it and it cannot be closed to them: %s", systemReason(errno)));
}

void RecordStore::reconnect()
{
    connection_.reset();
    inTransaction_ = false;
    pending_.clear();
    index_.clear();
    list_.clear();
    ++readings_;
    const bool writes = access_ == Access::readWrite;
    wording(file_, Action::open, [&] {
        using phonebook_file::Whose;
        const auto looked =
            phonebook_file::requirePhonebook(file_, access_ == Access::read ? Whose::anybodys : Whose::own);
        std::unique_ptr<Connection> made;
        const auto connect = [&](int flags) {
            made.reset();
            made = std::make_unique<Connection>(looked, flags);
        };
        connect(writes ? SQLITE_OPEN_READWRITE : SQLITE_OPEN_READONLY);
        if (writes && sqlite3_db_readonly(made->database.get(), "main") != 0) {
            // SQLite is content with reading when it could not open the file the first time.
            if (faccessat(AT_FDCWD, looked.path.c_str(), W_OK, AT_EACCESS) == 0)
                throw sqlite::Failure{SQLITE_CANTOPEN, ESTALE, ""};
            throw sqlite::Failure{SQLITE_READONLY, 0, ""};
        }
        try {
            if (!phonebook_file::holdsPhonebook(made->database))
                throw sqlite::Failure{SQLITE_CORRUPT, 0, ""};
        } catch (const sqlite::Failure& failure) {
            // A writer died in the middle of saving. Undoing that takes a writable connection.
            if (writes || failure.code != SQLITE_READONLY_ROLLBACK)
                throw;
            if (looked.status.st_uid != geteuid())
                fail(file_, Action::open,
                     localized("a program ended while it was saving to it; have its owner open it once"));
            connect(SQLITE_OPEN_READWRITE);
            if (!phonebook_file::holdsPhonebook(made->database))
                throw sqlite::Failure{SQLITE_CORRUPT, 0, ""};
            connect(SQLITE_OPEN_READONLY);
        }
        load(*made);
        connection_ = std::move(made);
    });
}

void RecordStore::load(Connection& from)
{
    ++readings_;
    pending_.clear();
    index_.clear();
    list_.clear();
    sqlite::run(from.database, "BEGIN");
    sqlite::Statement version(from.database, "PRAGMA data_version");
    version.step();
    from.version = version.number(0);
    version.reset();
    sqlite::Statement records(from.database, "SELECT key, data FROM record ORDER BY position");
    while (records.step())
        list_.push_back({records.bytes(0), records.bytes(1)});
    records.reset();
    sqlite::run(from.database, "COMMIT");
    indexRecords();
}

void RecordStore::indexRecords()
{
    index_.clear();
    index_.reserve(list_.size());
    for (std::size_t at = 0; at < list_.size(); ++at)
        index_.emplace(list_[at].key, at);
}

void RecordStore::refresh()
{
    if (!isSameFile()) {
        reconnect();
        return;
    }
    const bool dropped = inTransaction_ || !pending_.empty();
    connection_->rollBack();
    inTransaction_ = false;
    try {
        sqlite::Statement version(connection_->database, "PRAGMA data_version");
        if (version.step() && version.number(0) == connection_->version && !dropped)
            return;
        version.reset();
        load(*connection_);
    } catch (const sqlite::Failure&) {
        // Another program may have died in the middle of saving: opening the file undoes that.
        reconnect();
    }
}

std::optional<std::size_t> RecordStore::find(std::string_view key) const
{
    const auto found = index_.find(key);
    return found == index_.end() ? std::nullopt : std::optional(found->second);
}

bool RecordStore::isSameFile() const
{
    struct stat present {};
    return connection_ && stat(file_.c_str(), &present) == 0 &&
           present.st_dev == connection_->identity.st_dev && present.st_ino == connection_->identity.st_ino;
}

/// SQLite would not open it, and could not say which file it is.
void RecordStore::requireNoForeignJournal() const
{
    const auto journal = book_layer::foreignJournal(sqlite3_db_filename(connection_->database.get(), "main"),
                                                    connection_->identity.st_uid);
    if (!journal.empty())
        fail(file_, Action::save,
             localized("somebody else has put %s beside it; have that removed and try again", journal));
}

void RecordStore::beginChange()
{
    if (access_ != Access::readWrite)
        fail(file_, Action::save, localized("it was opened for reading only"));
    if (!isSameFile())
        fail(file_, Action::save, localized("the file was removed or replaced; open it again"));
    if (inTransaction_)
        return;
    requireNoForeignJournal();
    sqlite::run(connection_->database, "BEGIN IMMEDIATE");
    inTransaction_ = true;
    for (const Change& change : pending_)
        apply(change);
}

/// Makes the change in the open transaction. True when it touched a record.
bool RecordStore::apply(const Change& change)
{
    const sqlite::Database& database = connection_->database;
    switch (change.kind) {
    case Change::Kind::save: {
        if (!connection_->upsert)
            connection_->upsert.emplace(database, "INSERT INTO record(key, data) VALUES(?1, ?2) "
                                                  "ON CONFLICT(key) DO UPDATE SET data = excluded.data");
        sqlite::Statement& upsert = *connection_->upsert;
        upsert.reset();
        upsert.bind(1, change.record.key);
        upsert.bind(2, change.record.data);
        upsert.step();
        upsert.reset();
        return true;
    }
    case Change::Kind::remove: {
        sqlite::Statement removal(database, "DELETE FROM record WHERE key = ?1");
        removal.bind(1, change.record.key);
        removal.step();
        return sqlite3_changes(database.get()) > 0;
    }
    case Change::Kind::clear:
        sqlite::run(database, "DELETE FROM record");
        return true;
    }
    return false;
}

bool RecordStore::make(Change change)
{
    return wording(file_, Action::save, [&] {
        try {
            beginChange();
            const bool touched = apply(change);
            pending_.push_back(std::move(change));
            return touched;
        } catch (...) {
            giveUpTransaction();
            throw;
        }
    });
}

/// Lets others save again. What is pending goes into the next transaction.
void RecordStore::giveUpTransaction()
{
    if (connection_) {
        if (connection_->upsert)
            connection_->upsert->reset();
        connection_->rollBack();
    }
    inTransaction_ = false;
}

void RecordStore::save(Record record)
{
    if (record.key.empty())
        fail(file_, Action::save, localized("a record has no key; give it a name"));
    make({Change::Kind::save, record});
    if (const auto at = find(record.key)) {
        list_[*at].data = std::move(record.data);
        return;
    }
    list_.push_back(std::move(record));
    index_.emplace(list_.back().key, list_.size() - 1);
}

bool RecordStore::remove(const std::string& key)
{
    const bool removed = make({Change::Kind::remove, {key, ""}});
    if (const auto at = find(key)) {
        index_.clear();
        list_.erase(list_.begin() + static_cast<std::ptrdiff_t>(*at));
        indexRecords();
    }
    return removed;
}

void RecordStore::clear()
{
    make({Change::Kind::clear, {}});
    index_.clear();
    list_.clear();
}

void RecordStore::commit()
{
    if (pending_.empty())
        return;
    wording(file_, Action::save, [&] {
        try {
            beginChange();
            sqlite::run(connection_->database, "COMMIT");
        } catch (...) {
            giveUpTransaction();
            throw;
        }
    });
    inTransaction_ = false;
    pending_.clear();
}

void setDatabasePatience(std::chrono::milliseconds longest) { patience = longest; }

} // namespace quelm
