// Checks contacts, mends their names, and makes groups of their categories.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/phonebook/settled_contacts.h"

#include "base/texts.h"
#include "base/translation.h"
#include "driver/phonebook/entry_check.h"
#include "driver/phonebook/record_codec.h"

#include <algorithm>
#include <optional>
#include <span>
#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace quelm {
namespace {

std::string& nameOf(Contact& contact)
{
    auto* entry = std::get_if<PhonebookEntry>(&contact.content);
    return entry != nullptr ? entry->name : std::get<PhonebookGroup>(contact.content).name;
}

std::string keyOf(Contact& contact)
{
    const bool isEntry = std::holds_alternative<PhonebookEntry>(contact.content);
    return isEntry ? entryKey(nameOf(contact)) : groupKey(nameOf(contact));
}

std::optional<std::string> problemOf(const Contact& contact)
{
    return std::visit([](const auto& content) { return problemWith(content); }, contact.content);
}

/// True when one in the place of the other would lose a number or member.
template <typename Content>
bool contradict(const std::variant<PhonebookEntry, PhonebookGroup>& one, const Content& other)
{
    if (const auto* entry = std::get_if<PhonebookEntry>(&one)) {
        const auto* known = std::get_if<PhonebookEntry>(&other);
        return known == nullptr || known->number != entry->number;
    }
    const auto* known = std::get_if<PhonebookGroup>(&other);
    return known == nullptr || known->members != std::get<PhonebookGroup>(one).members;
}

class Settler {
public:
    /// One person or group: the contacts of one line.
    using Run = std::span<Contact>;

    Settler(Contacts all, const std::vector<Phonebook::Item>& present, const SettlingOptions& options)
        : all_(std::move(all.contacts)), options_(options)
    {
        settled_.refused = std::move(all.refused);
        for (const auto& item : present)
            present_.emplace(item.key, &item.content);
    }

    SettledContacts settle()
    {
        const auto runs = runsOfLines();
        rawNames_.reserve(all_.size());
        for (auto& contact : all_)
            rawNames_.push_back(nameOf(contact));
        // Names that may stay as they are come first; others are numbered beside them.
        fates_.resize(runs.size(), Fate::open);
        for (const bool groups : {false, true}) {
            for (std::size_t i = 0; i < runs.size(); ++i)
                if (isGroup(runs[i]) == groups)
                    settleUnchanged(runs[i], fates_[i], groups);
            for (std::size_t i = 0; i < runs.size(); ++i)
                if (isGroup(runs[i]) == groups && fates_[i] == Fate::open)
                    settleChanged(runs[i], fates_[i]);
            if (!groups)
                noteMembers(runs);
        }
        for (std::size_t i = 0; i < runs.size(); ++i)
            if (fates_[i] == Fate::taken)
                for (auto& contact : runs[i]) {
                    settled_.mailboxes += contact.hasMailbox ? 1 : 0;
                    takeCategories(contact);
                    settled_.contacts.push_back(std::move(contact));
                }
        settleCategories();
        std::ranges::stable_sort(settled_.refused, {}, &Refusal::line);
        std::ranges::stable_sort(settled_.renamed, {}, &Renaming::line);
        return std::move(settled_);
    }

private:
    enum class Fate { open, taken, refused };

    static bool isGroup(Run run) { return std::holds_alternative<PhonebookGroup>(run.front().content); }

    std::vector<Run> runsOfLines()
    {
        std::vector<Run> runs;
        for (std::size_t from = 0; from < all_.size();) {
            auto to = from + 1;
            while (to < all_.size() && all_[to].line == all_[from].line &&
                   std::holds_alternative<PhonebookEntry>(all_[to].content))
                ++to;
            runs.emplace_back(&all_[from], to - from);
            from = to;
        }
        return runs;
    }

    const std::string& rawNameOf(const Contact& contact) const
    {
        return rawNames_[static_cast<std::size_t>(&contact - all_.data())];
    }

    void refuse(const Contact& contact, Fate& fate, std::string reason, bool mendable)
    {
        settled_.refused.push_back({contact.line, std::move(reason), mendable});
        fate = Fate::refused;
    }

    /// Takes a run as it stands, refuses it, or leaves it to `settleChanged`.
    void settleUnchanged(Run run, Fate& fate, bool groups)
    {
        if (groups && !hasSettledMembers(run.front(), fate))
            return;
        for (auto& contact : run) {
            const auto problem = problemOf(contact);
            if (!problem)
                continue;
            const bool mendable = canBeMended(contact);
            if (!mendable || !options_.rename)
                refuse(contact, fate, (mendable ? "\"" + shownText(nameOf(contact)) + "\": " : "") + *problem,
                       mendable);
            return;
        }
        for (auto& contact : run) {
            const auto known = taken_.find(keyOf(contact));
            if (known == taken_.end() || !contradict(contact.content, known->second->content))
                continue;
            if (options_.rename)
                return;
            const auto* sentence =
                groups
                    ? forTranslation("\"%s\" stands on line %d with other members already; give one of them "
                                     "another name")
                    : forTranslation("\"%s\" stands on line %d with another number already; give one of them "
                                     "another name");
            return refuse(contact, fate, localized(sentence, nameOf(contact), known->second->line), true);
        }
        take(run, fate);
    }

    void take(Run run, Fate& fate)
    {
        for (auto& contact : run)
            taken_.try_emplace(keyOf(contact), &contact);
        fate = Fate::taken;
    }

