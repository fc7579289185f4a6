// Opens, reads and changes a phonebook.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/phonebook/phonebook.h"

#include "base/error.h"
#include "base/translation.h"

#include <sys/stat.h>

#include <filesystem>
#include <system_error>
#include <utility>

namespace quelm {
namespace {

bool exists(const std::string& path)
{
    std::error_code failure;
    return std::filesystem::exists(std::filesystem::symlink_status(path, failure));
}

/// What the component makes for its phonebook: folders that every user may use.
void makeFolders(const std::string& file)
{
    constexpr mode_t openToAll = 0777;
    const auto user = file.substr(0, file.rfind('/'));
    const auto phonebooks = user.substr(0, user.rfind('/'));
    const auto databases = phonebooks.substr(0, phonebooks.rfind('/'));
    for (const auto& folder : {databases, phonebooks, user})
        if (!exists(folder) && ::mkdir(folder.c_str(), openToAll) != 0)
            throw Error(localized("the folder %s cannot be made; check its permissions", folder));
}

} // namespace

PhonebookPlace personalPhonebook(const std::string& home, const std::string& user)
{
    return {home + "/db/phonebook/user/" + user + ".xdb", true};
}

Phonebook::Phonebook(const PhonebookPlace& place, Access access) : path_(place.path)
{
    if (!exists(path_)) {
        if (access != Access::create && place.personal)
            return;
        if (access == Access::create) {
            if (place.personal)
                makeFolders(path_);
            RecordStore::create(path_);
        }
    }
    store_ = std::make_unique<RecordStore>(path_, access == Access::read ? RecordStore::Access::read
                                                                         : RecordStore::Access::readWrite);
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

bool Phonebook::has(const std::string& key) const { return store_ && store_->find(key).has_value(); }

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
