// The host's gettext: exported by the test program, so found ahead of every library's.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "tests/library/host_gettext.h"

const char hostGettextAnswer[] = "the host's answer";

namespace {
int calls = 0;
}

extern "C" __attribute__((visibility("default"))) char* gettext(const char*) noexcept;
extern "C" char* gettext(const char*) noexcept
{
    ++calls;
    return const_cast<char*>(hostGettextAnswer);
}

int hostGettextCalls() { return calls; }

const char* callHostGettext(const char* text) { return gettext(text); }
