// The phonebook program's menu: one command a line.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_PHONEBOOK_MENU_H
#define DRIVER_PHONEBOOK_MENU_H

#include "driver/phonebook/phonebook.h"

#include <iosfwd>
#include <string>

namespace quelm {

/// Talks with the user about one phonebook until he quits or the input ends. What a command cannot do is
/// said in one line, and the menu goes on. Nothing that a user is asked for is saved before he has answered
/// all of it; the end of the input in between saves nothing.
class Menu {
public:
    /// The streams outlive the menu. Progress of long work goes to standard error when that is a
    /// terminal.
    Menu(PhonebookPlace place, std::istream& input, std::ostream& output);

    void run();

private:
    void greet();
    bool carryOut(const std::string& line);
    bool ask(const std::string& question, std::string& answer);
    /// Asks for a yes; says that nothing was changed for any other answer.
    bool agreesTo(const std::string& question);
    void add();
    void addGroupOfEntries();
    void removeAfterAsking(const std::string& name);
    /// Options and a file, as they were typed.
    void importFrom(const std::string& words);
    void exportTo(const std::string& file);
    void help();

    PhonebookPlace place_;
    std::istream& input_;
    std::ostream& output_;
};

} // namespace quelm

#endif
