// The module "device".
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/module.h"

#include "driver/snmp/library_connection.h"

extern "C" [[gnu::visibility("default")]] const quelm::ModuleDescription quelmModule =
    quelm::moduleFor<quelm::SnmpLibrary, quelm::NetSnmpLibrary>(QUELM_BUILD_NAME);
