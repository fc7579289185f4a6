// What the programs and the supervisor that they start Ghostscript with agree on.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef BASE_GHOSTSCRIPT_SUPERVISION_H
#define BASE_GHOSTSCRIPT_SUPERVISION_H

namespace quelm::supervision {

/// Its name, beside the programs.
inline constexpr char program[] = "quelm-supervisor";

/// What the names of private folders begin with.
inline constexpr char folderPrefix[] = "quelm-gs-";

/// Its arguments, in this order. Behind them stand the program to run and that one's arguments.
enum Argument {
    parent = 1,   ///< the process id of who starts it
    folder,       ///< a private folder, removed at the end
    memoryLimit,  ///< bytes of address space
    fileLimit,    ///< bytes of each file
    secondsLimit, ///< of processor time
    command
};

/// Its exit status when the program could not be started; one line on standard error says why.
inline constexpr int couldNotStart = 125;

} // namespace quelm::supervision

#endif
