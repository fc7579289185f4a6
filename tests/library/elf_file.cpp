// readelf's tables, taken apart.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "tests/library/elf_file.h"

#include <cxxabi.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <utility>

namespace {

std::vector<std::string> words(const std::string& line)
{
    std::istringstream stream(line);
    std::vector<std::string> result;
    for (std::string word; stream >> word;)
        result.push_back(word);
    return result;
}

/// The name of "gettext", "malloc@GLIBC_2.2.5" or "name@@VERSION", without its version, and the version.
std::pair<std::string, std::string> nameAndVersion(const std::string& text)
{
    const auto at = text.find('@');
    if (at == std::string::npos)
        return {text, ""};
    return {text.substr(0, at), text.substr(text.find_first_not_of('@', at))};
}

} // namespace

ElfFile::ElfFile(std::string file) : path_(std::move(file)) {}

std::vector<std::string> ElfFile::readelf(const std::string& option) const
{
    const std::string command = "LC_ALL=C '" READELF "' --wide " + option + " '" + path_ + "' 2>&1";
    FILE* output = popen(command.c_str(), "r");
    if (output == nullptr)
        throw std::runtime_error("cannot run " + command);
    std::string text;
    for (int c; (c = std::fgetc(output)) != EOF;)
        text += static_cast<char>(c);
    if (pclose(output) != 0)
        throw std::runtime_error(command + ": " + text);

    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    if (lines.size() < 3)
        throw std::runtime_error(command + ": an empty table");
    return lines;
}

std::vector<DynamicSymbol> ElfFile::dynamicSymbols() const
{
    // "   Num:    Value          Size Type    Bind   Vis      Ndx Name"
    std::vector<DynamicSymbol> symbols;
    for (const std::string& line : readelf("--dyn-syms")) {
        const auto word = words(line);
        if (word.size() < 8 || word[0] == "Num:" || word[0].back() != ':')
            continue;
        const auto [name, version] = nameAndVersion(word[7]);
        symbols.push_back(
            {name, version, word[3], word[4], word[6] != "UND", std::strtoll(word[2].c_str(), nullptr, 0)});
    }
    return symbols;
}

std::vector<DynamicEntry> ElfFile::dynamicEntries() const
{
    // " 0x0000000000000001 (NEEDED)             Shared library: [libc.so.6]"
    std::vector<DynamicEntry> entries;
    for (const std::string& line : readelf("--dynamic")) {
        const auto word = words(line);
        if (word.size() < 3 || word[0].rfind("0x", 0) != 0)
            continue;
        std::string value = line.substr(line.find(word[1]) + word[1].size());
        if (const auto open = value.find('['); open != std::string::npos)
            value = value.substr(open + 1, value.rfind(']') - open - 1);
        entries.push_back({word[1].substr(1, word[1].size() - 2), value});
    }
    return entries;
}

std::vector<std::string> ElfFile::relocatedNames() const
{
    // "Offset  Info  R_X86_64_JUMP_SLOT  0000000000000000 GetWidgetByName + 0"; without a name
    // the addend, or nothing, stands alone.
    std::vector<std::string> names;
    for (const std::string& line : readelf("--relocs")) {
        const auto word = words(line);
        if (word.size() >= 5 && word[2].rfind("R_", 0) == 0)
            names.push_back(nameAndVersion(word[4]).first);
    }
    return names;
}

std::string ElfFile::stackFlags() const
{
    // "  GNU_STACK  0x000000 0x0000000000000000 0x0000000000000000 0x000000 0x000000 RW  0x10"
    for (const std::string& line : readelf("--program-headers")) {
        const auto word = words(line);
        if (word.empty() || word[0] != "GNU_STACK")
            continue;
        std::string flags;
        for (std::size_t i = 6; i + 1 < word.size(); ++i)
            flags += word[i];
        return flags;
    }
    throw std::runtime_error(path_ + " has no stack header");
}

bool ElfFile::closesItsTables() const
{
    const auto headers = readelf("--program-headers");
    return std::any_of(headers.begin(), headers.end(), [](const std::string& line) {
        const auto word = words(line);
        return !word.empty() && word[0] == "GNU_RELRO";
    });
}

std::string demangled(const std::string& name)
{
    int status = 0;
    const std::unique_ptr<char, decltype(&std::free)> text(
        abi::__cxa_demangle(name.c_str(), nullptr, nullptr, &status), &std::free);
    return text ? text.get() : name;
}
