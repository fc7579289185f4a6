// What a user is told when a directory cannot be used.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/directory/directory_messages.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <chrono>
#include <string>
#include <utility>
#include <vector>

namespace {

using namespace quelm;
using namespace quelm::directory_messages;

const std::string server = "ldap.example:389";

class SearchMessageTest : public testing::Test {
protected:
    std::string lineFor(int code, std::size_t kept = 0)
    {
        return searchFailed(server, {code, "words"}, query, settings, kept);
    }

    DirectoryQuery query{"dc=example", "(sn=Smi*)", 2, {}, false};
    DirectorySettings settings;
};

TEST_F(SearchMessageTest, SaysWhatToDo)
{
    EXPECT_EQ(lineFor(85),
              "the directory server ldap.example:389 did not answer a search within 15 s; search for "
              "a longer name, or raise the search timeout");
    EXPECT_EQ(lineFor(3),
              "the directory server ldap.example:389 gave up a search that took too long; search for "
              "a longer name");
    EXPECT_EQ(lineFor(81),
              "the directory server ldap.example:389 ended the connection during a search; search "
              "again");
    EXPECT_EQ(lineFor(87),
              "the directory server ldap.example:389 was not asked: (sn=Smi*) is no search filter; "
              "search for a name");
    EXPECT_EQ(lineFor(32),
              "the directory server ldap.example:389 has no entry \"dc=example\" to search below; "
              "check the search root that the device gives");
    EXPECT_EQ(lineFor(50),
              "the directory server ldap.example:389 refused the search for (sn=Smi*) (words); ask "
              "its administrator");
}

TEST_F(SearchMessageTest, TimesBelowASecondAreInMilliseconds)
{
    settings.searchTimeout = std::chrono::milliseconds(1500);
    EXPECT_NE(lineFor(85).find("within 1500 ms;"), std::string::npos);
}

TEST_F(SearchMessageTest, SaysHowMuchIsShownOfAnUnfinishedSearch)
{
    EXPECT_EQ(lineFor(81, 1),
              "the directory server ldap.example:389 ended the connection during a search; search "
              "again. Shown is the one result before that");
    EXPECT_EQ(lineFor(81, 2),
              "the directory server ldap.example:389 ended the connection during a search; search "
              "again. Shown are the 2 results before that");
}

TEST_F(SearchMessageTest, WhatCameFromOutsideIsOneLineOfUtf8)
{
    query.filter = "(sn=\xFF\n*)";
    EXPECT_NE(lineFor(87).find("(sn=\uFFFD *)"), std::string::npos);
}

TEST(DirectoryMessagesTest, ANameThatIsNotFoundSaysWhy)
{
    using Kind = HostAnswer::Kind;
    const auto lineFor = [](Kind kind) { return notFound(server, {kind, "reason", {}}); };
    const std::string unknown = "the directory server ldap.example:389 cannot be found (reason); check the "
                                "address that the device gives";
    EXPECT_EQ(lineFor(Kind::unknown), unknown);
    EXPECT_EQ(lineFor(Kind::failed), unknown);
    const std::string silent = "the directory server ldap.example:389 cannot be found, because the name "
                               "service does not answer; check the network";
    EXPECT_EQ(lineFor(Kind::unavailable), silent);
    EXPECT_EQ(lineFor(Kind::late), silent);
}

TEST(DirectoryMessagesTest, AConnectionThatFailsSaysWhy)
{
    using Kind = ConnectResult::Kind;
    const auto lineFor = [](Kind kind, std::vector<int> errors) {
        return notReached(server, {kind, {}, std::move(errors)});
    };
    EXPECT_EQ(lineFor(Kind::failed, {ENETUNREACH, ECONNREFUSED}),
              "the directory server ldap.example:389 refuses connections; check "
              "that it runs, and the address that the device gives");
    EXPECT_EQ(lineFor(Kind::late, {}), "the directory server ldap.example:389 did not answer in time; "
                                       "check that it runs, and the address that the device gives");
    EXPECT_EQ(lineFor(Kind::failed, {ECONNREFUSED, ENETUNREACH}),
              "the directory server ldap.example:389 cannot be reached "
              "(Network is unreachable); check the network, and the address that the device "
              "gives");
}

TEST(DirectoryMessagesTest, ABindThatIsNotAnsweredIsNoRefusal)
{
    EXPECT_EQ(bindFailed(server, {48, "words"}),
              "the directory server ldap.example:389 refuses to be used without "
              "a login (words); let it be searched anonymously");
    EXPECT_EQ(bindFailed(server, {85, "words"}), timedOut(server));
    EXPECT_EQ(bindFailed(server, {81, "words"}),
              "the directory server ldap.example:389 ended the connection; check "
              "that it is a directory server");
}

TEST(DirectoryMessagesTest, OneResultIsOne)
{
    EXPECT_EQ(serversLimit(server, 1),
              "the directory server ldap.example:389 gives no more than one result; search "
              "for a longer name to see the others");
}

} // namespace
