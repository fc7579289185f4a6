// Where the build put the test components.
#ifndef TESTS_DRIVER_CORE_PLUGIN_PATHS_H
#define TESTS_DRIVER_CORE_PLUGIN_PATHS_H

#include <string>

/// "good", "throws_at_start", ...: the suffixes that the build lists.
inline std::string pluginPath(const std::string& name)
{
    return std::string(QUELM_TEST_PLUGINS) + "/lib" + name + ".so";
}

#endif
