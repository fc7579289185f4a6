// The personal phonebooks that the benchmarks work with.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef BENCH_PHONEBOOKS_H
#define BENCH_PHONEBOOKS_H

#include <string>

class QuelmLegacyDatabase;

namespace bench {

/// Closes the personal phonebook, as when the user has just chosen a file: the next listing opens it.
void closePhonebook();

/// Lists the personal phonebook of that name. When it is new, it is first filled by `fill`, whose
/// records are then written to its file.
void usePhonebook(const std::string& name, void (*fill)(QuelmLegacyDatabase&, int count), int count);

} // namespace bench

#endif
