// The module "charsets".
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/module.h"

#include "driver/charsets/uchardet_guesser.h"

extern "C" [[gnu::visibility("default")]] const quelm::ModuleDescription quelmModule =
    quelm::moduleFor<quelm::CharsetGuesser, quelm::UchardetGuesser>(QUELM_BUILD_NAME);
