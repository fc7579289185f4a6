// Which test runs which source: the one that mirrors it, or the one that docs/building.md names.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef TESTS_LAYERS_MIRRORS_H
#define TESTS_LAYERS_MIRRORS_H

#include <filesystem>
#include <string>
#include <vector>

namespace layers {

/// The outcome of one look at a tree of sources and tests.
struct Mirrors {
    int mirrored = 0;                    ///< sources with a test of their own
    int named = 0;                       ///< sources that the table names a test for
    std::vector<std::string> violations; ///< one sentence each, sorted
};

/// Looks for the test of every source (.cpp) of the checked folders below `root`: that of model/recipient.cpp
/// is tests/component/model/recipient_test.cpp. A source without one stands in a row of the table in
/// docs/building.md:
///
///     | `driver/cli/main.cpp`, ... | `tests/journeys/usage_test.cpp`, ... |
///
/// A source in neither place is a violation, and so is a row whose source does not exist or has a test of its
/// own, or whose tests are not there. Rows that begin with anything else than the name of a source are not
/// looked at.
Mirrors checkMirrors(const std::filesystem::path& root);

} // namespace layers

#endif
