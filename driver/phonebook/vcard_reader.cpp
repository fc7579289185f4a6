// From cards to entries and groups.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/translation.h"
#include "driver/phonebook/contacts.h"
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

/// Nobody has as many fax numbers.
constexpr std::size_t mostNumbers = 100;

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

/// A number as it is dialled: of "tel:+1-555-1234;phone-context=..." the number alone. Nothing when an
/// extension would be lost.
std::optional<std::string> dialled(const std::string& value)
{
    if (!lowered(value).starts_with("tel:"))
        return value;
    if (lowered(value).find(";ext=") != std::string::npos)
        return std::nullopt;
    const auto number =
        value.substr(4, value.find(';') == std::string::npos ? value.npos : value.find(';') - 4);
    auto* plain = g_uri_unescape_string(number.c_str(), nullptr);
    return plain == nullptr ? number : takeText(plain);
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
        if (version != "3.0" && version != "4.0") {
            refuse(found.line, version.empty()
                                   ? localized("names no VERSION; save it as vCard 3.0 or 4.0")
                                   : localized("is of version %s; save it as vCard 3.0 or 4.0", version));
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
        if (fate.refused)
            all_.contacts.resize(contactsBefore); // a card counts as one: all of it or none
        if (all_.contacts.size() != contactsBefore)
            fate.entry = std::get<PhonebookEntry>(all_.contacts[contactsBefore].content).name;
        if (const auto id = card.text("UID"); !id.empty())
            fates_.emplace(normalizedId(id), std::move(fate));
    }

    void addEntries(std::size_t line, const Card& card)
    {
        auto telephones = card.numbers("TEL");
        for (auto& telephone : telephones) {
            const auto number = dialled(telephone.value);
            if (!number && (telephone.fax || telephone.voice))
                return refuse(line,
                              localized("the number %s has an extension; write it as it is to be dialled",
                                        telephone.value));
            telephone.value = tidied(std::string_view(number.value_or("")));
        }
        std::vector<std::string> work;
        std::vector<std::string> home;
        for (const auto& telephone : telephones) {
            auto& numbers = telephone.use == Use::home ? home : work;
            if (telephone.fax && !telephone.value.empty() &&
                std::ranges::find(numbers, telephone.value) == numbers.end())
                numbers.push_back(telephone.value);
            if (numbers.size() > mostNumbers)
                return refuse(
                    line, localized("has more than %d fax numbers of a kind; mend the card", mostNumbers));
        }
        if (work.empty() && home.empty()) {
            ++all_.withoutNumber;
            return;
        }
        std::erase_if(telephones, [](const CardNumber& telephone) { return !telephone.voice; });
        const bool both = !work.empty() && !home.empty();
        const auto addAll = [&](const std::vector<std::string>& numbers, Use use, std::string_view mark) {
            PhonebookEntry entry;
            entry.organization = card.text("ORG", ", ");
            entry.phone = suitable(telephones, use, both);
            entry.email = suitable(card.numbers("EMAIL"), use, both);
            const auto name = tidied(std::string_view(card.name()));
            for (std::size_t i = 0; i < numbers.size(); ++i) {
                entry.name = name.empty() ? name : name + std::string(mark);
                if (i > 0)
                    entry.name += (use == Use::home ? " " : " - ") + std::to_string(i + 1);
                entry.number = numbers[i];
                addContact(all_, line, entry);
            }
        };
        addAll(work, Use::work, "");
        addAll(home, Use::home, homeMark);
    }

    /// The first number for `use`, else one for no particular use and, on a card of one use only (not
    /// `strict`), any.
    static std::string suitable(const std::vector<CardNumber>& numbers, Use use, bool strict)
    {
        const auto first = [&](auto test) {
            return std::ranges::find_if(
                numbers, [&](const CardNumber& number) { return !number.value.empty() && test(number); });
        };
        auto found = first([&](const CardNumber& number) { return number.use == use; });
        if (found == numbers.end())
            found = first([](const CardNumber& number) { return number.use == Use::unmarked; });
        if (found == numbers.end() && !strict)
            found = first([](const CardNumber&) { return true; });
        return found == numbers.end() ? "" : found->value;
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
