// Parts of the programs that are loaded when they are used first, with the libraries of others that they
// need.
//
// A part is an abstract class that a program includes, such as VcardLibrary. Its implementation is a module
// of its own, modules/NAME.so beside the library of these functions, that no program links:
//
//     const auto cards = part<VcardLibrary>().read(text);
//
// The module shows one object, `quelmModule`, made by `moduleFor`. Program and module are of one build and
// share these functions' library, so that what crosses the border may be of any type, exceptions included.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef BASE_MODULE_H
#define BASE_MODULE_H

#include <string>

namespace quelm {

/// What a module shows of itself, as its object `quelmModule` with C linkage.
struct ModuleDescription {
    const char* build;               ///< `buildName` of the build that made it
    const char* part;                ///< name of the part
    const void* (*implementation)(); ///< the part, which lives as long as the program
};

/// What one build calls itself: version, compiler and kind of build.
extern const char* const buildName;

/// The folder that modules are loaded from: modules/ beside the library that holds this function.
std::string moduleFolder();

/// Loads `folder`/`name`.so, or finds it loaded, for good. Returns its part. May be called by any thread.
/// Throws Error when it is not there, cannot be loaded, or is of another build; the next call then tries
/// again.
const void* loadPart(const std::string& folder, const std::string& name);

/// The part whose interface is `Part`, from the module `Part::moduleName`. Throws Error like `loadPart`.
template <class Part>
const Part& part()
{
    static const Part& loaded = *static_cast<const Part*>(loadPart(moduleFolder(), Part::moduleName));
    return loaded;
}

/// The description of a module made by the build `build` whose part is `Implementation`, made when it is
/// first used.
template <class Part, class Implementation>
constexpr ModuleDescription moduleFor(const char* build)
{
    return {build, Part::moduleName, [] {
                static const Implementation implementation;
                return static_cast<const void*>(static_cast<const Part*>(&implementation));
            }};
}

} // namespace quelm

#endif
