// Whether the tests that docs/assurance.md names for its promises are there.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef TESTS_LAYERS_PROMISES_H
#define TESTS_LAYERS_PROMISES_H

#include <filesystem>
#include <string>
#include <vector>

namespace layers {

/// The outcome of one look at the promises of a tree.
struct Promises {
    int kept = 0;                        ///< promises whose tests are all there
    std::vector<std::string> violations; ///< one sentence each, in the order of the document
};

/// Looks for the tests of every promise in docs/assurance.md below `root`. A promise is a row of a table,
/// whose last cell names the tests that fail when it is broken:
///
///     | No job names a recipient of another. | `FaxSessionTest.EmptiesTheNames`, `tests/desktop/tour.py` |
///
/// A promise without a test is a violation, and so is a test that no source below tests/ defines, or a file
/// that is not there. Head rows, and rows of dashes, are no promises.
Promises checkPromises(const std::filesystem::path& root);

} // namespace layers

#endif
