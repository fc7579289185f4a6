// Writes HTML in which every text is escaped, and every element ended: XML parsers read it, too.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DEVICE_PANEL_HTML_H
#define DEVICE_PANEL_HTML_H

#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>

namespace quelm::device {

/// A piece of a page. Only the functions below make one out of a text, so that nothing gets into a page as
/// it stands.
class Html {
public:
    Html() = default;
    Html& operator+=(const Html& more)
    {
        markup_ += more.markup_;
        return *this;
    }
    friend Html operator+(Html one, const Html& other) { return one += other; }
    [[nodiscard]] const std::string& markup() const { return markup_; }
    [[nodiscard]] bool isEmpty() const { return markup_.empty(); }

private:
    friend Html text(const std::string& content);
    friend Html element(const char* name,
                        std::initializer_list<std::pair<const char*, std::string>> attributes,
                        const Html& content);
    friend Html emptyElement(const char* name,
                             std::initializer_list<std::pair<const char*, std::string>> attributes);

    explicit Html(std::string markup) : markup_(std::move(markup)) {}

    std::string markup_;
};

using HtmlAttributes = std::initializer_list<std::pair<const char*, std::string>>;

/// A text of whatever origin, as one line: control characters are blanks, what is no UTF-8 is U+FFFD.
[[nodiscard]] Html text(const std::string& content);

/// A text that others wrote: its direction changes nothing around it.
[[nodiscard]] Html foreignText(const std::string& content);

/// An element with an end tag. An attribute with an empty value is left out, unless it is `alt`.
[[nodiscard]] Html element(const char* name, HtmlAttributes attributes, const Html& content);
[[nodiscard]] Html element(const char* name, const Html& content);
/// An element that has no content in HTML: "img", "link", "meta".
[[nodiscard]] Html emptyElement(const char* name, HtmlAttributes attributes);

[[nodiscard]] Html link(const std::string& address, const Html& content);

} // namespace quelm::device

#endif
