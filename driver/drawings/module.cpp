// The module "drawings".
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/module.h"

#include "driver/drawings/pango_drawings.h"

extern "C" [[gnu::visibility("default")]] const quelm::ModuleDescription quelmModule =
    quelm::moduleFor<quelm::DrawingLibrary, quelm::PangoLibrary>(QUELM_BUILD_NAME);
