// Questions to a card of the vCard library.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/phonebook/vcard_card.h"

#include "driver/phonebook/vcard_names.h"

#include <algorithm>
#include <array>
#include <cstdlib>

namespace quelm {
namespace {

/// What the library says of odd lines is not for the user, who hears of a card that cannot be used.
class LibraryKeptQuiet {
public:
    LibraryKeptQuiet() : previous_(g_log_set_default_handler(ignore, nullptr)) {}
    ~LibraryKeptQuiet() { g_log_set_default_handler(previous_, nullptr); }
    LibraryKeptQuiet(const LibraryKeptQuiet&) = delete;
    LibraryKeptQuiet& operator=(const LibraryKeptQuiet&) = delete;

private:
    static void ignore(const gchar*, GLogLevelFlags, const gchar*, gpointer) {}

    GLogFunc previous_;
};

bool isSame(std::string_view left, std::string_view right)
{
    return left.size() == right.size() && g_ascii_strncasecmp(left.data(), right.data(), left.size()) == 0;
}

/// The values in one of GLib's lists of texts.
std::vector<std::string_view> viewsOf(const GList* list)
{
    std::vector<std::string_view> views;
    for (; list != nullptr; list = list->next)
        views.emplace_back(static_cast<const char*>(list->data));
    return views;
}

std::vector<EVCardAttribute*> attributesOf(EVCard* card, std::string_view property)
{
    std::vector<EVCardAttribute*> found;
    for (const GList* item = e_vcard_get_attributes(card); item != nullptr; item = item->next) {
        auto* attribute = static_cast<EVCardAttribute*>(item->data);
        if (isSame(e_vcard_attribute_get_name(attribute), property))
            found.push_back(attribute);
    }
    return found;
}

/// The components of a value, decoded and in UTF-8.
std::vector<std::string> componentsOf(EVCardAttribute* attribute)
{
    std::vector<std::string> components;
    for (const GList* item = e_vcard_attribute_get_values_decoded(attribute); item != nullptr;
         item = item->next) {
        const auto* value = static_cast<const GString*>(item->data);
        components.emplace_back(value->str, value->len);
    }
    return components;
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
std::vector<std::string_view> parameterOf(EVCardAttribute* attribute, std::string_view name)
{
    std::vector<std::string_view> words;
    for (const GList* item = e_vcard_attribute_get_params(attribute); item != nullptr; item = item->next) {
        auto* parameter = static_cast<EVCardAttributeParam*>(item->data);
        if (!isSame(e_vcard_attribute_param_get_name(parameter), name))
            continue;
        for (auto value : viewsOf(e_vcard_attribute_param_get_values(parameter))) {
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

CardNumber numberOf(EVCardAttribute* attribute)
{
    CardNumber number;
    number.value = joined(componentsOf(attribute), ";");
    number.preference = noPreference;
    const auto types = parameterOf(attribute, "TYPE");
    const auto is = [&types](std::string_view word) {
        return std::ranges::any_of(types, [word](auto type) { return isSame(type, word); });
    };
    if (is("work"))
        number.use = Use::work;
    else if (is("home"))
        number.use = Use::home;
    number.fax = is("fax");
    constexpr std::array speechless{"fax", "pager", "modem", "bbs", "video", "text", "textphone", "isdn"};
    number.voice = is("voice") || std::ranges::none_of(speechless, is);
    if (is("pref"))
        number.preference = 1;
    for (const auto preference : parameterOf(attribute, "PREF")) {
        const int given = std::atoi(std::string(preference).c_str());
        if (given >= 1)
            number.preference = std::min(number.preference, given);
    }
    return number;
}

} // namespace

Card::Card(const std::string& text)
{
    const LibraryKeptQuiet quiet;
    card_.reset(e_vcard_new_from_string(text.c_str()));
    e_vcard_get_attributes(card_.get()); // reads the text now
}

std::string Card::text(std::string_view property, const char* separator) const
{
    const LibraryKeptQuiet quiet;
    for (auto* attribute : attributesOf(card_.get(), property)) {
        auto text = joined(componentsOf(attribute), separator);
        if (!text.empty())
            return text;
    }
    return "";
}

std::vector<std::string> Card::texts(std::string_view property) const
{
    const LibraryKeptQuiet quiet;
    std::vector<std::string> all;
    for (auto* attribute : attributesOf(card_.get(), property))
        all.push_back(joined(componentsOf(attribute), ";"));
    return all;
}

std::string Card::name() const
{
    auto name = text("FN");
    if (!name.empty())
        return name;
    const LibraryKeptQuiet quiet;
    const auto attributes = attributesOf(card_.get(), "N");
    if (attributes.empty())
        return "";
    auto parts = componentsOf(attributes.front());
    parts.resize(3); // family, given and further names; titles are left out
    return joined({parts[1], parts[2], parts[0]}, " ");
}

bool Card::isGroup() const { return isSame(text("KIND"), "group") || isSame(text(oldKindProperty), "group"); }

std::vector<CardNumber> Card::numbers(std::string_view property) const
{
    const LibraryKeptQuiet quiet;
    std::vector<CardNumber> numbers;
    for (auto* attribute : attributesOf(card_.get(), property))
        numbers.push_back(numberOf(attribute));
    std::ranges::stable_sort(numbers, {}, &CardNumber::preference);
    return numbers;
}

} // namespace quelm
