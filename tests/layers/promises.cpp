// Looks for the tests that hold the promises.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "tests/layers/promises.h"

#include "tests/layers/quoted_names.h"

#include <fstream>
#include <iterator>
#include <regex>
#include <set>
#include <string_view>

namespace layers {
namespace {

namespace fs = std::filesystem;

/// Adds "Suite.Name" of every test that `source` defines.
void addTests(const std::string& source, std::set<std::string>& tests)
{
    static const std::regex definition(R"(TEST(?:_F|_P)?\(\s*(\w+)\s*,\s*(\w+)\s*\))");
    const auto from = [&source](std::size_t at) { return source.begin() + static_cast<std::ptrdiff_t>(at); };
    // Looked for ahead of the expression, which is slow.
    for (std::size_t at = 0; (at = source.find("TEST", at)) != std::string::npos; ++at) {
        std::smatch found;
        if (std::regex_search(from(at), source.end(), found, definition,
                              std::regex_constants::match_continuous))
            tests.insert(found[1].str() + "." + found[2].str());
    }
}

/// "Suite.Name" of every test below `folder`.
std::set<std::string> testsBelow(const fs::path& folder)
{
    std::set<std::string> tests;
    if (!fs::is_directory(folder))
        return tests;
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        if (!entry.is_regular_file() || entry.path().extension() != ".cpp")
            continue;
        std::ifstream stream(entry.path());
        addTests(std::string{std::istreambuf_iterator<char>(stream), {}}, tests);
    }
    return tests;
}

bool isPromise(std::string_view line, std::string_view next)
{
    return line.starts_with("| ") && !line.starts_with("| ---") && !next.starts_with("| ---");
}

/// The cell behind the last border but one.
std::string_view lastCell(std::string_view line)
{
    const auto end = line.rfind('|');
    const auto begin = end == 0 ? end : line.rfind('|', end - 1);
    return line.substr(begin, end - begin);
}

} // namespace

Promises checkPromises(const fs::path& root)
{
    Promises found;
    const auto tests = testsBelow(root / "tests");
    const auto isThere = [&](const std::string& holder) {
        return holder.starts_with("tests/") ? fs::is_regular_file(root / holder) : tests.contains(holder);
    };
    std::ifstream document(root / "docs/assurance.md");
    std::string line;
    std::string next;
    for (std::getline(document, next); document; line.clear()) {
        line.swap(next);
        next.clear();
        std::getline(document, next);
        if (!isPromise(line, next))
            continue;
        const auto promise = line.substr(2, line.find(" |", 2) - 2);
        const auto holders = quotedNames(lastCell(line));
        const auto violations = found.violations.size();
        if (holders.empty())
            found.violations.push_back("\"" + promise + "\" is held by no test");
        for (const auto& holder : holders)
            if (!isThere(holder))
                found.violations.push_back("\"" + promise + "\" is held by " + holder +
                                           ", which does not exist");
        found.kept += found.violations.size() == violations ? 1 : 0;
    }
    return found;
}

} // namespace layers
