// Catches what the driver logs during a test.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef TESTS_SUPPORT_LOG_CAPTURE_H
#define TESTS_SUPPORT_LOG_CAPTURE_H

#include "base/log.h"

#include <string>
#include <utility>
#include <vector>

class LogCapture {
public:
    LogCapture()
        : before_(quelm::setLogSink([this](quelm::Severity severity, const std::string& message) {
              severities.push_back(severity);
              messages.push_back(message);
          }))
    {
    }
    ~LogCapture() { quelm::setLogSink(std::move(before_)); }
    LogCapture(const LogCapture&) = delete;
    LogCapture& operator=(const LogCapture&) = delete;

    std::vector<quelm::Severity> severities;
    std::vector<std::string> messages;

private:
    quelm::LogSink before_;
};

#endif
