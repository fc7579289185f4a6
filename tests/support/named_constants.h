// The constants of a header of widgets' names, read as text.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef TESTS_SUPPORT_NAMED_CONSTANTS_H
#define TESTS_SUPPORT_NAMED_CONSTANTS_H

#include <fstream>
#include <regex>
#include <string>
#include <vector>

/// The values of all constants that a header defines, in its order; nothing for a file that is not there.
inline std::vector<std::string> valuesOfConstants(const std::string& header)
{
    const std::regex constant(R"re(inline constexpr char (\w+)\[\] = "(.*)";)re");
    std::vector<std::string> values;
    std::ifstream stream(header);
    std::smatch found;
    for (std::string line; std::getline(stream, line);)
        if (std::regex_match(line, found, constant))
            values.push_back(found[2]);
    return values;
}

#endif
