// What host/record_database.h declares, on top of phonebook files; nothing throws across it.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "host/record_database.h"

#include "base/bounded_text.h"
#include "base/error.h"
#include "base/translation.h"
#include "driver/boundary/host_state.h"
#include "driver/store/group_members.h"
#include "driver/store/record_fields.h"
#include "driver/store/record_store.h"
#include "host/files.h"

#include <algorithm>
#include <cstring>
#include <exception>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace quelm {

namespace {

/// Ends the saving of a record that could not be read again. The component says nothing of it: the user is
/// told.
class RefusedRecord : public Error {
public:
    using Error::Error;
};

/// Keeps why an operation failed with the driver that lives; an exception that says nothing leaves no reason.
void keepReason(const char* reason) noexcept
{
    try {
        if (auto* state = HostState::current())
            state->failures.databaseFailed(reason);
    } catch (...) { // no memory for the reason
    }
}

/// The same for a reason that the component passes over in silence and the user has to hear.
void tell(const char* reason) noexcept
{
    try {
        if (auto* state = HostState::current())
            state->failures.recordRefused(reason);
    } catch (...) { // no memory for the reason
    }
}

/// Says once of a phonebook that others share why it cannot be opened: its list is empty, in silence.
void tellNotOpened(const std::string& path, const char* reason)
{
    auto* state = HostState::current();
    if (state != nullptr && state->unopenedPhonebooks.insert(path).second)
        state->failures.phonebookNotOpened(
            // Translators: %s is why, as a sentence that names the file.
            localized("the shared phonebook is not listed: %s", reason));
}

/// Runs an operation of the boundary.
template <typename Operation>
bool guarded(Operation operation) noexcept
{
    try {
        return operation();
    } catch (const RefusedRecord& refusal) {
        tell(refusal.what());
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

/// What a record is called in messages: its key without the letter of its kind, in bounds.
std::string nameOf(const Record& record)
{
    constexpr std::size_t longest = 80;
    return std::string(boundedHead(std::string_view(record.key).substr(record.key.empty() ? 0 : 1), longest));
}

/// One open phonebook and the records in it that the component can read. Of the others it would list nothing,
/// or list nothing behind them; that there are some is said once for each file.
class OpenPhonebook {
public:
    OpenPhonebook(const std::string& path, RecordStore::Access access) : store_(path, access) { look(); }

    RecordStore& store() { return store_; }

    std::size_t count() { return readable().size(); }
    const Record* at(std::size_t position)
    {
        return position < count() ? &store_.records()[readable_[position]] : nullptr;
    }
    std::optional<std::size_t> find(std::string_view key)
    {
        const auto at = store_.find(key);
        if (!at)
            return std::nullopt;
        const auto found = std::ranges::lower_bound(readable(), *at);
        if (found == readable_.end() || *found != *at)
            return std::nullopt;
        return static_cast<std::size_t>(found - readable_.begin());
    }

    void refresh()
    {
        store_.refresh();
        readable();
    }

    /// Warns of the members of a group who are sent nothing when it is picked.
    void tellMissingMembers(const Record& record)
    {
        auto* state = HostState::current();
        const auto group = groupOf(record);
        if (!group || state == nullptr)
            return;
        for (const auto& warning : groupWarnings(*group, store_.path(), [this](const std::string& name) {
                 return find("u" + name).has_value();
             }))
            state->failures.membersMissing(warning);
    }

    /// Saves a record that can be read.
    void save(Record record)
    {
        const auto before = store_.find(record.key);
        const bool wasReadable = before && std::ranges::binary_search(readable(), *before);
        store_.save(std::move(record));
        if (!before)
            readable_.push_back(store_.records().size() - 1);
        else if (!wasReadable)
            look();
    }

private:
    const std::vector<std::size_t>& readable()
    {
        if (readings_ != store_.readings())
            look();
        return readable_;
    }

    void look()
    {
        readings_ = store_.readings();
        readable_.clear();
        const auto& records = store_.records();
        std::size_t firstBad = records.size();
        for (std::size_t at = 0; at < records.size(); ++at)
            if (!fieldProblem(records[at].data))
                readable_.push_back(at);
            else
                firstBad = std::min(firstBad, at);
        auto* state = HostState::current();
        if (firstBad == records.size() || state == nullptr ||
            !state->damagedPhonebooks.insert(store_.path()).second)
            return;
        const std::size_t bad = records.size() - readable_.size();
        state->failures.recordsLeftOut(localizedCount(
            // Translators: the file, a number, the record's name, and why it cannot be read.
            "the phonebook \"%s\" has %d record that cannot be read and is left out, \"%s\": %s; replace or "
            "remove it with quelm-driver phonebook",
            "the phonebook \"%s\" has %d records that cannot be read and are left out, the first is \"%s\": "
            "%s; replace or remove them with quelm-driver phonebook",
            bad, store_.path(), bad, nameOf(records[firstBad]),
            described(*fieldProblem(records[firstBad].data))));
    }

    RecordStore store_;
    std::vector<std::size_t> readable_; ///< positions in the store
    std::size_t readings_ = 0;          ///< of the store when it was looked at
};

/// A phonebook in the user's folder is nobody else's affair. One that he chose elsewhere keeps the
/// permissions that it was given: it may be the one that he keeps for others.
bool isPrivate(std::string_view path)
{
    const auto* state = HostState::current();
    return state != nullptr && path.starts_with(state->location + "/db/phonebook/user/");
}

/// A record that the component could not read again must not take a good one's place. The component says
/// nothing of a record that was not saved.
void requireReadable(const Record& record, const std::string& path)
{
    const auto problem = fieldProblem(record.data);
    if (!problem)
        return;
    // Translators: the record's name, the file, and why it could not be read again.
    const std::string line =
        localized("\"%s\" was not saved to the phonebook \"%s\": %s; fill it in or leave "
                  "it empty, and save again",
                  nameOf(record), path, described(*problem));
    throw RefusedRecord(line);
}

} // namespace

} // namespace quelm

/// Shared with the iterators, which so find out that the file was closed.
struct QuelmLegacyDatabase::Impl {
    struct Slot {
        std::unique_ptr<quelm::OpenPhonebook> open;
    };
    std::shared_ptr<Slot> slot = std::make_shared<Slot>();
    std::string missing; ///< what could not be opened last, because there was no such file

