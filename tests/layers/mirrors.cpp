// Looks for the tests of all sources.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "tests/layers/mirrors.h"

#include "tests/layers/layers.h"
#include "tests/layers/quoted_names.h"

#include <algorithm>
#include <fstream>
#include <map>
#include <set>
#include <string_view>

namespace layers {
namespace {

namespace fs = std::filesystem;

using Table = std::map<std::string, std::vector<std::string>>;

/// The tests that the guide names, by source.
Table tableOf(const fs::path& guide)
{
    Table table;
    std::ifstream stream(guide);
    for (std::string line; std::getline(stream, line);) {
        if (!line.starts_with("| `"))
            continue;
        const std::size_t border = line.find('|', 1);
        const std::string_view row = line;
        for (const auto& source : quotedNames(row.substr(0, border)))
            if (source.ends_with(".cpp"))
                table[source] = quotedNames(row.substr(std::min(border, row.size())));
    }
    return table;
}

std::string mirrorOf(const fs::path& source)
{
    return ("tests" / source.parent_path() / (source.stem().string() + "_test.cpp")).generic_string();
}

std::set<std::string> sourcesBelow(const fs::path& root)
{
    std::set<std::string> sources;
    for (const auto& folder : checkedFolders()) {
        if (!fs::is_directory(root / folder))
            continue;
        for (const auto& entry : fs::recursive_directory_iterator(root / folder))
            if (entry.is_regular_file() && entry.path().extension() == ".cpp")
                sources.insert(entry.path().lexically_relative(root).generic_string());
    }
    return sources;
}

} // namespace

Mirrors checkMirrors(const fs::path& root)
{
    Mirrors found;
    const Table table = tableOf(root / "docs/building.md");
    const auto sources = sourcesBelow(root);
    for (const auto& source : sources) {
        const bool mirrored = fs::exists(root / mirrorOf(source));
        const bool named = table.contains(source);
        found.mirrored += mirrored ? 1 : 0;
        found.named += named ? 1 : 0;
        if (!mirrored && !named)
            found.violations.push_back(source + " has no test: write " + mirrorOf(source) +
                                       ", or name in docs/building.md the journey that runs it");
        if (mirrored && named)
            found.violations.push_back(source + " has a test of its own: take it from docs/building.md");
    }
    for (const auto& [source, tests] : table) {
        if (!sources.contains(source))
            found.violations.push_back(source + " is in docs/building.md, but does not exist");
        if (tests.empty())
            found.violations.push_back(source + " is in docs/building.md without a test");
        for (const auto& test : tests)
            if (!test.starts_with("tests/") || !fs::is_regular_file(root / test))
                found.violations.push_back(source + " is run by " + test + ", which does not exist");
    }
    std::ranges::sort(found.violations);
    return found;
}

} // namespace layers
