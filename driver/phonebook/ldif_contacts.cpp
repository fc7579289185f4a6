// People and groups in LDIF, as directories and address books have them.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/texts.h"
#include "base/translation.h"
#include "driver/phonebook/contacts.h"
#include "driver/phonebook/ldif_records.h"
#include "driver/phonebook/person.h"

#include <glib.h>

#include <algorithm>
#include <initializer_list>
#include <unordered_map>
#include <utility>

namespace quelm {
namespace {

std::string firstOf(const LdifRecord& record, std::initializer_list<std::string_view> names)
{
    for (const auto name : names)
        if (auto text = record.text(name); !text.empty())
            return text;
    return "";
}

bool isGroup(const LdifRecord& record)
{
    const auto classes = record.texts("objectclass");
    return std::ranges::any_of(classes, [](const std::string& text) {
        return g_ascii_strcasecmp(text.c_str(), "groupOfNames") == 0 ||
               g_ascii_strcasecmp(text.c_str(), "groupOfUniqueNames") == 0;
    });
}

std::string nameOf(const LdifRecord& record)
{
    auto name = firstOf(record, {"displayname", "cn", "commonname"});
    if (!name.empty())
        return name;
    const auto given = record.text("givenname");
    const auto family = firstOf(record, {"sn", "surname"});
    return given.empty() || family.empty() ? given + family : given + " " + family;
}

Person personOf(const LdifRecord& record)
{
    Person person;
    person.line = record.line;
    person.name = nameOf(record);
    person.organization = firstOf(record, {"o", "organizationname", "company"});
    if (person.name.empty())
        person.name = person.organization;
    const auto add = [&](std::vector<PersonNumber>& numbers, std::string_view name, Use use) {
        for (const auto& value : record.texts(name))
            // Behind "$" directories say how well a fax machine draws.
            numbers.push_back({value.substr(0, value.find('$')), use});
    };
    add(person.faxes, "facsimiletelephonenumber", Use::work);
    add(person.faxes, "fax", Use::work);
    add(person.faxes, "otherfacsimiletelephonenumber", Use::unmarked);
    add(person.faxes, "homefacsimiletelephonenumber", Use::home);
    add(person.faxes, "homefax", Use::home);
    add(person.phones, "telephonenumber", Use::work);
    add(person.phones, "homephone", Use::home);
    add(person.phones, "mobile", Use::unmarked);
    add(person.phones, "mobiletelephonenumber", Use::unmarked);
    for (const auto* name : {"mail", "rfc822mailbox"})
        for (auto& address : record.texts(name))
            person.emails.push_back({std::move(address), Use::unmarked});
    for (const auto* name : {"category", "categories"})
        for (auto& category : record.texts(name))
            person.categories.push_back(std::move(category));
    return person;
}

/// What became of a record, for the groups that name it.
struct RecordFate {
    std::string name; ///< of its first entry; empty when it has no fax number
    std::size_t refusedOn = 0;
};

/// The records by their distinguished names.
class Fates {
public:
    void add(const std::string& dn, const RecordFate& fate)
    {
        asWritten_.emplace(dn, fate);
        plain_.emplace(plainDn(dn), fate);
    }

