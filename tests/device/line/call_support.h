// What the tests of the line share: a call that can be carried.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef TESTS_DEVICE_LINE_CALL_SUPPORT_H
#define TESTS_DEVICE_LINE_CALL_SUPPORT_H

#include "device/line/fax_call.h"
#include "tests/device/tiff/page_support.h"
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>

#include <cstdint>

namespace quelm::device::tests {

/// A call of three small pages, in a folder of its own.
class CallTest : public testing::Test {
protected:
    CallTest();

    /// Replaces the pages that are sent.
    void sendPages(int count, int down = 98, std::uint32_t height = 200);

    TemporaryFolder folder;
    CallingFax caller;
    AnsweringParty answering;
};

} // namespace quelm::device::tests

#endif
