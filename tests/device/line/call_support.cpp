// Makes the pages that the line's tests send.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "tests/device/line/call_support.h"

#include <vector>

namespace quelm::device::tests {

CallTest::CallTest()
{
    caller.pages = folder / "pages.tif";
    caller.identity = "+1 555 010 0000";
    answering.identity = "+1 555 010 4477";
    answering.keepAs = folder / "kept.tif";
    sendPages(3);
}

void CallTest::sendPages(int count, int down, std::uint32_t height)
{
    std::vector<Page> pages;
    for (int number = 1; number <= count; ++number)
        pages.push_back(samplePage(number, down, height));
    writePages(caller.pages, pages);
}

} // namespace quelm::device::tests
