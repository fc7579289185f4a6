// Opens, reads and changes a phonebook.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/phonebook/phonebook.h"

#include "base/error.h"
#include "base/translation.h"
#include "driver/store/phonebook_file.h"
#include "driver/store/record_fields.h"

#include <sys/stat.h>

#include <cerrno>
#include <utility>

namespace quelm {
namespace {

/// What the component makes for its phonebook: folders as the umask leaves them.
void makeFolders(const std::string& file)
{
    constexpr mode_t openToAll = 0777;
    const auto user = file.substr(0, file.rfind('/'));
    const auto phonebooks = user.substr(0, user.rfind('/'));
    const auto databases = phonebooks.substr(0, phonebooks.rfind('/'));
    for (const auto& folder : {databases, phonebooks, user})
        if (::mkdir(folder.c_str(), openToAll) != 0 && errno != EEXIST)
            throw Error(localized("the folder %s cannot be made; check its permissions", folder));
}

RecordStore::Access accessTo(const PhonebookPlace& place, Phonebook::Access access)
{
    if (access != Phonebook::Access::read)
        return RecordStore::Access::readWrite;
    return place.personal ? RecordStore::Access::readOwn : RecordStore::Access::read;
}

} // namespace

PhonebookPlace personalPhonebook(const std::string& location, const std::string& user)
{
    return {location + "/db/phonebook/user/" + user + ".xdb", true};
}

Phonebook::Phonebook(const PhonebookPlace& place, Access access) : path_(place.path)
{
    if (!phonebook_file::isTaken(path_)) {
        if (access != Access::create && place.personal)
            return;
        if (access == Access::create) {
            if (place.personal)
                makeFolders(path_);
            // Who makes it at the same time makes the same: both then add to it.
            using Readers = RecordStore::Readers;
            static_cast<void>(
                RecordStore::createUnlessThere(path_, place.personal ? Readers::owner : Readers::everybody));
        }
    }
    store_ = std::make_unique<RecordStore>(path_, accessTo(place, access));
    if (place.personal)
        store_->makePrivate();
}

std::vector<Phonebook::Item> Phonebook::items() const
{
    std::vector<Item> items;
    if (!store_)
        return items;
    items.reserve(store_->records().size());
    for (const auto& record : store_->records())
        items.push_back({record.key, decodeRecord(record)});
    return items;
}

std::vector<Phonebook::Item> Phonebook::listedItems() const
{
    auto listed = items();
    std::erase_if(listed, [](const Item& item) {
        const auto* unreadable = std::get_if<UnreadableRecord>(&item.content);
        return unreadable != nullptr && unreadable->leftOut;
    });
    return listed;
}

bool Phonebook::has(const std::string& key) const { return store_ && store_->find(key).has_value(); }

bool Phonebook::reachesMember(std::string_view name) const
{
    const auto at = store_ ? store_->find(entryKey(name)) : std::nullopt;
    return at && !fieldProblem(store_->records()[*at].data);
}

bool Phonebook::saveRecord(Record record)
{
    const bool replaces = has(record.key);
    store_->save(std::move(record));
    return replaces;
}

bool Phonebook::remove(const std::string& key) { return store_ && store_->remove(key); }

void Phonebook::commit()
{
    if (store_)
        store_->commit();
}

} // namespace quelm
