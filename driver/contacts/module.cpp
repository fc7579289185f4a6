// The module "contacts".
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/module.h"

#include "driver/contacts/evcard_library.h"

extern "C" [[gnu::visibility("default")]] const quelm::ModuleDescription quelmModule =
    quelm::moduleFor<quelm::VcardLibrary, quelm::EvcardLibrary>(QUELM_BUILD_NAME);
