// Asks a person at the terminal for something that nobody is to read on the screen.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef BASE_TERMINAL_SECRET_LINE_H
#define BASE_TERMINAL_SECRET_LINE_H

#include <optional>
#include <string>

namespace quelm {

/// True when standard input is a terminal, and the program need not be quiet.
[[nodiscard]] bool canAsk();

/// Shows `question` on standard error, and reads a line from the terminal that is standard input without
/// showing it there; nothing at the end of the input. Throws quelm::Error when the terminal cannot be told to
/// show nothing; nothing is read then. A signal that ends the program meanwhile leaves the terminal as it
/// was.
[[nodiscard]] std::optional<std::string> readSecretLine(const std::string& question);

} // namespace quelm

#endif