    static bool canBeMended(Contact contact)
    {
        auto& name = nameOf(contact);
        name = acceptableName(name);
        return !problemOf(contact);
    }

    /// The first of "Ann", "Ann 2", "Ann 3", ... under which all of a run can go in.
    void settleChanged(Run run, Fate& fate)
    {
        constexpr std::size_t mostTries = 100000; // as many people of one name
        const auto& first = run.front();
        const auto& whole = rawNameOf(first);
        const auto own = whole.substr(0, whole.size() - std::min(first.markSize, whole.size()));
        auto& last = numbers_[acceptableName(own)]; // where to go on for the next of many
        for (auto number = std::max<std::size_t>(last, 1); number < mostTries; ++number) {
            const auto behind = number == 1 ? "" : " " + std::to_string(number);
            for (auto& contact : run) {
                const auto& raw = rawNameOf(contact);
                const auto tail = behind + raw.substr(raw.size() - std::min(contact.markSize, raw.size()));
                nameOf(contact) = acceptableName(own, tail.size()) + tail;
            }
            if (!std::ranges::all_of(run, [&](Contact& contact) { return isFree(contact); }))
                continue;
            last = number;
            for (const auto& contact : run)
                if (const auto problem = problemOf(contact))
                    return refuse(contact, fate, *problem, false);
            for (auto& contact : run)
                if (nameOf(contact) != rawNameOf(contact))
                    settled_.renamed.push_back({contact.line, rawNameOf(contact), nameOf(contact)});
            return take(run, fate);
        }
        refuse(first, fate, localized("\"%s\": too many have this name", shownText(own)), false);
    }

    bool isFree(Contact& contact)
    {
        const auto key = keyOf(contact);
        if (const auto known = taken_.find(key); known != taken_.end())
            return !contradict(contact.content, known->second->content);
        const auto known = present_.find(key);
        return known == present_.end() || !contradict(contact.content, *known->second) ||
               nameOf(contact) == rawNameOf(contact);
    }

    /// Under which names the file's entries went in, for the groups that name them.
    void noteMembers(const std::vector<Run>& runs)
    {
        for (std::size_t i = 0; i < runs.size(); ++i) {
            if (isGroup(runs[i]))
                continue;
            for (auto& contact : runs[i]) {
                auto& member = members_[rawNameOf(contact)];
                if (fates_[i] != Fate::taken)
                    member.refusedOn = contact.line;
                else if (member.name.empty())
                    member.name = nameOf(contact);
                else if (member.name != nameOf(contact))
                    member.isSeveral = true;
            }
        }
    }

    /// Puts the names under which a group's members went in into it. False when it is refused.
    bool hasSettledMembers(Contact& contact, Fate& fate)
    {
        for (auto& name : std::get<PhonebookGroup>(contact.content).members) {
            const auto found = members_.find(name);
            if (found == members_.end())
                continue; // one of the phonebook's, or nobody
            const auto& member = found->second;
            if (member.isSeveral)
                refuse(contact, fate, localized("its member \"%s\" may be one of several", shownText(name)),
                       false);
            else if (member.name.empty() && !present_.contains(entryKey(name)))
                refuse(contact, fate, localized("its member on line %d is refused", member.refusedOn), false);
            else if (!member.name.empty())
                name = member.name;
            if (fate == Fate::refused)
                return false;
        }
        return true;
    }

    void takeCategories(Contact& contact)
    {
        if (!options_.categoryGroups)
            return;
        for (const auto& category : contact.categories) {
            const auto name = tidied(category);
            if (name.empty())
                continue;
            const auto [at, isNew] = categoryAt_.try_emplace(name, categories_.size());
            if (isNew)
                categories_.push_back({contact.line, PhonebookGroup{name, {}}});
            auto& members = std::get<PhonebookGroup>(categories_[at->second].content).members;
            if (members.empty() || members.back() != nameOf(contact))
                members.push_back(nameOf(contact));
        }
    }

    void settleCategories()
    {
        for (auto& contact : categories_) {
            auto& group = std::get<PhonebookGroup>(contact.content);
            if (const auto problem = problemWith(group)) {
                const bool mendable = canBeMended(contact);
                Fate fate = Fate::open;
                if (!mendable || !options_.rename) {
                    refuse(
                        contact, fate,
                        localized("its category \"%s\" can be no group: %s", shownText(group.name), *problem),
                        mendable);
                    continue;
                }
                settled_.renamed.push_back({contact.line, group.name, acceptableName(group.name)});
                group.name = settled_.renamed.back().to;
            }
            settled_.categories.push_back(std::move(group));
        }
    }

    struct Member {
        std::string name; ///< under which it went in; empty when it was refused
        std::size_t refusedOn = 0;
        bool isSeveral = false;
    };

    std::vector<Contact> all_;
    const SettlingOptions& options_;
    std::vector<std::string> rawNames_; ///< of `all_`
    std::vector<Fate> fates_;           ///< of the runs
    std::unordered_map<std::string, const RecordContent*> present_;
    std::unordered_map<std::string, const Contact*> taken_; ///< by key
    std::unordered_map<std::string, Member> members_;       ///< by the file's name
    std::unordered_map<std::string, std::size_t> numbers_;  ///< last used behind a mended name
    std::unordered_map<std::string, std::size_t> categoryAt_;
    std::vector<Contact> categories_;
    SettledContacts settled_;
};

} // namespace

SettledContacts settle(Contacts all, const std::vector<Phonebook::Item>& present,
                       const SettlingOptions& options)
{
    return Settler(std::move(all), present, options).settle();
}

} // namespace quelm
