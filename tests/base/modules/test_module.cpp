// A module for the tests of loading modules; definitions make it a bad one.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/error.h"
#include "tests/base/modules/test_part.h"

namespace {

class Implementation final : public TestPart {
public:
    std::string answer() const override { return "good"; }
    void fail() const override { throw quelm::UsageError("from the module"); }
};

} // namespace

#ifndef WITHOUT_DESCRIPTION
extern "C" [[gnu::visibility("default")]] const quelm::ModuleDescription quelmModule =
    quelm::moduleFor<TestPart, Implementation>(BUILD_NAME);
#endif
