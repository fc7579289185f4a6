// The driver's error: one line for the user.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef BASE_ERROR_H
#define BASE_ERROR_H

#include <stdexcept>
#include <string>

namespace quelm {

/// Ends an action. `what()` is one line, UTF-8, without a line end: what went wrong, where, and
/// what to do about it. Programs print it on standard error and exit with status 1.
class Error : public std::runtime_error {
public:
    explicit Error(const std::string& line) : std::runtime_error(line) {}
};

/// The command line was used wrongly: exit status 2.
class UsageError : public Error {
public:
    using Error::Error;
};

} // namespace quelm

#endif
