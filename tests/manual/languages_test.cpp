// The help in the language of every catalogue.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/command_line/help_page.h"
#include "base/manual/man_page.h"
#include "base/manual/shell_names.h"
#include "base/translation.h"
#include "manual/programs.h"
#include "tests/support/build_paths.h"

#include <gmock/gmock.h>

#include <clocale>
#include <cstdlib>
#include <filesystem>
#include <set>

namespace quelm {
namespace {

using testing::HasSubstr;
using testing::Not;

class InEveryLanguage : public testing::Test {
protected:
    InEveryLanguage() : english_(describedPrograms()) {}
    ~InEveryLanguage() override
    {
        unsetenv("LC_ALL");
        unsetenv("LANGUAGE");
        std::setlocale(LC_ALL, "C");
    }

    static std::set<std::string> languages()
    {
        std::set<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(build_paths::inStage("locale")))
            names.insert(entry.path().filename());
        return names;
    }

    static void speak(const std::string& language)
    {
        setenv("LC_ALL", "C.UTF-8", 1);
        setenv("LANGUAGE", language.c_str(), 1);
        useTranslations(build_paths::inStage("locale"));
    }

    const std::vector<CommandView>& english() const { return english_; }

private:
    std::vector<CommandView> english_;
};

void addTexts(std::set<std::string>& texts, const std::vector<ExplainedWords>& words)
{
    for (const auto& one : words)
        texts.insert(one.text);
}

/// All that the help says of a program, as it stands in the sources.
std::set<std::string> textsOf(const CommandView& program)
{
    std::set<std::string> texts;
    forEachCommand(program, [&texts](const CommandView& command) {
        texts.insert(command.description);
        texts.insert(command.texts.details.begin(), command.texts.details.end());
        addTexts(texts, command.texts.examples);
        addTexts(texts, command.texts.environment);
        addTexts(texts, command.texts.files);
        for (const auto* options : {&command.options, &command.places})
            for (const auto& option : *options) {
                texts.insert(option.description);
                texts.insert(option.section);
            }
    });
    return texts;
}

TEST_F(InEveryLanguage, EveryTextOfTheHelpIsTranslated)
{
    ASSERT_TRUE(languages().contains("de"));
    for (const auto& language : languages()) {
        speak(language);
        for (const auto& program : english())
            for (const auto& text : textsOf(program)) {
                std::vector<char> translation(4096);
                EXPECT_TRUE(translate(text.c_str(), translation.data())) << language << ": " << text;
            }
    }
}

TEST_F(InEveryLanguage, TheWordsOfTheHelpItselfAre)
{
    for (const auto& language : languages()) {
        speak(language);
        for (const auto& program : describedPrograms())
            forEachCommand(program, [&](const CommandView& command) {
                const auto page = helpPage(command);
                for (const char* word :
                     {"Usage: ", "\nOptions:", "\nCommands:", "\nArguments:", "\nExamples:", "[OPTIONS]",
                      " COMMAND\n", "(required)", "(not with", "(only with", "may stand here, too"})
                    EXPECT_THAT(page, Not(HasSubstr(word))) << language << ": " << command.path;
            });
    }
}

TEST_F(InEveryLanguage, SoAreTheHeadingsOfManualPages)
{
    for (const auto& language : languages()) {
        speak(language);
        for (const auto& program : describedPrograms())
            for (const auto& page : manPages(program, "2026-11-23"))
                for (const char* heading : {"NAME", "SYNOPSIS", "DESCRIPTION", "COMMANDS", "ARGUMENTS",
                                            "OPTIONS", "ENVIRONMENT", "FILES", "EXAMPLES", "SEE ALSO"})
                    EXPECT_THAT(page.text, Not(HasSubstr(".SH \"" + std::string(heading) + "\"")))
                        << language << ": " << page.name;
    }
}

} // namespace
} // namespace quelm
