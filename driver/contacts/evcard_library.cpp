// From a card's text to its properties, and back.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/contacts/evcard_library.h"

#include "driver/contacts/evcard.h"

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

std::string textOf(const char* text) { return text == nullptr ? "" : text; }

std::vector<CardParameter> parametersOf(EVCardAttribute* attribute)
{
    std::vector<CardParameter> parameters;
    for (const GList* item = e_vcard_attribute_get_params(attribute); item != nullptr; item = item->next) {
        auto* given = static_cast<EVCardAttributeParam*>(item->data);
        CardParameter parameter{textOf(e_vcard_attribute_param_get_name(given)), {}};
        for (const GList* value = e_vcard_attribute_param_get_values(given); value != nullptr;
             value = value->next)
            parameter.values.push_back(textOf(static_cast<const char*>(value->data)));
        parameters.push_back(std::move(parameter));
    }
    return parameters;
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

EVCardAttribute* attributeOf(const CardProperty& property)
{
    auto* attribute = e_vcard_attribute_new(property.group.empty() ? nullptr : property.group.c_str(),
                                            property.name.c_str());
    for (const auto& given : property.parameters) {
        auto* parameter = e_vcard_attribute_param_new(given.name.c_str());
        for (const auto& value : given.values)
            e_vcard_attribute_param_add_value(parameter, value.c_str());
        e_vcard_attribute_add_param(attribute, parameter);
    }
    for (const auto& component : property.components)
        e_vcard_attribute_add_value(attribute, component.c_str());
    return attribute;
}

} // namespace

std::vector<CardProperty> EvcardLibrary::read(const std::string& card) const
{
    const LibraryKeptQuiet quiet;
    const VcardHandle handle(e_vcard_new_from_string(card.c_str()));
    std::vector<CardProperty> properties;
    for (const GList* item = e_vcard_get_attributes(handle.get()); item != nullptr; item = item->next) {
        auto* attribute = static_cast<EVCardAttribute*>(item->data);
        properties.push_back({textOf(e_vcard_attribute_get_group(attribute)),
                              textOf(e_vcard_attribute_get_name(attribute)), parametersOf(attribute),
                              componentsOf(attribute)});
    }
    return properties;
}

std::string EvcardLibrary::write(const std::vector<CardProperty>& properties) const
{
    const VcardHandle handle(e_vcard_new());
    for (const auto& property : properties)
        e_vcard_append_attribute(handle.get(), attributeOf(property));
    return takeText(e_vcard_to_string(handle.get(), EVC_FORMAT_VCARD_30));
}

} // namespace quelm
