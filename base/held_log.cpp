// Keeps messages in order and leaves out the one that was told.
#include "base/held_log.h"

namespace quelm {

HeldLog::HeldLog()
    : before_(setLogSink([this](Severity severity, const std::string& message) {
          messages_.emplace_back(severity, message);
      }))
{
}

HeldLog::~HeldLog()
{
    setLogSink(std::move(before_));
    for (const auto& [severity, message] : messages_)
        log(severity, message);
}

void HeldLog::leaveOut(std::string_view line)
{
    std::erase_if(messages_, [line](const auto& message) { return line.ends_with(message.second); });
}

} // namespace quelm
