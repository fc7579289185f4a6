// A host that only loads a library: loading_host LIBRARY lazy|now. Says "loaded", or what the dynamic
// linker says (status 1).
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <dlfcn.h>

#include <cstdio>
#include <cstring>

int main(int argc, char* argv[])
{
    if (argc != 3)
        return 2;
    const int binding = std::strcmp(argv[2], "now") == 0 ? RTLD_NOW : RTLD_LAZY;
    if (dlopen(argv[1], binding | RTLD_LOCAL) == nullptr) {
        std::puts(dlerror());
        return 1;
    }
    std::puts("loaded");
    return 0;
}
