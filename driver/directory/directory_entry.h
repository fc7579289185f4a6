// One result of a directory search: attribute names with their first values, fit to be shown.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_DIRECTORY_DIRECTORY_ENTRY_H
#define DRIVER_DIRECTORY_DIRECTORY_ENTRY_H

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace quelm {

/// `bytes` as one line of valid UTF-8: what is no UTF-8 becomes the replacement character, control
/// characters and line separators become blanks. Values go into list rows and from there into the
/// print stream, where a line end would start a line of the sender's choosing.
std::string directoryText(std::string_view bytes);

/// True when the two name one attribute: letter case does not matter.
bool sameAttribute(std::string_view left, std::string_view right);

/// The attributes of one entry, in the server's order.
class DirectoryEntry {
public:
    /// Adds an attribute with the bytes of its first value.
    void add(std::string_view name, std::string_view value);

    /// The value of the attribute, or null. Names match without regard to case. An attribute with
    /// options ("sn;lang-de") also answers to its bare name, unless the entry has that itself.
    const std::string* find(std::string_view name) const;

    /// The bytes of all names and values.
    std::size_t size() const;

private:
    std::vector<std::pair<std::string, std::string>> attributes_;
};

} // namespace quelm

#endif
