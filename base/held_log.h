// Holds log messages back until it is clear whether one of them ends the command.
#ifndef BASE_HELD_LOG_H
#define BASE_HELD_LOG_H

#include "base/error.h"
#include "base/log.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace quelm {

/// While it lives, log messages wait; its destructor logs them in order.
class HeldLog {
public:
    HeldLog();
    ~HeldLog();
    HeldLog(const HeldLog&) = delete;
    HeldLog& operator=(const HeldLog&) = delete;

    /// Drops the messages that a line, which the user will read, ends with.
    void leaveOut(std::string_view line);

private:
    std::vector<std::pair<Severity, std::string>> messages_;
    LogSink before_;
};

/// Runs `body`. What is logged meanwhile comes out at its end, so that a trouble which was logged first and
/// then thrown as the command's error is told once.
template <class Body>
void tellTroubleOnce(Body body)
{
    HeldLog held;
    try {
        body();
    } catch (const Error& error) {
        held.leaveOut(error.what());
        throw;
    }
}

} // namespace quelm

#endif
