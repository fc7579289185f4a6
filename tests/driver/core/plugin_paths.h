// Where the build put the test components.
#ifndef TESTS_DRIVER_CORE_PLUGIN_PATHS_H
#define TESTS_DRIVER_CORE_PLUGIN_PATHS_H

#include "tests/support/build_paths.h"

#include <string>

/// "good", "throws_at_start", ...: the suffixes that the build lists.
inline std::string pluginPath(const std::string& name)
{
    return build_paths::inBuild("tests/driver/core/plugins/lib" + name + ".so");
}

#endif
