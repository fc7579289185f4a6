// A search of a directory, and how it ended.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_DIRECTORY_DIRECTORY_QUERY_H
#define DRIVER_DIRECTORY_DIRECTORY_QUERY_H

#include <string>
#include <vector>

namespace quelm {

/// What to search for.
struct DirectoryQuery {
    std::string base;   ///< the name (DN) of the entry below which to look; empty for the root
    std::string filter; ///< an LDAP filter, "(sn=Smi*)"
    int scope = 2;      ///< 0 the base itself, 1 the level below it, 2 the whole subtree
    std::vector<std::string> attributes; ///< what to ask for; empty for all attributes
    bool namesOnly = false;              ///< asks for the attributes' names without their values
};

/// How a request ended.
struct DirectoryOutcome {
    int code = 0;        ///< the LDAP result code
    std::string message; ///< what the server, or the library, says of it; may be empty
};

} // namespace quelm

#endif
