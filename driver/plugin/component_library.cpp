// Loading, checking and starting a component.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/plugin/component_library.h"

#include "base/error.h"
#include "base/shared_object.h"
#include "base/translation.h"
#include "base/whole_file.h"
#include "host/component.h"

#include <dlfcn.h>

#include <algorithm>
#include <array>
#include <filesystem>

namespace quelm {

namespace {

constexpr std::array<const char*, 7> descriptorObjects{
    {host::displayNameSymbol, host::versionSymbol, host::exportListSymbol, host::phonebookTagsSymbol,
     host::dialogDefinitionSymbol, host::coverPageHeaderSymbol, host::coverPageTrailerSymbol}};

Error cannotLoad(const std::string& file, const std::string& reason)
{
    return Error(localized("the component %s cannot be loaded: %s", file, reason));
}

Error notAComponent(const std::string& file, const std::string& reason)
{
    return Error(localized("%s is not a fax component: %s", file, reason));
}

} // namespace

void ComponentLibrary::Unloader::operator()(void* handle) const { ::dlclose(handle); }

ComponentLibrary::ComponentLibrary(const std::string& givenFile)
    : file_(std::filesystem::absolute(givenFile).string())
{
    if (const std::string problem = problemOfSharedObject(file_); !problem.empty())
        throw cannotLoad(file_, problem);
    library_.reset(::dlopen(file_.c_str(), RTLD_NOW | RTLD_LOCAL));
    if (library_ == nullptr)
        throw cannotLoad(file_, loaderMessage(file_));
    checkDescriptors();
    readExportList();
}

ComponentLibrary::~ComponentLibrary() = default;

bool ComponentLibrary::start(CallGuard& guard)
{
    // Marks the library as one that stays. There is no entry that takes back what starting did, and
    // objects of the component would be lost, or call into nowhere, without its code and data.
    static_cast<void>(::dlopen(file_.c_str(), RTLD_NOW | RTLD_LOCAL | RTLD_NOLOAD | RTLD_NODELETE));
    const auto entryPoint = reinterpret_cast<host::EntryPoint>(symbol(host::entryPointSymbol));
    bool ready = false;
    guard.run(host::entryPointSymbol, [&] { ready = entryPoint() != 0; });
    return ready;
}

const char* ComponentLibrary::text(const char* descriptorObject) const
{
    return *static_cast<const char* const*>(symbol(descriptorObject));
}

const char* ComponentLibrary::displayName() const { return text(host::displayNameSymbol); }

const char* ComponentLibrary::version() const { return text(host::versionSymbol); }

void* ComponentLibrary::exported(std::string_view name) const
{
    const auto found = std::find(exports_.begin(), exports_.end(), name);
    return found == exports_.end() ? nullptr : symbol(found->c_str());
}

void* ComponentLibrary::symbol(const char* name) const { return ::dlsym(library_.get(), name); }

void ComponentLibrary::checkDescriptors() const
{
    for (const char* name : descriptorObjects) {
        if (symbol(name) == nullptr)
            throw notAComponent(file_, localized("it lacks the descriptor object %s", name));
        if (text(name) == nullptr)
            throw notAComponent(file_, localized("its descriptor object %s is empty", name));
    }
    if (symbol(host::entryPointSymbol) == nullptr)
        throw notAComponent(file_, localized("it lacks the entry point %s", host::entryPointSymbol));
}

void ComponentLibrary::readExportList()
{
    const std::string_view list = text(host::exportListSymbol);
    if (list.size() < 2 || list.front() != ',' || list.back() != ',') {
        throw notAComponent(file_, localized("its export list %s does not begin and end with a comma",
                                             host::exportListSymbol));
    }
    for (std::size_t start = 1; start < list.size();) {
        const std::size_t end = list.find(',', start);
        exports_.emplace_back(list.substr(start, end - start));
        if (symbol(exports_.back().c_str()) == nullptr) {
            throw notAComponent(
                file_, localized("it lacks the entry point %s that its export list names", exports_.back()));
        }
        start = end + 1;
    }
}

} // namespace quelm
