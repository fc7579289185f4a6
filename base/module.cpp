// Loads modules.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/module.h"

#include "base/environment.h"
#include "base/error.h"
#include "base/shared_object.h"
#include "base/translation.h"

#include <dlfcn.h>

#include <filesystem>
#include <string_view>
#include <system_error>

namespace quelm {

namespace {

Error cannotLoad(const std::string& file, const std::string& reason)
{
    return Error(localized("the program's module %s cannot be loaded: %s", file, reason));
}

} // namespace

std::string moduleFolder()
{
    Dl_info library{};
    const bool found = ::dladdr(reinterpret_cast<const void*>(&loadPart), &library) != 0;
    const auto folder = found ? std::filesystem::path(library.dli_fname).parent_path() : programFolder();
    return (folder / "modules").string();
}

const void* loadPart(const std::string& folder, const std::string& name)
{
    const std::string file = folder + "/" + name + ".so";
    std::error_code failure;
    if (!std::filesystem::exists(file, failure))
        throw Error(localized(
            "the program's module %s is missing; install the program again with all its parts", file));
    if (const std::string problem = problemOfSharedObject(file); !problem.empty())
        throw cannotLoad(file, problem);
    // The loader counts, and is asked by one thread at a time: whoever comes second gets the same.
    void* library = ::dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE);
    if (library == nullptr)
        throw cannotLoad(file, loaderMessage(file));
    const auto* description = static_cast<const ModuleDescription*>(::dlsym(library, "quelmModule"));
    if (description == nullptr || description->build != std::string_view(buildName) ||
        description->part != name)
        throw cannotLoad(file,
                         localized("it belongs to another version of the program; install both from one"));
    return description->implementation();
}

} // namespace quelm
