// Where the build put the test components.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef TESTS_SUPPORT_PLUGIN_PATHS_H
#define TESTS_SUPPORT_PLUGIN_PATHS_H

#include "tests/support/build_paths.h"

#include <string>

/// "good", "throws_at_start", ...: the suffixes that the build lists.
inline std::string pluginPath(const std::string& name)
{
    return build_paths::inBuild("tests/driver/plugin/plugins/lib" + name + ".so");
}

#endif
