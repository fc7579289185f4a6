// Questions to a card that the vCard library has read.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/phonebook/vcard_card.h"

#include "base/module.h"
#include "base/texts.h"
#include "driver/phonebook/csv_header.h"
#include "driver/phonebook/vcard_names.h"

#include <glib.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <utility>

namespace quelm {
namespace {

bool isSame(std::string_view left, std::string_view right)
{
    return left.size() == right.size() && g_ascii_strncasecmp(left.data(), right.data(), left.size()) == 0;
}

std::vector<const CardProperty*> propertiesOf(const std::vector<CardProperty>& card, std::string_view name)
{
    std::vector<const CardProperty*> found;
    for (const auto& property : card)
        if (isSame(property.name, name))
            found.push_back(&property);
    return found;
}

std::string joined(const std::vector<std::string>& components, const char* separator)
{
    std::string text;
    for (const auto& component : components)
        if (!component.empty())
            text += (text.empty() ? "" : separator) + component;
    return text;
}

/// The values of a parameter. Words that stand between commas in one value count one by one.
std::vector<std::string_view> parameterOf(const CardProperty& property, std::string_view name)
{
    std::vector<std::string_view> words;
    for (const auto& parameter : property.parameters) {
        if (!isSame(parameter.name, name))
            continue;
        for (std::string_view value : parameter.values) {
            while (!value.empty()) {
                const auto end = std::min(value.find(','), value.size());
                words.push_back(value.substr(0, end));
                value.remove_prefix(std::min(end + 1, value.size()));
            }
        }
    }
    return words;
}

constexpr int noPreference = 101; // behind PREF=100, the least preferred

CardNumber numberOf(const CardProperty& property)
{
    CardNumber number;
    number.value = joined(property.components, ";");
    number.preference = noPreference;
    const auto types = parameterOf(property, "TYPE");
    const auto is = [&types](std::string_view word) {
        return std::ranges::any_of(types, [word](auto type) { return isSame(type, word); });
    };
    if (is("work"))
        number.use = Use::work;
    else if (is("home"))
        number.use = Use::home;
    number.fax = is("fax");
    for (const auto& [word, use] : {std::pair{"workfax", Use::work},
                                    {"homefax", Use::home},
                                    {"otherfax", number.use},
                                    {"work-fax", Use::work},
                                    {"home-fax", Use::home},
                                    {"x-fax", number.use}})
        if (is(word)) {
            number.fax = true;
            number.use = use;
        }
    constexpr std::array speechless{"fax", "pager", "modem", "bbs", "video", "text", "textphone", "isdn"};
    number.voice = is("voice") || (!number.fax && std::ranges::none_of(speechless, is));
    if (is("pref"))
        number.preference = 1;
    for (const auto preference : parameterOf(property, "PREF")) {
        const int given = std::atoi(std::string(preference).c_str());
        if (given >= 1)
            number.preference = std::min(number.preference, given);
    }
    return number;
}

} // namespace

Card::Card(const std::string& text) : properties_(part<VcardLibrary>().read(text)) {}

std::string Card::text(std::string_view property, const char* separator) const
{
    for (const auto* found : propertiesOf(properties_, property)) {
        auto text = joined(found->components, separator);
        if (!text.empty())
            return text;
    }
    return "";
}

std::vector<std::string> Card::texts(std::string_view property) const
{
    std::vector<std::string> all;
    for (const auto* found : propertiesOf(properties_, property))
        all.push_back(joined(found->components, ";"));
    return all;
}

std::vector<std::string> Card::words(std::string_view property) const
{
    std::vector<std::string> all;
    for (const auto* found : propertiesOf(properties_, property))
        for (std::string_view component : found->components)
            while (!component.empty()) {
                const auto end = std::min(component.find(','), component.size());
                if (const auto word = trimmed(component.substr(0, end)); !word.empty())
                    all.emplace_back(word);
                component.remove_prefix(std::min(end + 1, component.size()));
            }
    return all;
}

std::string Card::labelOf(const std::string& group) const
{
    if (group.empty())
        return "";
    for (const auto* found : propertiesOf(properties_, "X-ABLABEL"))
        if (isSame(found->group, group))
            return joined(found->components, ";");
    return "";
}

std::string Card::name() const
{
    auto name = text("FN");
    if (!name.empty())
        return name;
    const auto found = propertiesOf(properties_, "N");
    if (found.empty())
        return "";
    auto parts = found.front()->components;
    parts.resize(3); // family, given and further names; titles are left out
    return joined({parts[1], parts[2], parts[0]}, " ");
}

bool Card::isGroup() const { return isSame(text("KIND"), "group") || isSame(text(oldKindProperty), "group"); }

std::vector<CardNumber> Card::numbers(std::string_view property) const
{
    std::vector<CardNumber> numbers;
    for (const auto* found : propertiesOf(properties_, property)) {
        auto number = numberOf(*found);
        // "_$!<WorkFAX>!$_", or what the user wrote himself.
        if (const auto label = labelOf(found->group); !label.empty()) {
            if (isFaxLabel(label)) {
                number.fax = true;
                number.voice = false;
            }
            if (number.use == Use::unmarked)
                number.use = useByLabel(label);
        }
        numbers.push_back(std::move(number));
    }
    std::ranges::stable_sort(numbers, {}, &CardNumber::preference);
    return numbers;
}

} // namespace quelm
