// Catches what leaves the component.
#include "driver/core/call_guard.h"

#include "driver/core/log.h"

#include <exception>
#include <string>

namespace quelm {

bool CallGuard::run(std::string_view what, const std::function<void()>& call)
{
    std::string reason = "an exception of an unknown kind";
    try {
        call();
        return true;
    } catch (const std::exception& exception) {
        reason = exception.what();
    } catch (...) {
        // Anything may be thrown; the name of what was called is all that is known then.
    }
    ++failureCount;
    log(Severity::error, "the component failed in " + std::string(what) + ": " + reason);
    return false;
}

} // namespace quelm
