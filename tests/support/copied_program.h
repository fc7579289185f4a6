// Copies of the built programs in other folders, with what they look for beside themselves.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef TESTS_SUPPORT_COPIED_PROGRAM_H
#define TESTS_SUPPORT_COPIED_PROGRAM_H

#include "tests/support/build_paths.h"

#include <filesystem>

/// Copies the library that all programs share into `folder`, and the modules, as an installation has them.
inline void copySharedParts(const std::filesystem::path& folder)
{
    const auto base = build_paths::inStage("libquelm-base.so");
    std::filesystem::copy_file(base, folder / std::filesystem::canonical(base).filename());
    std::filesystem::copy(build_paths::inStage("modules"), folder / "modules");
}

/// Copies a program of the stage folder into `folder` with the shared parts, and returns the copy's path.
inline std::filesystem::path copyProgram(const std::string& name, const std::filesystem::path& folder)
{
    copySharedParts(folder);
    std::filesystem::copy_file(build_paths::inStage(name), folder / name);
    return folder / name;
}

#endif
