// Reads, checks and saves what a file of contacts holds.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/phonebook/import.h"

#include "base/error.h"
#include "base/interruption.h"
#include "base/texts.h"
#include "base/translation.h"
#include "base/whole_file.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>

namespace quelm {
namespace {

constexpr std::size_t largestFile = std::size_t{256} * 1024 * 1024;
constexpr std::size_t mostLines = 100;

std::string keyOf(const Contact& contact)
{
    const auto* entry = std::get_if<PhonebookEntry>(&contact.content);
    return entry != nullptr ? entryKey(entry->name)
                            : groupKey(std::get<PhonebookGroup>(contact.content).name);
}

/// True when one in the place of the other would lose a number or member.
bool contradict(const Contact& one, const Contact& other)
{
    if (const auto* entry = std::get_if<PhonebookEntry>(&one.content))
        return entry->number != std::get<PhonebookEntry>(other.content).number;
    return std::get<PhonebookGroup>(one.content) != std::get<PhonebookGroup>(other.content);
}

/// Refuses what contradicts something ahead of it under the same name: two people may be meant.
void refuseContradictions(Contacts& all)
{
    std::unordered_map<std::string, const Contact*> first;
    std::unordered_set<const Contact*> refused;
    for (const auto& contact : all.contacts) {
        const auto [known, isNew] = first.try_emplace(keyOf(contact), &contact);
        if (isNew || !contradict(*known->second, contact))
            continue;
        const auto* sentence =
            std::holds_alternative<PhonebookGroup>(contact.content)
                ? forTranslation(
                      "\"%s\" stands on line %d with other members already; give one of them another name")
                : forTranslation(
                      "\"%s\" stands on line %d with another number already; give one of them another name");
        all.refused.push_back(
            {contact.line, localized(sentence, known->first.substr(1), known->second->line)});
        refused.insert(&contact);
    }
    if (refused.empty())
        return;
    std::vector<Contact> kept;
    for (auto& contact : all.contacts)
        if (!refused.contains(&contact))
            kept.push_back(std::move(contact));
    all.contacts = std::move(kept);
    std::ranges::stable_sort(all.refused, {}, &Refusal::line);
}

std::vector<std::string> strayMembers(const std::vector<Contact>& contacts, const Phonebook& phonebook)
{
    std::vector<std::string> strays;
    std::size_t more = 0;
    for (const auto& contact : contacts) {
        const auto* group = std::get_if<PhonebookGroup>(&contact.content);
        if (group == nullptr)
            continue;
        for (const auto& member : group->members) {
            if (phonebook.reachesMember(member))
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

void save(const Contacts& all, const PhonebookPlace& place, const ImportOptions& options,
          ImportReport& report)
{
    Phonebook phonebook(place, Phonebook::Access::create);
    std::size_t done = 0;
    for (const auto& contact : all.contacts) {
        if (Interruption::requested())
            throw interrupted(report);
        const bool replaced =
            std::visit([&](const auto& content) { return phonebook.save(content); }, contact.content);
        ++(replaced ? report.merged : report.added);
        if (options.progress)
            options.progress(++done, all.contacts.size());
    }
    report.strayMembers = strayMembers(all.contacts, phonebook);
    if (Interruption::requested())
        throw interrupted(report);
    phonebook.commit();
}

} // namespace

ImportReport importFile(const PhonebookPlace& place, const std::string& file, const ImportOptions& options)
{
    ImportReport report;
    report.file = displayName(file);
    Contacts all;
    {
        const auto text = readTextFile(file, largestFile);
        if (text.find_first_not_of(" \t\r\n") == std::string::npos)
            throw Error(localized("%s: is empty; give a CSV or vCard file", report.file));
        all = isVcardText(text) ? readVcards(text) : readCsvContacts(text, report.file);
    }
    refuseContradictions(all);
    report.withoutNumber = all.withoutNumber;
    report.mailboxes = all.mailboxes;
    report.refused = std::move(all.refused);
    report.written = report.refused.empty() || options.skipBad;
    if (report.written && !all.contacts.empty()) {
        const Interruption interruption; // outlives the phonebook, which takes its changes back first
        save(all, place, options, report);
    }
    return report;
}

std::string importSummary(const ImportReport& report)
{
    // Translators: a file; how many entries and groups were new, took the place of one of the same name, and
    // could not be used.
    std::string text = localized("%s: %d added, %d merged, %d refused", report.file, report.added,
                                 report.merged, report.refused.size()) +
                       "\n";
    if (const auto cards = report.withoutNumber; cards > 0)
        text += localizedCount("%d card without a fax number was passed over",
                               "%d cards without a fax number were passed over", cards, cards) +
                "\n";
    if (const auto mailboxes = report.mailboxes; mailboxes > 0)
        text += localizedCount("%d mailbox was left out; phonebooks keep none",
                               "%d mailboxes were left out; phonebooks keep none", mailboxes, mailboxes) +
                "\n";
    return text;
}

std::vector<std::string> refusalLines(const ImportReport& report)
{
    std::vector<std::string> lines;
    for (const auto& refusal : report.refused) {
        if (lines.size() == mostLines) {
            const auto more = report.refused.size() - mostLines;
            lines.push_back(
                localizedCount("%s: %d more is refused", "%s: %d more are refused", more, report.file, more));
            break;
        }
        lines.push_back(oneLine(report.file + ":" + std::to_string(refusal.line) + ": " + refusal.reason));
    }
    return lines;
}

std::string importFailure(const ImportReport& report)
{
    return localizedCount(
        "%s: nothing was imported, for %d row or card is refused; mend the file or leave them "
        "out with --skip-bad",
        "%s: nothing was imported, for %d rows or cards are refused; mend the file or leave "
        "them out with --skip-bad",
        report.refused.size(), report.file, report.refused.size());
}

} // namespace quelm
