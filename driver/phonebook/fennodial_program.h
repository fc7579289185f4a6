// The command line of fennodial.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_PHONEBOOK_FENNODIAL_PROGRAM_H
#define DRIVER_PHONEBOOK_FENNODIAL_PROGRAM_H

#include <memory>
#include <string>

namespace CLI {
class App;
}

namespace quelm {

/// What the user asked for: one of the two.
struct FennodialLine {
    std::string phonebook;   ///< the path behind -FP
    std::string information; ///< the help or the version
};

/// The options of the program, for those who describe them. CLI11 has no -FP, which the fax dialog writes.
std::shared_ptr<CLI::App> fennodialProgram();

/// Takes `argv` apart. All that follows -FP is the path of the phonebook: the fax dialog hands it over
/// without quotes, so that a shell has parted it at its blanks. Throws UsageError with one line when there is
/// none.
FennodialLine parseFennodialLine(int argc, const char* const* argv);

} // namespace quelm

#endif
