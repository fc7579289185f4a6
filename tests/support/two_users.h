// Two users of one machine, as processes that gave up root's rights.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef TESTS_SUPPORT_TWO_USERS_H
#define TESTS_SUPPORT_TWO_USERS_H

#include "tests/support/temporary_folder.h"

#include <grp.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <stdexcept>
#include <string>

/// Numbers that no account has.
inline constexpr uid_t victim = 61001;
inline constexpr uid_t attacker = 61002;

/// To be called in a process of its own, by root.
inline void becomeUser(uid_t user)
{
    if (setgroups(0, nullptr) != 0 || setgid(user) != 0 || setuid(user) != 0)
        throw std::runtime_error("cannot become another user");
}

/// What `body` answers in a process of that user's.
template <typename Body>
int asUser(uid_t user, Body body)
{
    return inProcess([&] {
        becomeUser(user);
        return body();
    });
}

inline void giveTo(const std::string& path, uid_t user)
{
    if (lchown(path.c_str(), user, user) != 0)
        throw std::runtime_error("cannot give " + path + " away");
}

/// Only root can be two users. The test fails where it does not run as root: it would show nothing.
class TwoUsers : public testing::Test {
protected:
    void SetUp() override
    {
        if (geteuid() != 0)
            FAIL() << "becoming other users takes root: run this test as root, as in a container";
    }

    /// A folder as /tmp is: everybody may make files in it and remove his own.
    static std::string openFolder(const std::string& path)
    {
        std::filesystem::create_directories(path);
        std::filesystem::permissions(path, std::filesystem::perms::all | std::filesystem::perms::sticky_bit);
        return path;
    }

    TemporaryFolder folder;
};

#endif
