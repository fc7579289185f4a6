// Writes the driver's log.
#include "base/log.h"

#include "base/translation.h"

#include <cstdio>
#include <utility>

namespace quelm {

namespace {

LogSink& currentSink()
{
    static LogSink sink;
    return sink;
}

} // namespace

std::string oneLine(std::string text)
{
    for (char& character : text) {
        const auto code = static_cast<unsigned char>(character);
        if (code < 0x20 || code == 0x7F) {
            character = ' ';
        }
    }
    return text;
}

void log(Severity severity, const std::string& message)
{
    const std::string line = oneLine(message);
    if (const LogSink& sink = currentSink()) {
        sink(severity, line);
    } else if (severity != Severity::information) {
        const std::string shown = severity == Severity::warning ? localized("warning: %s", line) : line;
        std::fprintf(stderr, "quelm-driver: %s\n", shown.c_str());
    }
}

LogSink setLogSink(LogSink sink) { return std::exchange(currentSink(), std::move(sink)); }

} // namespace quelm
