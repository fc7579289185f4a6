// A driver with the real component, and a user who fills a job.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef TESTS_DRIVER_HANDOVER_HANDOVER_FIXTURE_H
#define TESTS_DRIVER_HANDOVER_HANDOVER_FIXTURE_H

#include "tests/support/build_paths.h"
#include "tests/support/driver_fixture.h"

#include <string>

namespace quelm {

class HandoverTest : public DriverTest {
protected:
    HandoverTest() : DriverTest(build_paths::componentLibrary()) { driver().call("T40InvokeFaxDialog"); }

    void add(const std::string& name, const std::string& number, const std::string& mailbox = {})
    {
        driver().press("AddFaxRcpt");
        driver().type("RecipientName", name);
        driver().type("RecipientNumber", number);
        driver().type("RecipientMailbox", mailbox);
        driver().press("LanFaxAddRcpt OK Button");
    }
};

} // namespace quelm

#endif
