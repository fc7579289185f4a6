// Where the project's files and what was built of them lie, for tests that use them.
//
// The paths stand in one generated source, so that every other source of a test compiles alike in each clone
// of the project, and the compiler's cache serves them all.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef TESTS_SUPPORT_BUILD_PATHS_H
#define TESTS_SUPPORT_BUILD_PATHS_H

#include <string>

namespace build_paths {

/// The project's root and the root of this build: absolute, without a slash at the end. Set before any code
/// runs.
extern const char* const projectFolder;
extern const char* const buildFolder;

/// A file or folder of the project, named from its root: "samples/letter.ps".
inline std::string inProject(const std::string& path) { return std::string(projectFolder) + "/" + path; }

/// A file or folder of the build, named from its root.
inline std::string inBuild(const std::string& path) { return std::string(buildFolder) + "/" + path; }

/// What a person runs from the build: the programs, the component, help/, icon/ and locale/.
inline std::string stageFolder() { return inBuild("stage"); }
inline std::string inStage(const std::string& path) { return stageFolder() + "/" + path; }

/// The component as it is shipped.
inline std::string componentLibrary() { return inStage("libBramblecorLanFax.so"); }

} // namespace build_paths

#endif
