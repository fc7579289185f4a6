// From entries and groups to cards.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/module.h"
#include "driver/phonebook/contacts.h"
#include "driver/phonebook/vcard_library.h"
#include "driver/phonebook/vcard_names.h"

#include <glib.h>

#include <array>
#include <initializer_list>
#include <memory>
#include <unordered_map>
#include <unordered_set>

namespace quelm {
namespace {

/// A lasting identifier made from a name (a UUID of version 5), so that an address book that reads a
/// later export finds the cards that it has.
std::string identifier(const std::string& key)
{
    constexpr std::array<guchar, 16> nameSpace{0x5d, 0x0b, 0x3a, 0x41, 0x7e, 0x0c, 0x4c, 0x2b,
                                               0x9a, 0x53, 0x18, 0xf6, 0x2f, 0xd1, 0x64, 0xe9};
    const std::unique_ptr<GChecksum, decltype(&g_checksum_free)> sum(g_checksum_new(G_CHECKSUM_SHA1),
                                                                     g_checksum_free);
    g_checksum_update(sum.get(), nameSpace.data(), nameSpace.size());
    g_checksum_update(sum.get(), reinterpret_cast<const guchar*>(key.data()),
                      static_cast<gssize>(key.size()));
    std::string digits = g_checksum_get_string(sum.get());
    constexpr std::size_t versionAt = 12;
    constexpr std::size_t variantAt = 16;
    digits[versionAt] = '5';
    digits[variantAt] = "89ab"[digits[variantAt] % 4];
    return "urn:uuid:" + digits.substr(0, 8) + "-" + digits.substr(8, 4) + "-" + digits.substr(12, 4) + "-" +
           digits.substr(16, 4) + "-" + digits.substr(20, 12);
}

using Properties = std::vector<CardProperty>;

void addText(Properties& card, const char* property, const std::string& value,
             std::initializer_list<std::string> types = {})
{
    std::vector<CardParameter> parameters;
    if (types.size() > 0)
        parameters.push_back({"TYPE", types});
    card.push_back({"", property, std::move(parameters), {value}});
}

/// Lines of at most 75 bytes, as readers of cards expect: a longer one goes on behind a blank on the
/// next, and no character is parted.
std::string folded(std::string_view text)
{
    constexpr std::size_t most = 75;
    std::string result;
    std::size_t length = 0;
    for (std::size_t at = 0; at < text.size();) {
        std::size_t size = 1;
        while (at + size < text.size() && (static_cast<unsigned char>(text[at + size]) & 0xC0U) == 0x80U)
            ++size;
        const bool lineEnd = text[at] == '\r' || text[at] == '\n';
        if (!lineEnd && length + size > most) {
            result += "\r\n ";
            length = 1;
        }
        result += text.substr(at, size);
        length = lineEnd ? 0 : length + size;
        at += size;
    }
    return result;
}

class CardWriter {
public:
    using Content = std::variant<PhonebookEntry, PhonebookGroup>;

    CardWriter(const std::vector<Content>& contents, VcardVersion version)
        : contents_(contents), version_(version)
    {
        for (const auto& content : contents_)
            if (const auto* entry = std::get_if<PhonebookEntry>(&content))
                entries_.emplace(entry->name, entry);
    }

    std::string writeAll()
    {
        for (const auto& content : contents_) {
            if (const auto* entry = std::get_if<PhonebookEntry>(&content)) {
                if (cardOf(*entry) == entry)
                    writeCard(*entry);
            } else {
                writeGroup(std::get<PhonebookGroup>(content));
            }
        }
        return std::move(text_);
    }

private:
    /// The entry on whose card an entry stands: a home entry may stand on that of the same person.
    const PhonebookEntry* cardOf(const PhonebookEntry& entry) const
    {
        const auto* own = entries_.at(entry.name);
        if (!isHomeName(entry.name))
            return own;
        const auto base = entries_.find(cardNameOf(entry.name));
        const bool together = base != entries_.end() && !isHomeName(base->first) &&
                              base->second->organization == entry.organization;
        return together ? base->second : own;
    }

    static Properties start(const std::string& name, const std::string& key)
    {
        Properties card;
        addText(card, "FN", name);
        addName(card, name);
        addText(card, "UID", identifier(key));
        return card;
    }

    /// N: the last word is taken for the family's name.
    static void addName(Properties& card, const std::string& name)
    {
        const auto blank = name.rfind(' ');
        const auto family = blank == std::string::npos ? name : name.substr(blank + 1);
        const auto given = blank == std::string::npos ? "" : name.substr(0, blank);
        card.push_back({"", "N", {}, {family, given, "", "", ""}});
    }

    void writeCard(const PhonebookEntry& entry)
    {
        const auto name = cardNameOf(entry.name);
        auto card = start(name, entry.name);
        if (!entry.organization.empty())
            addText(card, "ORG", entry.organization);
        addNumbers(card, entry);
        const auto home = entries_.find(entry.name + std::string(homeMark));
        if (home != entries_.end() && cardOf(*home->second) == &entry)
            addNumbers(card, *home->second);
        finish(card);
    }

    static void addNumbers(Properties& card, const PhonebookEntry& entry)
    {
        const char* use = isHomeName(entry.name) ? "home" : "work";
        addText(card, "TEL", entry.number, {use, "fax"});
        if (!entry.phone.empty())
            addText(card, "TEL", entry.phone, {use, "voice"});
        if (!entry.email.empty())
            addText(card, "EMAIL", entry.email, {use});
    }

    void writeGroup(const PhonebookGroup& group)
    {
        const bool recent = version_ == VcardVersion::v4;
        // No entry's name begins so: names hold no ":".
        auto card = start(group.name, "group:" + group.name);
        addText(card, recent ? "KIND" : oldKindProperty, "group");
        std::unordered_set<std::string> named;
        for (const auto& member : group.members) {
            const auto entry = entries_.find(member);
            if (entry == entries_.end())
                continue;
            const auto id = identifier(cardOf(*entry->second)->name);
            if (named.insert(id).second)
                addText(card, recent ? "MEMBER" : oldMemberProperty, id);
        }
        for (const auto& member : group.members)
            addText(card, memberProperty, member);
        finish(card);
    }

    void finish(const Properties& card)
    {
        auto text = part<VcardLibrary>().write(card);
        // The library writes 3.0 alone. What is used here reads the same in 4.0 but for the number.
        constexpr std::string_view old = "VERSION:3.0";
        if (version_ == VcardVersion::v4)
            text.replace(text.find(old), old.size(), "VERSION:4.0");
        text_ += folded(text) + "\r\n";
    }

    const std::vector<Content>& contents_;
    VcardVersion version_;
    std::unordered_map<std::string, const PhonebookEntry*> entries_;
    std::string text_;
};

} // namespace

std::string writeVcards(const std::vector<std::variant<PhonebookEntry, PhonebookGroup>>& contents,
                        VcardVersion version)
{
    return CardWriter(contents, version).writeAll();
}

} // namespace quelm
