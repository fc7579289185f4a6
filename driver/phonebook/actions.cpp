// Carries out actions on a phonebook.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/phonebook/actions.h"

#include "base/atomic_file.h"
#include "base/error.h"
#include "base/texts.h"
#include "base/translation.h"
#include "driver/phonebook/contacts.h"
#include "driver/phonebook/entry_check.h"
#include "driver/phonebook/listing.h"

#include <algorithm>
#include <filesystem>
#include <utility>

namespace quelm {
namespace {

using Items = std::vector<Phonebook::Item>;

Items readItems(const PhonebookPlace& place) { return Phonebook(place, Phonebook::Access::read).items(); }

const Phonebook::Item& existing(const Items& items, const std::string& name, const std::string& path)
{
    const auto* item = findItem(items, name);
    if (item == nullptr)
        throw Error(localized(
            "%s: there is no entry or group \"%s\"; quelm-driver phonebook list shows what there is",
            oneLine(path), oneLine(name)));
    return *item;
}

template <typename Content>
Content acceptable(Content content)
{
    content = tidied(std::move(content));
    if (const auto problem = problemWith(content))
        throw Error("\"" + oneLine(content.name) + "\": " + oneLine(*problem));
    return content;
}

const char* kindOf(const PhonebookEntry& /*entry*/) { return "entry"; }
const char* kindOf(const PhonebookGroup& /*group*/) { return "group"; }

/// Saves one entry or group. `present` says whether the phonebook has one of that name; `phonebook` is null
/// for one that a dry run does not make.
template <typename Content>
Outcome saveOne(Phonebook* phonebook, const Content& content, bool present, bool replace, Doing doing)
{
    const auto what = described(content);
    if (present && !replace)
        // Translators: %s is: the entry "Ann".
        throw Error(localized("%s is in the phonebook already; remove it first, or say --replace", what));
    Outcome outcome;
    outcome.action = present ? "replaced" : "added";
    outcome.kind = kindOf(content);
    outcome.name = content.name;
    if (doing == Doing::dryRun) {
        // Translators: %s is: the entry "Ann".
        outcome.done =
            present ? localized("%s would be replaced", what) : localized("%s would be added", what);
    } else {
        phonebook->save(content);
        phonebook->commit();
        // Translators: %s is: the entry "Ann".
        outcome.done = present ? localized("replaced %s", what) : localized("added %s", what);
    }
    outcome.done += "\n";
    return outcome;
}

/// Whether a file can be made there: its folder is, or is made with a personal phonebook.
bool canBeMade(const PhonebookPlace& place)
{
    std::error_code none;
    const std::filesystem::path path = place.path;
    if (std::filesystem::exists(std::filesystem::symlink_status(path, none)))
        return false;
    return place.personal ||
           std::filesystem::is_directory(std::filesystem::absolute(path, none).parent_path(), none);
}

std::string formatted(const Items& items, FileFormat format)
{
    const auto contents = readableItems(items);
    if (format == FileFormat::csv)
        return writeCsvContacts(contents);
    if (format == FileFormat::ldif)
        return writeLdif(contents);
    return writeVcards(contents, format == FileFormat::vcard3 ? VcardVersion::v3 : VcardVersion::v4);
}

bool isSameFile(const std::string& one, const std::string& other)
{
    std::error_code none;
    return std::filesystem::equivalent(one, other, none);
}

} // namespace

std::optional<FileFormat> formatByName(std::string_view file)
{
    std::string ending = std::filesystem::path(file).extension().string();
    std::ranges::transform(ending, ending.begin(), [](char character) {
        return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a') : character;
    });
    if (ending == ".csv")
        return FileFormat::csv;
    if (ending == ".ldif")
        return FileFormat::ldif;
    if (ending == ".vcf")
        return FileFormat::vcard4;
    return std::nullopt;
}

Outcome listPhonebook(const PhonebookPlace& place, bool csv)
{
    const auto items = readItems(place);
    if (!csv)
        return {listText(items), {}};
    return {writeCsvContacts(readableItems(items)), unreadableRecords(items, place.path)};
}

std::vector<Phonebook::Item> phonebookItems(const PhonebookPlace& place) { return readItems(place); }

Phonebook::Item phonebookItem(const PhonebookPlace& place, const std::string& name)
{
    const auto items = readItems(place);
    return existing(items, name, place.path);
}

Outcome showItem(const PhonebookPlace& place, const std::string& name)
{
    const auto items = readItems(place);
    return {showText(existing(items, name, place.path), items), {}};
}

Outcome addEntry(const PhonebookPlace& place, PhonebookEntry entry, bool replace, Doing doing)
{
    entry = acceptable(std::move(entry));
    if (doing == Doing::dryRun && canBeMade(place))
        return saveOne(nullptr, entry, false, replace, doing);
    Phonebook phonebook(place, doing == Doing::dryRun ? Phonebook::Access::write : Phonebook::Access::create);
    return saveOne(&phonebook, entry, phonebook.hasEntry(entry.name), replace, doing);
}

Outcome addGroup(const PhonebookPlace& place, PhonebookGroup group, bool replace, Doing doing)
{
    group = acceptable(std::move(group));
    Phonebook phonebook(place, Phonebook::Access::write); // one without entries has no use for groups
    for (const auto& member : group.members) {
        if (!phonebook.reachesMember(member))
            throw Error(localized("\"%s\": the member \"%s\" is not in the phonebook; add it first",
                                  oneLine(group.name), oneLine(member)));
    }
    return saveOne(&phonebook, group, phonebook.hasGroup(group.name), replace, doing);
}

Outcome removeItem(const PhonebookPlace& place, const std::string& name, Doing doing)
{
    Phonebook phonebook(place, Phonebook::Access::write);
    const auto items = phonebook.items();
    const auto& item = existing(items, name, place.path);
    Outcome outcome;
    if (std::holds_alternative<PhonebookEntry>(item.content)) {
        for (const auto& other : items) {
            const auto* group = std::get_if<PhonebookGroup>(&other.content);
            if (group != nullptr && std::ranges::any_of(group->members, [&](const std::string& member) {
                    return entryKey(member) == item.key;
                }))
                // Translators: the first %s is: the group "Sales".
                outcome.warnings.push_back(localized("%s still has the member \"%s\"", described(*group),
                                                     oneLine(item.key.substr(1))));
        }
    }
    outcome.action = "removed";
    if (const auto* entry = std::get_if<PhonebookEntry>(&item.content)) {
        outcome.kind = kindOf(*entry);
        outcome.name = entry->name;
    } else if (const auto* group = std::get_if<PhonebookGroup>(&item.content)) {
        outcome.kind = kindOf(*group);
        outcome.name = group->name;
    } else {
        outcome.kind = "unreadable";
        outcome.name = item.key.empty() ? "" : item.key.substr(1);
    }
    if (doing == Doing::dryRun) {
        // Translators: %s is: the entry "Ann".
        outcome.done = localized("%s would be removed", described(item)) + "\n";
        return outcome;
    }
    // Translators: %s is: the entry "Ann".
    outcome.done = localized("removed %s", described(item)) + "\n";
    phonebook.remove(item.key);
    phonebook.commit();
    return outcome;
}

Outcome exportText(const PhonebookPlace& place, FileFormat format)
{
    const auto items = readItems(place);
    return {formatted(items, format), unreadableRecords(items, place.path)};
}

Outcome exportFile(const PhonebookPlace& place, const std::string& file, FileFormat format, Doing doing,
                   ExportCount* count)
{
    const auto items = readItems(place);
    if (isSameFile(file, place.path))
        throw Error(localized("%s: is the phonebook itself; export to another file", oneLine(file)));
    auto warnings = unreadableRecords(items, place.path);
    if (count != nullptr) {
        for (const auto& content : readableItems(items))
            ++(std::holds_alternative<PhonebookEntry>(content) ? count->entries : count->groups);
        count->warnings = warnings;
    }
    const auto text = formatted(items, format);
    if (doing == Doing::dryRun)
        // Translators: a file, and what would be in it: 12 entries, 1 group.
        return {localized("%s: would hold %s", oneLine(file), countText(items)) + "\n", std::move(warnings)};
    AtomicFile output(file);
    output.write(text);
    output.commit();
    return {oneLine(file) + ": " + countText(items) + "\n", std::move(warnings)};
}

} // namespace quelm