    quelm::OpenPhonebook& phonebook() const
    {
        if (!slot->open)
            quelm::failWithoutFile();
        return *slot->open;
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
        impl->slot->open.reset();
        const bool reads = mode != nullptr && std::strcmp(mode, "r") == 0;
        const bool writes = mode != nullptr && std::strcmp(mode, "r+") == 0;
        if (path == nullptr || (!reads && !writes))
            throw quelm::Error(
                quelm::localized("a phonebook is opened by its file name and with the mode \"r\" or \"r+\""));
        // Remembered for `createDatabase`, which is asked next.
        impl->missing = FileObject::doesPathExist(path) ? "" : path;
        using Access = quelm::RecordStore::Access;
        try {
            impl->slot->open =
                std::make_unique<quelm::OpenPhonebook>(path, reads ? Access::read : Access::readWrite);
        } catch (const quelm::Error& error) {
            if (reads)
                quelm::tellNotOpened(path, error.what());
            throw;
        }
        if (auto* state = quelm::HostState::current(); state != nullptr && reads)
            state->unopenedPhonebooks.erase(path);
        if (writes && quelm::isPrivate(path))
            impl->slot->open->store().makePrivate();
        return true;
    });
}

bool QuelmLegacyDatabase::createDatabase(char* path, int flags)
{
    return quelm::guarded([&] {
        impl->slot->open.reset();
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
        if (empties) {
            Store present(path, Store::Access::readWrite);
            present.clear();
            present.commit();
        }
        impl->slot->open = std::make_unique<quelm::OpenPhonebook>(path, Store::Access::readWrite);
        return true;
    });
}

bool QuelmLegacyDatabase::reopenDatabase()
{
    return quelm::guarded([&] {
        impl->phonebook().refresh();
        return true;
    });
}

bool QuelmLegacyDatabase::closeDatabase()
{
    const bool open = impl->slot->open != nullptr;
    impl->slot->open.reset();
    return open;
}

bool QuelmLegacyDatabase::saveRecord(LegacyDBRecord* record)
{
    return quelm::guarded([&] {
        if (record == nullptr || record->key == nullptr || record->data == nullptr)
            throw quelm::Error(
                quelm::localized("a phonebook takes records with a key and a text; nothing was saved"));
        quelm::Record saved{record->key, record->data};
        auto& phonebook = impl->phonebook();
        quelm::requireReadable(saved, phonebook.store().path());
        phonebook.save(saved);
        phonebook.tellMissingMembers(saved);
        return true;
    });
}

bool QuelmLegacyDatabase::serializeDatabase()
{
    return quelm::guarded([&] {
        impl->phonebook().store().commit();
        return true;
    });
}

bool QuelmLegacyDatabase::getNumberOfRecords(int& count)
{
    return quelm::guarded([&] {
        count = static_cast<int>(impl->phonebook().count());
        return true;
    });
}

struct QuelmLegacyDatabaseIterator::Impl {
    std::shared_ptr<QuelmLegacyDatabase::Impl::Slot> slot;
    std::size_t next = 0; ///< position of the record after the one handed out last
    LegacyDBRecord record{};
    /// The group that was fetched last, by itself; its members are asked for by their keys next.
    std::optional<quelm::Record> group;

    quelm::OpenPhonebook* phonebook() const { return slot ? slot->open.get() : nullptr; }

    LegacyDBRecord* handOut(std::size_t at)
    {
        quelm::OpenPhonebook* open = phonebook();
        const quelm::Record* found = open == nullptr ? nullptr : open->at(at);
        if (found == nullptr)
            return nullptr;
        next = at + 1;
        // Readers go by the terminators: lengths that do not fit 16 bits wrap, the texts are whole.
        record.keyLength = static_cast<std::uint16_t>(found->key.size());
        record.dataLength = static_cast<std::uint16_t>(found->data.size());
        record.recordLength = static_cast<std::uint16_t>(found->key.size() + found->data.size());
        record.key = const_cast<char*>(found->key.c_str());
        record.data = const_cast<char*>(found->data.c_str());
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
    LegacyDBRecord* record = n < 1 ? nullptr : impl->handOut(static_cast<std::size_t>(n) - 1);
    quelm::guarded([&] {
        impl->group.reset();
        if (record != nullptr) {
            quelm::Record fetched{record->key, record->data};
            if (quelm::groupOf(fetched))
                impl->group = std::move(fetched);
        }
        return true;
    });
    return record;
}

LegacyDBRecord* QuelmLegacyDatabaseIterator::getRecordByKey(char* key)
{
    quelm::OpenPhonebook* open = impl->phonebook();
    // Once for each pick, however many members there are.
    quelm::guarded([&] {
        if (const auto group = std::exchange(impl->group, std::nullopt); group && open != nullptr)
            open->tellMissingMembers(*group);
        return true;
    });
    const auto at = open != nullptr && key != nullptr ? open->find(key) : std::nullopt;
    return at ? impl->handOut(*at) : nullptr;
}
