// Files and the record database of the fake host's boundary.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "host/files.h"
#include "host/record_database.h"
#include "tests/support/fake_host.h"

using fake::fakeHost;
using fake::Journal;
using fake::Op;
using fake::quoted;
using fake::Record;

namespace {

void effect(std::string entry) { fakeHost().journal.add(Journal::Kind::effect, std::move(entry)); }
void read(std::string entry) { fakeHost().journal.add(Journal::Kind::read, std::move(entry)); }

std::string parentOf(const std::string& path) { return path.substr(0, path.find_last_of('/')); }

bool exists(const std::string& path)
{
    return fakeHost().disk.directories.contains(path) || fakeHost().disk.phonebooks.contains(path);
}

} // namespace

struct QuelmLegacyDatabase::Impl {
    std::string path;
    bool open = false;
    bool writable = false;
    std::vector<Record> records;

    void openAt(const std::string& newPath, bool mayWrite)
    {
        path = newPath;
        open = true;
        writable = mayWrite;
        records = fakeHost().disk.phonebooks[path];
    }
};

/// Hands out one record at a time, from storage of its own, so that a record kept too long shows.
struct QuelmLegacyDatabaseIterator::Impl {
    explicit Impl(QuelmLegacyDatabase::Impl* source) : database(source) {}

    QuelmLegacyDatabase::Impl* database;
    std::size_t next = 0;
    std::unique_ptr<Record> current;
    LegacyDBRecord handedOut{};

    LegacyDBRecord* handOut(std::size_t index)
    {
        if (index >= database->records.size()) {
            current.reset();
            return nullptr;
        }
        current = std::make_unique<Record>(database->records[index]);
        handedOut = {current->recordLength, current->keyLength, current->dataLength, current->key.data(),
                     current->data.data()};
        return &handedOut;
    }
};

bool FileObject::doesPathExist(char* path)
{
    read("exists " + fake::quoted(path) + (exists(path) ? " -> yes" : " -> no"));
    return exists(path);
}

bool FileObject::createDirectory(char* path, int mode)
{
    effect("createDirectory " + fake::quoted(path) + " " + std::to_string(mode));
    if (fakeHost().faults.hits(Op::createDirectory, path) || exists(path) ||
        !fakeHost().disk.directories.contains(parentOf(path)))
        return false;
    fakeHost().disk.directories.insert(path);
    return true;
}

QuelmLegacyDatabase::QuelmLegacyDatabase() : impl(new Impl) { effect("new database"); }

QuelmLegacyDatabase::~QuelmLegacyDatabase()
{
    effect("delete database");
    delete impl;
}

bool QuelmLegacyDatabase::openDatabase(char* path, char* mode)
{
    effect("openDatabase " + fake::quoted(path) + " " + fake::quoted(mode));
    if (fakeHost().faults.hits(Op::openDatabase, path) || !fakeHost().disk.phonebooks.contains(path))
        return false;
    impl->openAt(path, std::string_view(mode) == "r+");
    return true;
}

bool QuelmLegacyDatabase::createDatabase(char* path, int flags)
{
    effect("createDatabase " + fake::quoted(path) + " " + std::to_string(flags));
    if (fakeHost().faults.hits(Op::createDatabase, path) || exists(path) ||
        std::string_view(path).ends_with('/') || !fakeHost().disk.directories.contains(parentOf(path)))
        return false;
    impl->openAt(path, true);
    return true;
}

bool QuelmLegacyDatabase::reopenDatabase()
{
    effect("reopenDatabase");
    if (!impl->open || fakeHost().faults.hits(Op::reopenDatabase, impl->path) ||
        !fakeHost().disk.phonebooks.contains(impl->path))
        return false;
    impl->records = fakeHost().disk.phonebooks[impl->path];
    return true;
}

bool QuelmLegacyDatabase::closeDatabase()
{
    effect("closeDatabase");
    if (!impl->open || fakeHost().faults.hits(Op::closeDatabase, impl->path))
        return false;
    impl->open = false;
    impl->records.clear();
    return true;
}

bool QuelmLegacyDatabase::saveRecord(LegacyDBRecord* saved)
{
    Record copy{saved->key, saved->data, saved->recordLength, saved->keyLength, saved->dataLength};
    effect("saveRecord " + fake::quoted(copy.key) + " " + fake::quoted(copy.data));
    fakeHost().savedRecords.push_back(copy);
    if (!impl->open || !impl->writable || fakeHost().faults.hits(Op::saveRecord, copy.key))
        return false;
    for (Record& record : impl->records) {
        if (record.key == copy.key) {
            record = std::move(copy);
            return true;
        }
    }
    impl->records.push_back(std::move(copy));
    return true;
}

bool QuelmLegacyDatabase::serializeDatabase()
{
    effect("serializeDatabase");
    if (!impl->open || !impl->writable || fakeHost().faults.hits(Op::serializeDatabase, impl->path))
        return false;
    fakeHost().disk.phonebooks[impl->path] = impl->records;
    return true;
}

bool QuelmLegacyDatabase::getNumberOfRecords(int& count)
{
    read("numberOfRecords");
    if (fakeHost().faults.hits(Op::countRecords, impl->path))
        return false;
    count = static_cast<int>(impl->records.size());
    return true;
}

QuelmLegacyDatabaseIterator::QuelmLegacyDatabaseIterator(QuelmLegacyDatabase* database)
    : impl(new Impl(database->impl))
{
    effect("new iterator");
}

QuelmLegacyDatabaseIterator::~QuelmLegacyDatabaseIterator()
{
    effect("delete iterator");
    delete impl;
}

LegacyDBRecord* QuelmLegacyDatabaseIterator::getNextRecord(bool first)
{
    read(first ? "firstRecord" : "nextRecord");
    if (first)
        impl->next = 0;
    return impl->handOut(impl->next++);
}

LegacyDBRecord* QuelmLegacyDatabaseIterator::getRecordN(int n)
{
    read("recordNumber " + std::to_string(n));
    return n < 1 ? nullptr : impl->handOut(static_cast<std::size_t>(n - 1));
}

LegacyDBRecord* QuelmLegacyDatabaseIterator::getRecordByKey(char* key)
{
    read("recordOf " + fake::quoted(key));
    const auto& records = impl->database->records;
    for (std::size_t i = 0; i < records.size(); ++i)
        if (records[i].key == key)
            return impl->handOut(i);
    return nullptr;
}
