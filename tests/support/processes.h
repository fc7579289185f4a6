// What tests ask about processes that they have not started themselves.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef TESTS_SUPPORT_PROCESSES_H
#define TESTS_SUPPORT_PROCESSES_H

#include "tests/support/temporary_folder.h"

#include <sys/types.h>

#include <chrono>
#include <fstream>
#include <string>
#include <thread>

/// Waits for the condition; false when it did not come true within a minute.
template <typename Condition>
bool soon(Condition condition)
{
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::minutes(1);
    while (!condition()) {
        if (std::chrono::steady_clock::now() > deadline)
            return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(1)); // what is waited for needs the processor
    }
    return true;
}

/// False once it ended, reaped or not.
inline bool isRunning(pid_t process)
{
    std::ifstream status("/proc/" + std::to_string(process) + "/stat");
    std::string number;
    std::string name;
    std::string state;
    return static_cast<bool>(status >> number >> name >> state) && state != "Z";
}

/// Waits until a program has written its process id, and a line end, into the file; 0 when it did not.
inline pid_t processIdIn(const std::string& path)
{
    std::string text;
    const bool written = soon([&] {
        if (std::filesystem::exists(path))
            text = contentOf(path);
        return text.ends_with('\n');
    });
    return written ? std::stoi(text) : 0;
}

#endif
