// The host's record database, in whose files phonebooks are kept.
#ifndef DRIVER_BOUNDARY_RECORD_DATABASE_H
#define DRIVER_BOUNDARY_RECORD_DATABASE_H

#include <string>

#include "host/record_database.h" // IWYU pragma: export

namespace quelm {

/// Why the last failing operation of a QuelmLegacyDatabase failed: one line that names the file,
/// what is wrong and what to do. Empty when none has failed yet.
std::string lastDatabaseError();

} // namespace quelm

#endif
