// The driver's log: what goes wrong without ending an action.
#ifndef BASE_LOG_H
#define BASE_LOG_H

#include <functional>
#include <string>

namespace quelm {

enum class Severity { information, warning, error };

/// Receives each message: one line of UTF-8 without a line end.
using LogSink = std::function<void(Severity, const std::string&)>;

/// `text` as one line: line ends and other control characters become blanks.
std::string oneLine(std::string text);

/// Logs a message, as one line.
void log(Severity severity, const std::string& message);

/// Sends messages elsewhere from now on; an empty sink means standard error, where
/// "quelm-driver: warning: ..." is written and information is left out. Returns the sink before.
LogSink setLogSink(LogSink sink);

} // namespace quelm

#endif
