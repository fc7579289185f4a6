// What goes wrong with a directory, as a line for the user and a number for the component.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_DIRECTORY_DIRECTORY_ERROR_H
#define DRIVER_DIRECTORY_DIRECTORY_ERROR_H

#include "base/error.h"

#include <string>

namespace quelm {

/// LDAP result codes that the driver acts on or makes itself. Those from `firstOfTheClient` on are the
/// client's own: the server said nothing.
namespace ldap_code {
inline constexpr int success = 0;
inline constexpr int timeLimitExceeded = 3;
inline constexpr int sizeLimitExceeded = 4;
inline constexpr int noSuchObject = 32;
inline constexpr int firstOfTheClient = 80;
inline constexpr int serverDown = 81;
inline constexpr int timeout = 85;
inline constexpr int filterError = 87;
inline constexpr int parameterError = 89;
inline constexpr int connectError = 91;
} // namespace ldap_code

/// What went wrong on a connection, as a whole line for the user, with the LDAP result code.
class DirectoryError : public Error {
public:
    DirectoryError(int resultCode, const std::string& line) : Error(line), code(resultCode) {}

    const int code;
};

} // namespace quelm

#endif
