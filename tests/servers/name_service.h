// A name service of the tests' own, ahead of the system's, in every program that links test_name_service.
//
// It fails for these names, and hands all others on:
//   unknown.test   there is no such host
//   nodata.test    the host has no address
//   later.test     the name service cannot be reached
//   broken.test    the system has no more files to open
//   failed.test    the name service fails
//   silent.test    is not answered as long as a SilentNameService lives; then it is 127.0.0.1
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef TESTS_SERVERS_NAME_SERVICE_H
#define TESTS_SERVERS_NAME_SERVICE_H

#include <future>

namespace servers {

/// Keeps those waiting who ask for "silent.test". One at a time.
class SilentNameService {
public:
    SilentNameService();
    ~SilentNameService();
    SilentNameService(const SilentNameService&) = delete;
    SilentNameService& operator=(const SilentNameService&) = delete;

private:
    std::promise<void> over_;
};

} // namespace servers

#endif
