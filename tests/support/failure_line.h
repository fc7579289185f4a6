// The line of the error that a piece of code throws.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef TESTS_SUPPORT_FAILURE_LINE_H
#define TESTS_SUPPORT_FAILURE_LINE_H

#include "base/error.h"

#include <gtest/gtest.h>

#include <string>

namespace quelm::test {

/// Runs `action` and returns the line of its `Failure`; fails the test when it throws none.
template <typename Failure = Error, typename Action>
std::string failureLine(const Action& action)
{
    try {
        action();
    } catch (const Failure& error) {
        return error.what();
    }
    ADD_FAILURE() << "nothing was refused";
    return {};
}

} // namespace quelm::test

#endif
