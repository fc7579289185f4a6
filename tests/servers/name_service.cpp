// Stands in for the C library's getaddrinfo.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "tests/servers/name_service.h"

#include <dlfcn.h>
#include <netdb.h>

#include <array>
#include <cerrno>
#include <mutex>
#include <string_view>

namespace servers {

namespace {

// Threads that nobody waits for any more ask here while the program ends: nothing of this is ever destroyed.

std::mutex changing;

/// Invalid while nobody keeps the name service silent.
std::shared_future<void>& answerable()
{
    static auto& future = *new std::shared_future<void>;
    return future;
}

struct Failure {
    std::string_view name;
    int error;
};

constexpr std::array<Failure, 5> failures{{{"unknown.test", EAI_NONAME},
                                           {"nodata.test", EAI_NODATA},
                                           {"later.test", EAI_AGAIN},
                                           {"broken.test", EAI_SYSTEM},
                                           {"failed.test", EAI_FAIL}}};

} // namespace

SilentNameService::SilentNameService()
{
    const std::lock_guard lock(changing);
    answerable() = over_.get_future().share();
}

SilentNameService::~SilentNameService()
{
    over_.set_value();
    const std::lock_guard lock(changing);
    answerable() = {};
}

} // namespace servers

// Exported: modules and libraries find it ahead of the C library's.
extern "C" [[gnu::visibility("default")]] int getaddrinfo(const char* host, const char* service,
                                                          const addrinfo* wanted, addrinfo** found)
{
    const std::string_view name = host != nullptr ? host : "";
    const bool numeric = wanted != nullptr && (wanted->ai_flags & AI_NUMERICHOST) != 0;
    if (name == "silent.test" && !numeric) {
        std::shared_future<void> end;
        {
            const std::lock_guard lock(servers::changing);
            end = servers::answerable();
        }
        if (end.valid())
            end.wait();
    }
    for (const servers::Failure& failure : servers::failures) {
        if (failure.name == name && !numeric) {
            errno = EMFILE;
            return failure.error;
        }
    }
    using Function = int (*)(const char*, const char*, const addrinfo*, addrinfo**);
    static const auto next = reinterpret_cast<Function>(::dlsym(RTLD_NEXT, "getaddrinfo"));
    return next(name == "silent.test" && !numeric ? "127.0.0.1" : host, service, wanted, found);
}
