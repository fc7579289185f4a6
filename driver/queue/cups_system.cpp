// What needs no more than a name of libcups.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/queue/cups_system.h"

#include "driver/queue/server_address.h"

namespace quelm {

std::string CupsSystem::currentPrintServer() const { return serverOfNow(); }

} // namespace quelm
