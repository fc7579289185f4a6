// Escapes texts and builds elements.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/panel/html.h"

#include "base/texts.h"

namespace quelm::device {
namespace {

std::string escaped(const std::string& content)
{
    std::string result;
    for (const char character : oneLine(content)) {
        switch (character) {
        case '&':
            result += "&amp;";
            break;
        case '<':
            result += "&lt;";
            break;
        case '>':
            result += "&gt;";
            break;
        case '"':
            result += "&quot;";
            break;
        case '\'':
            result += "&#39;";
            break;
        default:
            result += character;
        }
    }
    return result;
}

std::string beginTag(const char* name, HtmlAttributes attributes)
{
    std::string tag = std::string("<") + name;
    for (const auto& [attribute, value] : attributes)
        if (!value.empty() || std::string_view(attribute) == "alt")
            tag += std::string(" ") + attribute + "=\"" + escaped(value) + "\"";
    return tag;
}

} // namespace

Html text(const std::string& content) { return Html(escaped(content)); }

Html foreignText(const std::string& content) { return element("bdi", text(content)); }

Html element(const char* name, HtmlAttributes attributes, const Html& content)
{
    return Html(beginTag(name, attributes) + ">" + content.markup() + "</" + name + ">");
}

Html element(const char* name, const Html& content) { return element(name, {}, content); }

Html emptyElement(const char* name, HtmlAttributes attributes)
{
    return Html(beginTag(name, attributes) + "/>");
}

Html link(const std::string& address, const Html& content)
{
    return element("a", {{"href", address}}, content);
}

} // namespace quelm::device
