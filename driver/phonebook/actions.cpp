// Carries out actions on a phonebook.
#include "driver/phonebook/actions.h"

#include "driver/core/atomic_file.h"
#include "driver/core/error.h"
#include "driver/core/log.h"
#include "driver/phonebook/contacts.h"
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
        throw Error(oneLine(path) + ": there is no entry or group \"" + oneLine(name) +
                    "\"; quelm-driver phonebook list shows what there is");
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

/// Saves one entry or group. `present` says whether the phonebook has one of that name.
template <typename Content>
Outcome saveOne(Phonebook& phonebook, const Content& content, bool present, bool replace, const char* kind)
{
    const auto what = std::string("the ") + kind + " \"" + content.name + "\"";
    if (present && !replace)
        throw Error(what + " is in the phonebook already; remove it first, or say --replace");
    phonebook.save(content);
    phonebook.commit();
    return {(present ? "replaced " : "added ") + what + "\n", {}};
}

std::string formatted(const Items& items, FileFormat format)
{
    const auto contents = readableItems(items);
    if (format == FileFormat::csv)
        return writeCsvContacts(contents);
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
    if (ending == ".vcf")
        return FileFormat::vcard4;
    return std::nullopt;
}

Outcome listPhonebook(const PhonebookPlace& place, bool csv)
{
    const auto items = readItems(place);
    return {csv ? writeCsvContacts(readableItems(items)) : listText(items),
            unreadableRecords(items, place.path)};
}

Outcome showItem(const PhonebookPlace& place, const std::string& name)
{
    const auto items = readItems(place);
    return {showText(existing(items, name, place.path), items), {}};
}

Outcome addEntry(const PhonebookPlace& place, PhonebookEntry entry, bool replace)
{
    entry = acceptable(std::move(entry));
    Phonebook phonebook(place, Phonebook::Access::create);
    return saveOne(phonebook, entry, phonebook.hasEntry(entry.name), replace, "entry");
}

Outcome addGroup(const PhonebookPlace& place, PhonebookGroup group, bool replace)
{
    group = acceptable(std::move(group));
    Phonebook phonebook(place, Phonebook::Access::write); // one without entries has no use for groups
    for (const auto& member : group.members) {
        if (!phonebook.hasEntry(member))
            throw Error("\"" + oneLine(group.name) + "\": the member \"" + oneLine(member) +
                        "\" is not in the phonebook; add it first");
    }
    return saveOne(phonebook, group, phonebook.hasGroup(group.name), replace, "group");
}

Outcome removeItem(const PhonebookPlace& place, const std::string& name)
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
                outcome.warnings.push_back(described(other) + " still has the member \"" +
                                           oneLine(item.key.substr(1)) + "\"");
        }
    }
    phonebook.remove(item.key);
    phonebook.commit();
    outcome.done = "removed " + described(item) + "\n";
    return outcome;
}

Outcome exportText(const PhonebookPlace& place, FileFormat format)
{
    const auto items = readItems(place);
    return {formatted(items, format), unreadableRecords(items, place.path)};
}

Outcome exportFile(const PhonebookPlace& place, const std::string& file, FileFormat format)
{
    const auto items = readItems(place);
    if (isSameFile(file, place.path))
        throw Error(oneLine(file) + ": is the phonebook itself; export to another file");
    AtomicFile output(file);
    output.write(formatted(items, format));
    output.commit();
    const auto groups =
        static_cast<std::size_t>(std::ranges::count_if(items, [](const Phonebook::Item& item) {
            return std::holds_alternative<PhonebookGroup>(item.content);
        }));
    const auto entries = readableItems(items).size() - groups;
    return {oneLine(file) + ": " + std::to_string(entries) + (entries == 1 ? " entry, " : " entries, ") +
                std::to_string(groups) + (groups == 1 ? " group\n" : " groups\n"),
            unreadableRecords(items, place.path)};
}

} // namespace quelm
