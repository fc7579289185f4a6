// The part that the modules of the tests hold.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef TESTS_BASE_MODULES_TEST_PART_H
#define TESTS_BASE_MODULES_TEST_PART_H

#include "base/module.h"

#include <string>

class TestPart {
public:
#ifdef OTHER_PART
    static constexpr const char* moduleName = "other";
#else
    static constexpr const char* moduleName = "good";
#endif

    TestPart() = default;
    virtual ~TestPart() = default;
    TestPart(const TestPart&) = delete;
    TestPart& operator=(const TestPart&) = delete;

    virtual std::string answer() const = 0;
    /// Throws a usage error.
    virtual void fail() const = 0;
};

#endif
