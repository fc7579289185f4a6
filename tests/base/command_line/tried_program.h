// A small program with commands, for tests of what is said about programs.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef TESTS_BASE_COMMAND_LINE_TRIED_PROGRAM_H
#define TESTS_BASE_COMMAND_LINE_TRIED_PROGRAM_H

#include "base/command_line/command_view.h"
#include "base/command_line/program_arguments.h"

#include <string>
#include <vector>

namespace quelm::test {

/// quelm-try [--home DIR] (print [--note TEXT] [--pdl dsc|pjl] [--fast|--slow] FILE... | book (list | add)).
class TriedProgram {
public:
    TriedProgram()
    {
        beginProgram(app);
        app.require_subcommand(0, 1);
        app.add_option("--home", text, "The folder")->type_name("DIR");
        app.add_option("DOCUMENT", document, "To be opened")->type_name("");
        auto* print = app.add_subcommand("print", "Prints files")->fallthrough();
        print->add_option("FILE", files, "What to print")->required()->type_name("");
        print->option_defaults()->group("Paper");
        print->add_option("-n,--note", text, "A note on it")->type_name("TEXT");
        print->add_option("--pdl", text, "Its language")->type_name("dsc|pjl");
        print->option_defaults()->group("Speed");
        auto* fast = print->add_flag("--fast", chosen, "In a hurry");
        print->add_flag("--slow", chosen, "With care")->excludes(fast);
        print->add_option("--watch", text, "Who looks on")->type_name("NAME")->needs(fast);
        addHelp(*print,
                {{"All of them come out."}, {{"quelm-try print a.ps", "Prints a file."}}, {}, {}, {}, {}});
        auto* book = app.add_subcommand("book", "Looks into the book")->fallthrough();
        book->require_subcommand(1);
        book->add_subcommand("list", "Lists it")->fallthrough();
        book->add_subcommand("add", "Adds to it")->fallthrough();
        addHelpCommand(app);
    }

    std::string parse(std::vector<const char*> arguments)
    {
        arguments.insert(arguments.begin(), "quelm-try");
        return parseArguments(app, static_cast<int>(arguments.size()), arguments.data());
    }

    CLI::App app{"Tries.", "quelm-try"};
    std::string text;
    std::string document;
    bool chosen = false;
    std::vector<std::string> files;
};

} // namespace quelm::test

#endif
