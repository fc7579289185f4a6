// Stands in for the C library's getaddrinfo.
#include "tests/servers/name_service.h"

#include <cerrno>
#include <map>
#include <mutex>
#include <string_view>

#include <dlfcn.h>
#include <netdb.h>

namespace servers {

namespace {

std::mutex changing;
std::shared_future<void> answerable; ///< invalid while nobody keeps the name service silent

const std::map<std::string_view, int>& failures()
{
    static const std::map<std::string_view, int> all{{"unknown.test", EAI_NONAME},
                                                     {"nodata.test", EAI_NODATA},
                                                     {"later.test", EAI_AGAIN},
                                                     {"broken.test", EAI_SYSTEM},
                                                     {"failed.test", EAI_FAIL}};
    return all;
}

} // namespace

SilentNameService::SilentNameService()
{
    const std::lock_guard lock(changing);
    answerable = over.get_future().share();
}

SilentNameService::~SilentNameService()
{
    over.set_value();
    const std::lock_guard lock(changing);
    answerable = {};
}

} // namespace servers

extern "C" int getaddrinfo(const char* host, const char* service, const addrinfo* wanted, addrinfo** found)
{
    const std::string_view name = host != nullptr ? host : "";
    const bool numeric = wanted != nullptr && (wanted->ai_flags & AI_NUMERICHOST) != 0;
    if (name == "silent.test" && !numeric) {
        std::shared_future<void> end;
        {
            const std::lock_guard lock(servers::changing);
            end = servers::answerable;
        }
        if (end.valid())
            end.wait();
    }
    const auto failure = servers::failures().find(name);
    if (failure != servers::failures().end() && !numeric) {
        errno = EMFILE;
        return failure->second;
    }
    using Function = int (*)(const char*, const char*, const addrinfo*, addrinfo**);
    static const auto next = reinterpret_cast<Function>(::dlsym(RTLD_NEXT, "getaddrinfo"));
    return next(name == "silent.test" && !numeric ? "127.0.0.1" : host, service, wanted, found);
}
