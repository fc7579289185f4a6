// Reads, checks and saves what a file of contacts holds.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/phonebook/import.h"

#include "base/error.h"
#include "base/interruption.h"
#include "base/texts.h"
#include "base/translation.h"
#include "base/whole_file.h"
#include "driver/phonebook/record_codec.h"
#include "driver/phonebook/text_charset.h"
#include "driver/phonebook/vcard_property.h"
#include "driver/store/phonebook_file.h"

#include <algorithm>
#include <unordered_set>

namespace quelm {
namespace {

constexpr std::size_t largestFile = std::size_t{256} * 1024 * 1024;
constexpr std::size_t mostLines = 100;

/// A file's people and groups, and how it was read.
Contacts readContacts(const std::string& file, const ReadingOptions& options, ImportReport& report)
{
    auto bytes = readTextFile(file, largestFile);
    auto given = options.charset;
    // Phones say in each card how it is written.
    if (given.empty() && isVcardText(bytes) && !isUtf8(bytes))
        given = declaredCharset(bytes);
    auto [text, charset, guessed] = decodeText(std::move(bytes), given, report.file);
    if (text.find_first_not_of(" \t\r\n") == std::string::npos)
        throw Error(localized("%s: is empty; give a CSV, vCard or LDIF file", report.file));
    report.charset = charset;
    report.charsetGuessed = guessed;
    if (isVcardText(text)) {
        report.format = "vcard";
        return readVcards(text);
    }
    if (isLdifText(text)) {
        report.format = "ldif";
        return readLdif(text);
    }
    return readCsvContacts(text, report.file, options.separator);
}

std::vector<std::string> strayMembers(const std::vector<Contact>& contacts,
                                      const std::function<bool(const std::string&)>& isThere)
{
    std::vector<std::string> strays;
    std::size_t more = 0;
    for (const auto& contact : contacts) {
        const auto* group = std::get_if<PhonebookGroup>(&contact.content);
        if (group == nullptr)
            continue;
        for (const auto& member : group->members) {
            if (isThere(member))
                continue;
            if (strays.size() == mostLines)
                ++more;
            else
                strays.push_back(
                    localized("the group \"%s\" has the member \"%s\", which is not in the phonebook",
                              group->name, member));
        }
    }
    if (more > 0)
        strays.push_back(localizedCount("%d more member is not in the phonebook",
                                        "%d more members are not in the phonebook", more, more));
    return strays;
}

Error interrupted(const ImportReport& report)
{
    return Error(localized("%s: the import was interrupted; nothing was imported", report.file));
}

/// The group that a category becomes: its people behind the members of the phonebook's group of that name.
PhonebookGroup extended(PhonebookGroup category, const std::vector<Phonebook::Item>& present)
{
    const auto key = groupKey(category.name);
    const auto item = std::ranges::find(present, key, &Phonebook::Item::key);
    const auto* known = item == present.end() ? nullptr : std::get_if<PhonebookGroup>(&item->content);
    if (known == nullptr)
        return category;
    auto members = known->members;
    std::unordered_set<std::string> names(members.begin(), members.end());
    for (auto& member : category.members)
        if (names.insert(member).second)
            members.push_back(std::move(member));
    return {std::move(category.name), std::move(members)};
}

/// The phonebook's items; none while there is no phonebook.
std::vector<Phonebook::Item> itemsOf(const PhonebookPlace& place)
{
    if (!phonebook_file::isTaken(place.path))
        return {};
    return Phonebook(place, Phonebook::Access::read).items();
}

void save(const SettledContacts& all, const PhonebookPlace& place, const ImportOptions& options,
          ImportReport& report)
{
    Phonebook phonebook(place, Phonebook::Access::create);
    const auto total = all.contacts.size() + all.categories.size();
    std::size_t done = 0;
    const auto saveOne = [&](const auto& content) {
        if (Interruption::requested())
            throw interrupted(report);
        ++(phonebook.save(content) ? report.merged : report.added);
        if (options.progress)
            options.progress(++done, total);
    };
    for (const auto& contact : all.contacts)
        std::visit(saveOne, contact.content);
    if (!all.categories.empty()) {
        const auto present = phonebook.items();
        for (const auto& category : all.categories)
            saveOne(extended(category, present));
    }
    report.strayMembers =
        strayMembers(all.contacts, [&](const auto& member) { return phonebook.reachesMember(member); });
    if (Interruption::requested())
        throw interrupted(report);
    phonebook.commit();
}

/// Counts what `save` would do.
void rehearse(const SettledContacts& all, const std::vector<Phonebook::Item>& present, ImportReport& report)
{
    std::unordered_set<std::string> keys;
    for (const auto& item : present)
        keys.insert(item.key);
    const auto count = [&](const std::string& key) {
        ++(keys.insert(key).second ? report.added : report.merged);
    };
    for (const auto& contact : all.contacts) {
        const auto* entry = std::get_if<PhonebookEntry>(&contact.content);
        count(entry != nullptr ? entryKey(entry->name)
                               : groupKey(std::get<PhonebookGroup>(contact.content).name));
    }
    for (const auto& category : all.categories)
        count(groupKey(category.name));
    report.strayMembers =
        strayMembers(all.contacts, [&](const auto& member) { return keys.contains(entryKey(member)); });
}

/// At most `mostLines` lines, and one more that counts the rest.
template <typename Item, typename Line>
std::vector<std::string> boundedLines(const std::vector<Item>& items, const Line& lineOf,
                                      const std::function<std::string(std::size_t)>& rest)
{
    std::vector<std::string> lines;
    for (const auto& item : items) {
        if (lines.size() == mostLines) {
            lines.push_back(rest(items.size() - mostLines));
            break;
        }
        lines.push_back(oneLine(lineOf(item)));
    }
    return lines;
}

/// The file and line that a sentence is about.
std::string placeIn(const ImportReport& report, std::size_t line)
{
    return report.file + ":" + std::to_string(line) + ": ";
}

std::string namesOf(const std::vector<std::string>& names)
{
    constexpr std::size_t most = 10;
    std::string list;
    for (std::size_t i = 0; i < std::min(names.size(), most); ++i)
        list += (list.empty() ? "" : ", ") + shownText(names[i]);
    return names.size() > most ? list + ", ..." : list;
}

} // namespace

ImportReport importFile(const PhonebookPlace& place, const std::string& file, const ImportOptions& options)
{
    ImportReport report;
    report.file = displayName(file);
    report.dryRun = options.dryRun;
    auto read = readContacts(file, options.reading, report);
    report.withoutNumber = read.withoutNumber;
    report.extensions = read.extensions;
    report.notes = std::move(read.notes);
    if (report.charsetGuessed)
        report.notes.insert(report.notes.begin(), guessedCharsetNote(report.charset));
    const auto present = itemsOf(place);
    auto all = settle(std::move(read), present, options.settling);
    report.mailboxes = all.mailboxes;
    report.renamed = std::move(all.renamed);
    report.refused = std::move(all.refused);
    for (const auto& category : all.categories)
        report.categories.push_back(category.name);
    report.accepted = report.refused.empty() || options.skipBad;
    if (!report.accepted || all.contacts.empty())
        return report;
    if (options.dryRun) {
        rehearse(all, present, report);
        return report;
    }
    const Interruption interruption; // outlives the phonebook, which takes its changes back first
    save(all, place, options, report);
    return report;
}

std::string importSummary(const ImportReport& report)
{
    // Translators: a file; how many entries and groups were new, took the place of one of the same name, and
    // could not be used.
    std::string text = localized("%s: %d added, %d merged, %d refused", report.file, report.added,
                                 report.merged, report.refused.size()) +
                       "\n";
    for (const auto& note : report.notes)
        text += oneLine(note) + "\n";
    const auto renamings = boundedLines(
        report.renamed,
        [&](const Renaming& one) {
            // Translators: two names of an entry or group.
            return placeIn(report, one.line) +
                   localized("\"%s\" becomes \"%s\"", shownText(one.from), one.to);
        },
        [](std::size_t more) {
            return localizedCount("%d more name was changed", "%d more names were changed", more, more);
        });
    for (const auto& line : renamings)
        text += line + "\n";
    if (const auto groups = report.categories.size(); groups > 0)
        // Translators: the names of groups.
        text += localizedCount("%d group holds the people of a category: %s",
                               "%d groups hold the people of their categories: %s", groups, groups,
                               namesOf(report.categories)) +
                "\n";
    if (const auto people = report.withoutNumber; people > 0)
        text += localizedCount("%d person without a fax number was passed over",
                               "%d people without a fax number were passed over", people, people) +
                "\n";
    if (const auto numbers = report.extensions; numbers > 0)
        text +=
            localizedCount("%d extension is dialled behind a pause, which the comma ahead of it means",
                           "%d extensions are dialled behind a pause, which the commas ahead of them mean",
                           numbers, numbers) +
            "\n";
    if (const auto mailboxes = report.mailboxes; mailboxes > 0)
        text += localizedCount("%d mailbox was left out; phonebooks keep none",
                               "%d mailboxes were left out; phonebooks keep none", mailboxes, mailboxes) +
                "\n";
    if (report.dryRun)
        text += localized("the phonebook stays as it is, for this was a dry run") + "\n";
    return text;
}

std::vector<std::string> refusalLines(const ImportReport& report)
{
    return boundedLines(
        report.refused,
        [&](const Refusal& refusal) { return placeIn(report, refusal.line) + refusal.reason; },
        [&](std::size_t more) {
            return localizedCount("%s: %d more is refused", "%s: %d more are refused", more, report.file,
                                  more);
        });
}

std::string importFailure(const ImportReport& report)
{
    const auto mendable =
        static_cast<std::size_t>(std::ranges::count(report.refused, true, &Refusal::mendable));
    if (mendable > 0)
        // Translators: a file, how many are refused, how many of them --rename takes.
        return localized("%s: nothing was imported, with %d refused; --rename takes %d of them under other "
                         "names, --skip-bad leaves out what is refused",
                         report.file, report.refused.size(), mendable);
    return localizedCount(
        "%s: nothing was imported, for %d row or card is refused; mend the file or leave them "
        "out with --skip-bad",
        "%s: nothing was imported, for %d rows or cards are refused; mend the file or leave "
        "them out with --skip-bad",
        report.refused.size(), report.file, report.refused.size());
}

} // namespace quelm
