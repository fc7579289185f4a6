// What host/record_database.h declares, on top of phonebook files; nothing throws across it.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "host/record_database.h"

#include "base/error.h"
#include "base/translation.h"
#include "driver/boundary/host_state.h"
#include "driver/store/record_store.h"
#include "host/files.h"

#include <cstring>
#include <exception>
#include <memory>
#include <optional>
#include <utility>

namespace quelm {

namespace {

/// Keeps why an operation failed with the driver that lives; an exception that says nothing leaves no reason.
void keepReason(const char* reason) noexcept
{
    try {
        if (auto* state = HostState::current())
            state->failures.databaseFailed(reason);
    } catch (...) { // no memory for the reason
    }
}

/// Runs an operation of the boundary.
template <typename Operation>
bool guarded(Operation operation) noexcept
{
    try {
        return operation();
    } catch (const std::exception& error) {
        keepReason(error.what());
    } catch (...) {
        keepReason("");
    }
    return false;
}

[[noreturn]] void failWithoutFile()
{
    throw Error(localized("no phonebook is open: choose a file and open it first"));
}

} // namespace

} // namespace quelm

/// Shared with the iterators, which so find out that the file was closed.
struct QuelmLegacyDatabase::Impl {
    struct Slot {
        std::unique_ptr<quelm::RecordStore> store;
    };
    std::shared_ptr<Slot> slot = std::make_shared<Slot>();
    std::string missing; ///< what could not be opened last, because there was no such file

    quelm::RecordStore& store() const
    {
        if (!slot->store)
            quelm::failWithoutFile();
        return *slot->store;
    }
};

QuelmLegacyDatabase::QuelmLegacyDatabase() : impl(new Impl) {}

QuelmLegacyDatabase::~QuelmLegacyDatabase()
{
    closeDatabase(); // iterators may hold the slot longer
    delete impl;
}

bool QuelmLegacyDatabase::openDatabase(char* path, char* mode)
{
    return quelm::guarded([&] {
        impl->slot->store.reset();
        const bool reads = mode != nullptr && std::strcmp(mode, "r") == 0;
        const bool writes = mode != nullptr && std::strcmp(mode, "r+") == 0;
        if (path == nullptr || (!reads && !writes))
            throw quelm::Error(
                quelm::localized("a phonebook is opened by its file name and with the mode \"r\" or \"r+\""));
        // Remembered for `createDatabase`, which is asked next.
        impl->missing = FileObject::doesPathExist(path) ? "" : path;
        using Access = quelm::RecordStore::Access;
        impl->slot->store =
            std::make_unique<quelm::RecordStore>(path, reads ? Access::read : Access::readWrite);
        return true;
    });
}

bool QuelmLegacyDatabase::createDatabase(char* path, int flags)
{
    return quelm::guarded([&] {
        impl->slot->store.reset();
        if (path == nullptr)
            throw quelm::Error(quelm::localized("a phonebook is created under a file name; name a file"));
        using Store = quelm::RecordStore;
        constexpr int neverOverwrite = 2;
        const bool empties = flags != neverOverwrite && FileObject::doesPathExist(path);
        if (!empties) {
            try {
                Store::create(path);
            } catch (const quelm::Error&) {
                // Two drivers that miss the same phonebook both make it: the slower one takes the faster
                // one's.
                if (impl->missing != path || !FileObject::doesPathExist(path))
                    throw;
            }
        }
        auto store = std::make_unique<Store>(path, Store::Access::readWrite);
        if (empties) {
            store->clear();
            store->commit();
        }
        impl->slot->store = std::move(store);
        return true;
    });
}

bool QuelmLegacyDatabase::reopenDatabase()
{
    return quelm::guarded([&] {
        impl->store().refresh();
        return true;
    });
}

bool QuelmLegacyDatabase::closeDatabase()
{
    const bool open = impl->slot->store != nullptr;
    impl->slot->store.reset();
    return open;
}

bool QuelmLegacyDatabase::saveRecord(LegacyDBRecord* record)
{
    return quelm::guarded([&] {
        if (record == nullptr || record->key == nullptr || record->data == nullptr)
            throw quelm::Error(
                quelm::localized("a phonebook takes records with a key and a text; nothing was saved"));
        impl->store().save({record->key, record->data});
        return true;
    });
}

bool QuelmLegacyDatabase::serializeDatabase()
{
    return quelm::guarded([&] {
        impl->store().commit();
        return true;
    });
}

bool QuelmLegacyDatabase::getNumberOfRecords(int& count)
{
    return quelm::guarded([&] {
        count = static_cast<int>(impl->store().records().size());
        return true;
    });
}

struct QuelmLegacyDatabaseIterator::Impl {
    std::shared_ptr<QuelmLegacyDatabase::Impl::Slot> slot;
    std::size_t next = 0; ///< index of the record after the one handed out last
    LegacyDBRecord record{};

    const quelm::RecordStore* store() const { return slot ? slot->store.get() : nullptr; }

    LegacyDBRecord* handOut(std::size_t at)
    {
        const quelm::RecordStore* open = store();
        if (open == nullptr || at >= open->records().size())
            return nullptr;
        const quelm::Record& found = open->records()[at];
        next = at + 1;
        // Readers go by the terminators: lengths that do not fit 16 bits wrap, the texts are whole.
        record.keyLength = static_cast<std::uint16_t>(found.key.size());
        record.dataLength = static_cast<std::uint16_t>(found.data.size());
        record.recordLength = static_cast<std::uint16_t>(found.key.size() + found.data.size());
        record.key = const_cast<char*>(found.key.c_str());
        record.data = const_cast<char*>(found.data.c_str());
        return &record;
    }
};

QuelmLegacyDatabaseIterator::QuelmLegacyDatabaseIterator(QuelmLegacyDatabase* database) : impl(new Impl)
{
    if (database != nullptr)
        impl->slot = database->impl->slot;
}

QuelmLegacyDatabaseIterator::~QuelmLegacyDatabaseIterator() { delete impl; }

LegacyDBRecord* QuelmLegacyDatabaseIterator::getNextRecord(bool first)
{
    return impl->handOut(first ? 0 : impl->next);
}

LegacyDBRecord* QuelmLegacyDatabaseIterator::getRecordN(int n)
{
    return n < 1 ? nullptr : impl->handOut(static_cast<std::size_t>(n) - 1);
}

LegacyDBRecord* QuelmLegacyDatabaseIterator::getRecordByKey(char* key)
{
    const quelm::RecordStore* open = impl->store();
    const auto at = open != nullptr && key != nullptr ? open->find(key) : std::nullopt;
    return at ? impl->handOut(*at) : nullptr;
}
