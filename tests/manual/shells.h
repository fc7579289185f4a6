// Asks shells what they complete.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef TESTS_MANUAL_SHELLS_H
#define TESTS_MANUAL_SHELLS_H

#include "base/command_line/command_view.h"

#include <set>
#include <string>
#include <vector>

namespace quelm::test {

enum class Shell { bash, zsh, fish };

std::string nameOf(Shell shell);

/// A command line, the last word of which is to be completed. No word holds blanks or quotation marks.
using Question = std::vector<std::string>;

/// What the shell offers for each question, with the completion that is written for the program, in a folder
/// that holds a file "letter.ps" and a folder "shelf". Descriptions are left out.
std::vector<std::set<std::string>> completionsOf(Shell shell, const CommandView& program,
                                                 const std::vector<Question>& questions);

} // namespace quelm::test

#endif
