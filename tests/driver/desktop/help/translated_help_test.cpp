// Tests of the German help pages against the English ones, and of how both reach the programs.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/desktop/help/help_page.h"
#include "driver/desktop/help/help_window.h"
#include "driver/desktop/toolkit/shown_text.h"
#include "driver/widgets/widget_label.h"
#include "tests/support/build_paths.h"
#include "tests/support/temporary_folder.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <optional>
#include <set>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace quelm {
namespace {

using testing::Contains;

const std::string helpFolder = build_paths::inProject("docs/help");

HelpPage page(const std::string& name) { return parseHelpPage(contentOf(helpFolder + "/" + name)); }

/// The pages of a folder, below the help folder.
std::vector<std::string> pagesIn(const std::string& folder)
{
    std::vector<std::string> names;
    for (const auto& name : std::filesystem::directory_iterator(folder))
        if (name.path().extension() == ".md")
            names.push_back(name.path().filename());
    std::sort(names.begin(), names.end());
    return names;
}

/// A control's text as a page writes it: without its mnemonic, and without the colon or dots at its end.
std::string asWritten(const std::string& text)
{
    std::string written = withoutMnemonic(text);
    for (const std::string_view end : {":", "...", " …"})
        if (written.ends_with(end))
            written.resize(written.size() - end.size());
    return written;
}

/// The German texts of each control, by the English one; all as pages write them.
std::map<std::string, std::set<std::string>> translations()
{
    const auto quoted = [](const std::string& line, std::string_view keyword) -> std::optional<std::string> {
        if (!line.starts_with(keyword) || !line.ends_with('"'))
            return std::nullopt;
        return line.substr(keyword.size(), line.size() - keyword.size() - 1);
    };
    std::map<std::string, std::set<std::string>> found;
    std::istringstream catalogue(contentOf(build_paths::inProject("po/de.po")));
    std::string english;
    for (std::string line; std::getline(catalogue, line);)
        if (const auto text = quoted(line, "msgid \""))
            english = asWritten(*text);
        else if (const auto german = quoted(line, "msgstr \""))
            found[english].insert(asWritten(*german));
    return found;
}

std::vector<std::string> strongTexts(const HelpBlock& block)
{
    std::vector<std::string> texts;
    for (const auto& span : block.spans)
        if (span.strong)
            texts.push_back(asWritten(span.text));
    return texts;
}

TEST(GermanHelp, EveryPageIsTranslated) { EXPECT_EQ(pagesIn(helpFolder + "/de"), pagesIn(helpFolder)); }

TEST(GermanHelp, APageHasTheSectionsAndItemsOfTheEnglishOneAboutTheSamePlaces)
{
    for (const auto& name : pagesIn(helpFolder)) {
        const auto english = page(name);
        const auto german = page("de/" + name);
        ASSERT_EQ(german.size(), english.size()) << name;
        for (std::size_t i = 0; i < english.size(); ++i) {
            const auto where = name + ": " + plainText(english[i]) + " / " + plainText(german[i]);
            EXPECT_EQ(german[i].kind, english[i].kind) << where;
            EXPECT_EQ(german[i].number, english[i].number) << where;
            EXPECT_EQ(german[i].places, english[i].places) << where;
            EXPECT_NE(plainText(german[i]), plainText(english[i])) << where;
            EXPECT_EQ(plainText(german[i]).find("**"), std::string::npos) << where;
        }
    }
}

TEST(GermanHelp, ControlsAreCalledWhatTheyAreCalledOnTheScreen)
{
    const auto german = translations();
    std::size_t controls = 0;
    for (const auto& name : pagesIn(helpFolder)) {
        const auto pages = std::make_pair(page(name), page("de/" + name));
        for (std::size_t i = 0; i < pages.first.size(); ++i) {
            const auto english = strongTexts(pages.first[i]);
            const auto translated = strongTexts(pages.second.at(i));
            ASSERT_EQ(translated.size(), english.size()) << plainText(pages.second[i]);
            for (std::size_t k = 0; k < english.size(); ++k) {
                const auto expected = german.find(english[k]);
                if (expected == german.end()) // a key, or an example
                    continue;
                EXPECT_THAT(expected->second, Contains(translated[k])) << english[k];
                ++controls;
            }
        }
    }
    EXPECT_GT(controls, 50U);
}

TEST(GermanHelp, AUserOfAGermanLanguageGetsIt)
{
    for (const std::vector<std::string>& languages :
         {std::vector<std::string>{"de"}, {"de_AT.UTF-8", "de_AT", "de", "C"}})
        EXPECT_EQ(helpFile(helpFolder, "LanFax", languages), helpFolder + "/de/LanFax.md");
    EXPECT_EQ(helpFile(helpFolder, "LanFax", {"en_GB", "en", "de", "C"}), helpFolder + "/LanFax.md");
    EXPECT_EQ(helpFile(helpFolder, "LanFax", {"fr", "C"}), helpFolder + "/LanFax.md");
}

TEST(StagedHelp, HoldsEveryPageOfEveryLanguage)
{
    std::size_t pages = 0;
    for (const auto& file : std::filesystem::recursive_directory_iterator(helpFolder)) {
        if (file.path().extension() != ".md")
            continue;
        const auto staged = build_paths::inStage("help") / std::filesystem::relative(file.path(), helpFolder);
        EXPECT_EQ(contentOf(staged), contentOf(file.path())) << staged;
        ++pages;
    }
    EXPECT_GE(pages, 4U);
}

} // namespace
} // namespace quelm
