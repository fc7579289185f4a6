// Catches what leaves the component.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/plugin/call_guard.h"

#include "base/log.h"
#include "base/translation.h"

#include <exception>
#include <string>

namespace quelm {

namespace {

/// Counts the calls that stand within each other.
class Nesting {
public:
    explicit Nesting(int& counted) : depth_(counted) { ++depth_; }
    ~Nesting() { --depth_; }
    Nesting(const Nesting&) = delete;
    Nesting& operator=(const Nesting&) = delete;

private:
    int& depth_;
};

} // namespace

bool CallGuard::run(std::string_view what, const std::function<void()>& call)
{
    if (depth_ == 0 && beforeCall_)
        beforeCall_();
    const Nesting nesting(depth_);
    std::string reason;
    try {
        call();
        return true;
    } catch (const std::exception& exception) {
        reason = exception.what();
    } catch (...) {
        // Anything may be thrown; the name of what was called is all that is known then.
        reason = localized("an exception of an unknown kind");
    }
    ++failureCount_;
    // Translators: %s is the function that was called, or "the answer to a question".
    log(Severity::error, localized("the component failed in %s: %s", what, reason));
    return false;
}

} // namespace quelm