    /// That of a name as it is written, or else of one of the same meaning; null when there is none. Names of
    /// ours may differ in their capitals alone.
    const RecordFate* find(const std::string& dn) const
    {
        if (const auto fate = asWritten_.find(dn); fate != asWritten_.end())
            return &fate->second;
        const auto fate = plain_.find(plainDn(dn));
        return fate == plain_.end() ? nullptr : &fate->second;
    }

private:
    std::unordered_map<std::string, RecordFate> asWritten_;
    std::unordered_map<std::string, RecordFate> plain_;
};

/// A group's members are looked up once all records are read.
void addGroup(Contacts& all, const LdifRecord& record, const Fates& fates)
{
    PhonebookGroup group{firstOf(record, {"cn", "commonname", "displayname"}), {}};
    for (const auto* attribute : {"member", "uniquemember"})
        for (const auto& member : record.texts(attribute)) {
            const auto* fate = fates.find(member);
            if (fate == nullptr)
                group.members.push_back(firstValueOfDn(member)); // the phonebook may have it
            else if (fate->refusedOn != 0)
                return all.refused.push_back(
                    {record.line, localized("its member on line %d is refused", fate->refusedOn)});
            else if (!fate->name.empty())
                group.members.push_back(fate->name);
        }
    addContact(all, record.line, std::move(group));
}

/// A line of LDIF; in base64 where it would not come back as it is.
std::string lineOf(const std::string& name, const std::string& value)
{
    const bool isPlain = std::ranges::all_of(value, isPrintableAscii) && !value.starts_with(' ') &&
                         !value.starts_with(':') && !value.starts_with('<') && !value.ends_with(' ');
    std::string line = name + ": " + value;
    if (!isPlain) {
        char* const encoded = g_base64_encode(reinterpret_cast<const guchar*>(value.data()), value.size());
        line = name + ":: " + encoded;
        g_free(encoded);
    }
    // Lines of at most 76 bytes; what goes on begins with a blank.
    constexpr std::size_t most = 76;
    std::string folded = line.substr(0, most);
    for (auto at = folded.size(); at < line.size(); at += most - 1)
        folded += "\n " + line.substr(at, most - 1);
    return folded + "\n";
}

/// A text as a value within a distinguished name.
std::string escaped(const std::string& text)
{
    std::string result;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const bool isEdge = at == 0 || at + 1 == text.size();
        if (std::string_view(",+\"\\<>;=").find(text[at]) != std::string_view::npos ||
            (text[at] == ' ' && isEdge) || (text[at] == '#' && at == 0))
            result += '\\';
        result += text[at];
    }
    return result;
}

std::string dnOf(const std::string& name, const char* unit) { return "cn=" + escaped(name) + ",ou=" + unit; }

std::string recordOf(const PhonebookEntry& entry)
{
    const auto blank = entry.name.rfind(' ');
    auto text = lineOf("dn", dnOf(entry.name, "people"));
    for (const auto* kind : {"top", "person", "organizationalPerson", "inetOrgPerson"})
        text += lineOf("objectClass", kind);
    text += lineOf("cn", entry.name);
    // Everybody has to have one; the last word is taken for it.
    text += lineOf("sn", blank == std::string::npos ? entry.name : entry.name.substr(blank + 1));
    text += lineOf("facsimileTelephoneNumber", entry.number);
    for (const auto& [name, value] :
         {std::pair{"o", &entry.organization}, {"telephoneNumber", &entry.phone}, {"mail", &entry.email}})
        if (!value->empty())
            text += lineOf(name, *value);
    return text;
}

std::string recordOf(const PhonebookGroup& group)
{
    auto text = lineOf("dn", dnOf(group.name, "groups"));
    for (const auto* kind : {"top", "groupOfNames"})
        text += lineOf("objectClass", kind);
    text += lineOf("cn", group.name);
    for (const auto& member : group.members)
        text += lineOf("member", dnOf(member, "people"));
    return text;
}

} // namespace

Contacts readLdif(std::string_view text)
{
    const auto records = readLdifRecords(text);
    Contacts all;
    Fates fates;
    std::vector<Contacts> people(records.size());
    for (std::size_t i = 0; i < records.size(); ++i) {
        const auto& record = records[i];
        RecordFate fate;
        if (!record.problem.empty()) {
            people[i].refused.push_back({record.line, record.problem});
        } else if (!isGroup(record)) {
            addPerson(people[i], personOf(record));
            if (!people[i].contacts.empty())
                fate.name = std::get<PhonebookEntry>(people[i].contacts.front().content).name;
        }
        if (!people[i].refused.empty())
            fate.refusedOn = record.line;
        if (!record.dn.empty() && !isGroup(record))
            fates.add(record.dn, fate);
    }
    for (std::size_t i = 0; i < records.size(); ++i) {
        if (records[i].problem.empty() && isGroup(records[i])) {
            addGroup(all, records[i], fates);
            continue;
        }
        std::ranges::move(people[i].contacts, std::back_inserter(all.contacts));
        std::ranges::move(people[i].refused, std::back_inserter(all.refused));
        all.withoutNumber += people[i].withoutNumber;
        all.extensions += people[i].extensions;
    }
    return all;
}

bool isLdifText(std::string_view text)
{
    while (!text.empty()) {
        const auto end = std::min(text.find_first_of("\r\n"), text.size());
        const auto line = trimmed(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
        if (line.empty() || line.starts_with('#'))
            continue;
        const auto begins = [&](std::string_view word) {
            return line.size() >= word.size() &&
                   g_ascii_strncasecmp(line.data(), word.data(), word.size()) == 0;
        };
        return begins("dn:") || begins("version:");
    }
    return false;
}

std::string writeLdif(const std::vector<std::variant<PhonebookEntry, PhonebookGroup>>& contents)
{
    std::string text = "version: 1\n";
    for (const auto& content : contents)
        text += "\n" + std::visit([](const auto& one) { return recordOf(one); }, content);
    return text;
}

} // namespace quelm
