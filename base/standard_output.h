// What a command says on standard output, and the places of the standard streams.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef BASE_STANDARD_OUTPUT_H
#define BASE_STANDARD_OUTPUT_H

#include <string_view>

namespace quelm {

/// Writes what a command was asked for to standard output: byte for byte to a file or a pipe, whose reader
/// wants data, and as `terminalText` to a terminal, which would obey what stands in it. Throws Error when not
/// all of it could be written.
void writeAnswer(std::string_view text);

/// Says on standard output what was done, likewise. What was done stays so when nobody can be told: then
/// nothing is said, and nothing thrown. Nor is anything said when the program is to be quiet.
void writeConfirmation(std::string_view text);

/// Writes as `writeAnswer` does what was asked for about something that is done by now. Throws Error when not
/// all of it could be written; its line says that it is done all the same.
void writeResult(std::string_view text);

/// Puts something in the place of each standard stream that the program was started without (`>&-`): reading
/// and writing there fail as before, but no file that is opened later gets the descriptor, and with it what a
/// library or a child writes to standard output. Called ahead of all else.
void occupyStandardDescriptors() noexcept;

} // namespace quelm

#endif
