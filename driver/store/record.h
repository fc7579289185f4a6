// What a phonebook is made of.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_STORE_RECORD_H
#define DRIVER_STORE_RECORD_H

#include <string>

namespace quelm {

/// One record. Any bytes but NUL.
struct Record {
    std::string key;
    std::string data;
};

} // namespace quelm

#endif
