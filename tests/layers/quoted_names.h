// Names in the tables of the documentation.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef TESTS_LAYERS_QUOTED_NAMES_H
#define TESTS_LAYERS_QUOTED_NAMES_H

#include <string>
#include <string_view>
#include <vector>

namespace layers {

/// The names between pairs of backticks.
inline std::vector<std::string> quotedNames(std::string_view text)
{
    std::vector<std::string> names;
    for (std::size_t begin = 0; (begin = text.find('`', begin)) != std::string_view::npos;) {
        const std::size_t end = text.find('`', ++begin);
        if (end == std::string_view::npos)
            break;
        names.emplace_back(text.substr(begin, end - begin));
        begin = end + 1;
    }
    return names;
}

} // namespace layers

#endif
