// The build's program that writes manual pages and completions of all programs: write-manual LOCALE OUTPUT.
//
// LOCALE holds the catalogues. Where the environment names no LANGUAGE, it writes the pages in English into
// man/man1/ of the folder OUTPUT, and the completions into completions/bash/, zsh/ and fish/; where it names
// one, the pages in this language into man/LANGUAGE/man1/. SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/atomic_file.h"
#include "base/environment.h"
#include "base/error.h"
#include "base/manual/completions.h"
#include "base/manual/man_page.h"
#include "base/program_end.h"
#include "base/translation.h"
#include "manual/programs.h"

#include <charconv>
#include <ctime>
#include <filesystem>
#include <string>

namespace {

void write(const std::filesystem::path& file, const std::string& text)
{
    std::filesystem::create_directories(file.parent_path());
    quelm::AtomicFile written(file.string());
    written.write(text);
    written.commit();
}

/// Of the sources where packages say so, today otherwise.
std::string dateOfPages()
{
    const auto given = quelm::environmentVariable("SOURCE_DATE_EPOCH");
    std::time_t moment = 0;
    const char* end = given.data() + given.size();
    if (given.empty() || std::from_chars(given.data(), end, moment).ptr != end)
        moment = std::time(nullptr);
    std::tm parts{};
    ::gmtime_r(&moment, &parts);
    constexpr std::size_t room = 16;
    char text[room];
    return {text, std::strftime(text, room, "%Y-%m-%d", &parts)};
}

void writePages(const std::filesystem::path& folder)
{
    const auto date = dateOfPages();
    for (const auto& program : quelm::describedPrograms())
        for (const auto& page : quelm::manPages(program, date))
            write(folder / "man1" / (page.name + ".1"), page.text);
}

void writeCompletions(const std::filesystem::path& folder)
{
    for (const auto& program : quelm::describedPrograms()) {
        write(folder / "bash" / program.name, quelm::bashCompletion(program));
        write(folder / "zsh" / ("_" + program.name), quelm::zshCompletion(program));
        write(folder / "fish" / (program.name + ".fish"), quelm::fishCompletion(program));
    }
}

} // namespace

int main(int argc, char** argv)
{
    return quelm::exitStatusOf("write-manual", [&] {
        if (argc != 3)
            throw quelm::UsageError("give the folders of the catalogues and of the output");
        quelm::useTranslations(argv[1]);
        const std::filesystem::path output = argv[2];
        // Completions are for users of all languages.
        const auto language = quelm::environmentVariable("LANGUAGE");
        writePages(output / "man" / language);
        if (language.empty())
            writeCompletions(output / "completions");
    });
}
