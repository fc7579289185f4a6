// The module "queue".
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/module.h"

#include "driver/queue/cups_system.h"

extern "C" [[gnu::visibility("default")]] const quelm::ModuleDescription quelmModule =
    quelm::moduleFor<quelm::PrintSystem, quelm::CupsSystem>(QUELM_BUILD_NAME);
