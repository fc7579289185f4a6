// From cards to entries and groups.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/translation.h"
#include "driver/phonebook/contacts.h"
#include "driver/phonebook/person.h"
#include "driver/phonebook/vcard_card.h"
#include "driver/phonebook/vcard_cards.h"
#include "driver/phonebook/vcard_names.h"

#include <glib.h>

#include <algorithm>
#include <memory>
#include <optional>
#include <unordered_map>

namespace quelm {
namespace {

/// What became of a card, for the groups that point at it.
struct CardFate {
    std::size_t line = 0;
    std::string entry;    ///< name of its first entry; empty when it has none
    bool refused = false; ///< otherwise it may have had no fax number
};

/// A group whose members are looked up once all cards are read.
struct PendingGroup {
    std::size_t position = 0; ///< in the list of contacts
    std::size_t line = 0;
    std::string name;
    std::vector<std::string> references;
};

/// Takes over a text that GLib allocated.
std::string takeText(char* text)
{
    const std::unique_ptr<char, decltype(&g_free)> owned(text, g_free);
    return text == nullptr ? "" : text;
}

std::string lowered(std::string_view text)
{
    return takeText(g_ascii_strdown(text.data(), static_cast<gssize>(text.size())));
}

/// The same for "urn:uuid:4FBE..." and "4fbe...".
std::string normalizedId(std::string_view id)
{
    auto text = lowered(id);
    constexpr std::string_view scheme = "urn:uuid:";
    return text.starts_with(scheme) ? text.substr(scheme.size()) : text;
}

class CardReader {
public:
    Contacts read(std::string_view text)
    {
        for (const auto& card : findCards(text))
            if (card.problem.empty())
                readCard(card);
            else
                refuse(card.line, card.problem);
        placeGroups();
        std::ranges::stable_sort(all_.refused, {}, &Refusal::line);
        return std::move(all_);
    }

private:
    void readCard(const CardText& found)
    {
        const Card card(found.text);
        const auto version = card.text("VERSION");
        if (version != "2.1" && version != "3.0" && version != "4.0") {
            refuse(found.line,
                   version.empty()
                       ? localized("names no VERSION; save it as vCard 2.1, 3.0 or 4.0")
                       : localized("is of version %s; save it as vCard 2.1, 3.0 or 4.0", version));
            return;
        }
        if (card.isGroup()) {
            readGroup(found.line, card);
            return;
        }
        const auto refusedBefore = all_.refused.size();
        const auto contactsBefore = all_.contacts.size();
        addEntries(found.line, card);
        CardFate fate{found.line, "", all_.refused.size() != refusedBefore};
        if (all_.contacts.size() != contactsBefore)
            fate.entry = std::get<PhonebookEntry>(all_.contacts[contactsBefore].content).name;
        if (const auto id = card.text("UID"); !id.empty())
            fates_.emplace(normalizedId(id), std::move(fate));
    }

    void addEntries(std::size_t line, const Card& card)
    {
        Person person;
        person.line = line;
        person.name = card.name();
        person.organization = card.text("ORG", ", ");
        for (const auto& telephone : card.numbers("TEL")) {
            if (telephone.fax)
                person.faxes.push_back({telephone.value, telephone.use});
            if (telephone.voice)
                person.phones.push_back({telephone.value, telephone.use});
        }
        for (const auto& address : card.numbers("EMAIL"))
            person.emails.push_back({address.value, address.use});
        person.categories = card.words("CATEGORIES");
        // What address books mark as theirs.
        std::erase_if(person.categories, [](const std::string& category) {
            const auto word = lowered(category);
            return word == "mycontacts" || word == "starred";
        });
        addPerson(all_, person);
    }

    void readGroup(std::size_t line, const Card& card)
    {
        if (auto members = card.texts(memberProperty); !members.empty()) {
            addContact(all_, line, PhonebookGroup{card.name(), std::move(members)});
            return;
        }
        PendingGroup group{all_.contacts.size(), line, card.name(), card.texts("MEMBER")};
        for (auto& reference : card.texts(oldMemberProperty))
            group.references.push_back(std::move(reference));
        groups_.push_back(std::move(group));
    }

    /// Puts the groups whose members are cards where they stand among the others.
    void placeGroups()
    {
        Contacts placed;
        auto pending = groups_.begin();
        for (std::size_t i = 0; i <= all_.contacts.size(); ++i) {
            for (; pending != groups_.end() && pending->position == i; ++pending)
                if (auto group = resolved(*pending))
                    addContact(placed, pending->line, std::move(*group));
            if (i < all_.contacts.size())
                placed.contacts.push_back(std::move(all_.contacts[i]));
        }
        all_.contacts = std::move(placed.contacts);
        std::ranges::move(placed.refused, std::back_inserter(all_.refused));
    }

    std::optional<PhonebookGroup> resolved(const PendingGroup& pending)
    {
        PhonebookGroup group{pending.name, {}};
        for (const auto& reference : pending.references) {
            const auto fate = fates_.find(normalizedId(reference));
            if (fate == fates_.end() || fate->second.refused) {
                refuse(pending.line, fate == fates_.end()
                                         ? localized("its member %s is no card of this file", reference)
                                         : localized("its member on line %d is refused", fate->second.line));
                return std::nullopt;
            }
            // A card without a fax number was passed over; the group goes without it.
            if (!fate->second.entry.empty())
                group.members.push_back(fate->second.entry);
        }
        return group;
    }

    void refuse(std::size_t line, const std::string& reason) { all_.refused.push_back({line, reason}); }

    Contacts all_;
    std::vector<PendingGroup> groups_;
    std::unordered_map<std::string, CardFate> fates_;
};

} // namespace

bool isVcardText(std::string_view text)
{
    if (text.starts_with("\xef\xbb\xbf"))
        text.remove_prefix(3);
    text.remove_prefix(std::min(text.find_first_not_of(" \t\r\n"), text.size()));
    constexpr std::string_view begin = "BEGIN:VCARD";
    return text.size() >= begin.size() && g_ascii_strncasecmp(text.data(), begin.data(), begin.size()) == 0;
}

Contacts readVcards(std::string_view text) { return CardReader().read(text); }

} // namespace quelm
