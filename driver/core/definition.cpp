// Turns the elements of a dialog definition into widgets.
#include "driver/core/definition.h"

#include "driver/core/error.h"

#include <pugixml.hpp>

#include <cstring>
#include <string>

namespace quelm {

namespace {

// Far more than any dialog needs; it keeps a hostile text from exhausting the stack.
constexpr int deepestNesting = 64;

Error definitionError(const std::string& problem)
{
    return Error("the dialog definition cannot be used: " + problem);
}

std::string describe(const pugi::xml_node& element)
{
    const std::string name = element.attribute("Name").value();
    return std::string("element ") + element.name() + (name.empty() ? "" : " \"" + name + "\"");
}

Widget::Attributes attributesOf(const pugi::xml_node& element)
{
    Widget::Attributes attributes;
    for (const pugi::xml_attribute& attribute : element.attributes()) {
        attributes.emplace_back(attribute.name(), attribute.value());
    }
    return attributes;
}

} // namespace

/// Builds widgets with all that stands in them.
class DefinitionReader {
public:
    explicit DefinitionReader(WidgetTree& owner) : tree(owner) {}

    std::unique_ptr<Widget> widget(const pugi::xml_node& element, Widget* parent, int depth) const
    {
        if (depth > deepestNesting) {
            throw definitionError(describe(element) + " is nested too deeply");
        }
        const std::optional<WidgetKind> kind = kindOfElement(element.name());
        if (!kind) {
            throw definitionError(describe(element) + " is of no kind that the driver knows");
        }
        if ((*kind == WidgetKind::dialogWindow) != (parent == nullptr)) {
            throw definitionError(describe(element) + (parent == nullptr ? " stands outside a DialogWindow"
                                                                         : " stands inside another widget"));
        }
        auto built = std::make_unique<Widget>(tree, *kind, element.attribute("Name").value(),
                                              attributesOf(element), parent);
        for (const pugi::xml_node& child : element.children()) {
            if (child.type() == pugi::node_element) {
                built->ownChildren.push_back(widget(child, built.get(), depth + 1));
            }
        }
        return built;
    }

private:
    WidgetTree& tree;
};

std::vector<std::unique_ptr<Widget>> windowsOfDefinition(WidgetTree& tree, std::string_view definition)
{
    pugi::xml_document document;
    const pugi::xml_parse_result result =
        document.load_buffer(definition.data(), definition.size(), pugi::parse_default, pugi::encoding_utf8);
    if (!result) {
        throw definitionError(std::string(result.description()) + " at byte " +
                              std::to_string(result.offset));
    }
    const pugi::xml_node root = document.document_element();
    if (std::strcmp(root.name(), "XmlGuiDefinition") != 0) {
        throw definitionError(std::string("its root element is \"") + root.name() +
                              "\", not \"XmlGuiDefinition\"");
    }
    if (root.next_sibling()) {
        throw definitionError("something stands behind its root element");
    }
    std::vector<std::unique_ptr<Widget>> windows;
    const DefinitionReader reader(tree);
    for (const pugi::xml_node& element : root.children()) {
        if (element.type() == pugi::node_element) {
            windows.push_back(reader.widget(element, nullptr, 0));
        }
    }
    return windows;
}

} // namespace quelm
