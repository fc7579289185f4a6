// From people to entries.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/phonebook/person.h"

#include "base/texts.h"
#include "base/translation.h"
#include "driver/phonebook/dialled_number.h"
#include "driver/phonebook/vcard_names.h"

#include <algorithm>
#include <array>
#include <utility>

namespace quelm {
namespace {

/// Nobody has as many fax numbers.
constexpr std::size_t mostNumbers = 100;

bool isEmpty(const PersonNumber& number) { return trimmed(number.value).empty(); }

/// The first number for `use`, else one for no particular use and, of a person with faxes of one use only
/// (not `strict`), any.
std::string suitable(const std::vector<PersonNumber>& numbers, Use use, bool strict)
{
    const auto first = [&](auto test) {
        return std::ranges::find_if(
            numbers, [&](const PersonNumber& number) { return !isEmpty(number) && test(number); });
    };
    auto found = first([&](const PersonNumber& number) { return number.use == use; });
    if (found == numbers.end())
        found = first([](const PersonNumber& number) { return number.use == Use::unmarked; });
    if (found == numbers.end() && !strict)
        found = first([](const PersonNumber&) { return true; });
    return found == numbers.end() ? "" : found->value;
}

/// Adds the entries of a person one by one.
class EntryMaker {
public:
    EntryMaker(Contacts& all, const Person& person) : all_(all), person_(person) {}

    void make()
    {
        std::array<std::vector<std::string>, 2> numbers;
        for (const auto& fax : person_.faxes) {
            const auto number = tidied(dialled(fax.value));
            auto& kind = numbers.at(fax.use == Use::home ? 1 : 0);
            if (!number.empty() && std::ranges::find(kind, number) == kind.end())
                kind.push_back(number);
            if (kind.size() > mostNumbers) {
                all_.refused.push_back(
                    {person_.line,
                     localized("has more than %d fax numbers of a kind; mend the card", mostNumbers)});
                return;
            }
        }
        if (numbers[0].empty() && numbers[1].empty()) {
            ++all_.withoutNumber;
            return;
        }
        both_ = !numbers[0].empty() && !numbers[1].empty();
        add(numbers[0], Use::work, "");
        add(numbers[1], Use::home, homeMark);
    }

private:
    std::string dialled(const std::string& text)
    {
        auto [number, hasExtension] = dialledNumber(text);
        all_.extensions += hasExtension ? 1 : 0;
        return std::move(number);
    }

    void add(const std::vector<std::string>& numbers, Use use, std::string_view useMark)
    {
        PhonebookEntry entry;
        entry.organization = person_.organization;
        entry.phone = numbers.empty() ? "" : dialled(suitable(person_.phones, use, both_));
        entry.email = suitable(person_.emails, use, both_);
        const auto name = tidied(std::string_view(person_.name));
        for (std::size_t i = 0; i < numbers.size(); ++i) {
            std::string mark(useMark);
            if (i > 0)
                mark += (use == Use::home ? " " : " - ") + std::to_string(i + 1);
            entry.name = name.empty() ? name : name + mark;
            entry.number = numbers[i];
            Contact contact{person_.line, tidied(entry), mark.size()};
            if (std::exchange(isFirst_, false))
                contact.categories = person_.categories;
            all_.contacts.push_back(std::move(contact));
        }
    }

    Contacts& all_;
    const Person& person_;
    bool both_ = false;
    bool isFirst_ = true;
};

} // namespace

bool hasFax(const Person& person) { return !std::ranges::all_of(person.faxes, isEmpty); }

void addPerson(Contacts& all, const Person& person) { EntryMaker(all, person).make(); }

} // namespace quelm
