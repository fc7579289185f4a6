// Loads a component's library and checks that it is one.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_PLUGIN_COMPONENT_LIBRARY_H
#define DRIVER_PLUGIN_COMPONENT_LIBRARY_H

#include "base/whole_file.h"
#include "driver/plugin/call_guard.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace quelm {

/// A loaded component. Loading resolves all that the library imports at once (RTLD_NOW), so that a
/// host operation that this driver lacks is a message at the start and not the end of the program
/// in the middle of a job; and keeps its names to itself (RTLD_LOCAL), as it exports functions
/// named like those of the C library.
class ComponentLibrary {
public:
    /// Loads the file, and checks the seven descriptor objects, the entry point and every name of the
    /// export list. Throws quelm::Error that names the file and the first thing that is wrong; the
    /// library is unloaded then.
    explicit ComponentLibrary(const std::string& file);

    /// Unloads the library, unless `start` was called: what a component made, also in a start that
    /// failed, lives until the process ends.
    ~ComponentLibrary();

    ComponentLibrary(const ComponentLibrary&) = delete;
    ComponentLibrary& operator=(const ComponentLibrary&) = delete;

    /// Calls the entry point; false when the component is not ready or threw.
    [[nodiscard]] bool start(CallGuard& guard);

    const std::string& path() const { return file_; }

    /// The text of a descriptor object ("_QuelmSOVersion"). It belongs to the library.
    const char* text(const char* descriptorObject) const;
    const char* displayName() const;
    const char* version() const;

    /// The functions that a host may call by name, in the component's order.
    const std::vector<std::string>& exportList() const { return exports_; }
    /// A function of the export list, null when `name` does not stand there.
    [[nodiscard]] void* exported(std::string_view name) const;

    /// Any function or object of the library by its linker name, null when there is none.
    [[nodiscard]] void* symbol(const char* name) const;

private:
    struct Unloader {
        void operator()(void* library) const;
    };

    void checkDescriptors() const;
    void readExportList();

    std::string file_;
    std::unique_ptr<void, Unloader> library_;
    std::vector<std::string> exports_;
};

} // namespace quelm

#endif
