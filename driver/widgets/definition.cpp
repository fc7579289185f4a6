// Turns the elements of a dialog definition into widgets.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/widgets/definition.h"

#include "base/error.h"
#include "base/translation.h"

#include <pugixml.hpp>

#include <cstring>
#include <string>

namespace quelm {

namespace {

// Far more than any dialog needs; it keeps a hostile text from exhausting the stack.
constexpr int deepestNesting = 64;

Error definitionError(const std::string& problem)
{
    return Error(localized("the dialog definition cannot be used: %s", problem));
}

/// Where to look in the definition: no name of a widget means anything to people.
std::string describe(const pugi::xml_node& element)
{
    // Translators: the kind of an XML element, and where it stands in the text.
    return localized("element %s at byte %d", element.name(), element.offset_debug());
}

Widget::Attributes attributesOf(const pugi::xml_node& element)
{
    Widget::Attributes attributes;
    for (const pugi::xml_attribute& attribute : element.attributes())
        attributes.emplace_back(attribute.name(), attribute.value());
    return attributes;
}

} // namespace

/// Builds widgets with all that stands in them.
class DefinitionReader {
public:
    explicit DefinitionReader(WidgetListener& changeListener) : listener_(changeListener) {}

    std::unique_ptr<Widget> widget(const pugi::xml_node& element, Widget* parent, int depth) const
    {
        if (depth > deepestNesting)
            throw definitionError(localized("%s is nested too deeply", describe(element)));
        const std::optional<WidgetKind> kind = kindOfElement(element.name());
        if (!kind)
            throw definitionError(localized("%s is of no kind that the driver knows", describe(element)));
        if ((*kind == WidgetKind::dialogWindow) != (parent == nullptr)) {
            throw definitionError(parent == nullptr
                                      ? localized("%s stands outside a DialogWindow", describe(element))
                                      : localized("%s stands inside another widget", describe(element)));
        }
        auto built = std::make_unique<Widget>(listener_, *kind, element.attribute("Name").value(),
                                              attributesOf(element), parent);
        for (const pugi::xml_node& child : element.children())
            if (child.type() == pugi::node_element)
                built->ownChildren_.push_back(widget(child, built.get(), depth + 1));
        return built;
    }

private:
    WidgetListener& listener_;
};

std::vector<std::unique_ptr<Widget>> windowsOfDefinition(WidgetListener& listener,
                                                         std::string_view definition)
{
    pugi::xml_document document;
    const pugi::xml_parse_result result =
        document.load_buffer(definition.data(), definition.size(), pugi::parse_default, pugi::encoding_utf8);
    if (!result) {
        // Translators: %s says what is wrong with the XML text.
        throw definitionError(localized("%s at byte %d", result.description(), result.offset));
    }
    const pugi::xml_node root = document.document_element();
    if (std::strcmp(root.name(), "XmlGuiDefinition") != 0)
        throw definitionError(localized("its root element is \"%s\", not \"XmlGuiDefinition\"", root.name()));
    if (!root.next_sibling().empty())
        throw definitionError(localized("something stands behind its root element"));
    std::vector<std::unique_ptr<Widget>> windows;
    const DefinitionReader reader(listener);
    for (const pugi::xml_node& element : root.children())
        if (element.type() == pugi::node_element)
            windows.push_back(reader.widget(element, nullptr, 0));
    return windows;
}

} // namespace quelm
