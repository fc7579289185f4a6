// What a session with a directory says beside its results.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_DIRECTORY_DIRECTORY_REPORT_H
#define DRIVER_DIRECTORY_DIRECTORY_REPORT_H

#include <string>

namespace quelm {

/// What a search gave of all that matches.
enum class SearchExtent {
    none, ///< nothing: no search was made, or it failed; a list still shows what an earlier search gave
    whole,
    upToLimit,  ///< the limit of the settings, or the server's own, left others out
    upToFailure ///< some, then it ended early; the failure says why
};

/// Receives what a session reports, on the thread that uses it.
class DirectoryReport {
public:
    virtual ~DirectoryReport() = default;

    /// Opening, binding or searching failed, or a search ended early. One line: which server, what went
    /// wrong, what to do.
    virtual void failed(const std::string& line) = 0;

    /// Opening, binding or searching succeeded.
    virtual void succeeded() = 0;

    /// How much the search gave that now ends; `none` when one begins.
    virtual void searched(SearchExtent extent) = 0;

    /// A search went well, but a user should hear this of it.
    virtual void noticed(const std::string& line) = 0;
};

} // namespace quelm

#endif
