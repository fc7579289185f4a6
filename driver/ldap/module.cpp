// The module "directory".
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/module.h"

#include "driver/ldap/ldap_connection.h"

extern "C" [[gnu::visibility("default")]] const quelm::ModuleDescription quelmModule =
    quelm::moduleFor<quelm::DirectoryLibrary, quelm::LdapLibrary>(QUELM_BUILD_NAME);
