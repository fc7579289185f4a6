// A driver without a directory says so.
#include "host/directory_client.h"

#include <gtest/gtest.h>

namespace {

TEST(DirectoryClientTest, NoServerIsReached)
{
    LDAPSession session;
    std::string address = "ldap.example";
    std::string filter = "(sn=A*)";
    session.setServerIP(address.data());
    EXPECT_FALSE(session.openSession());
    EXPECT_FALSE(session.bindAnonymousSession());
    EXPECT_FALSE(session.requestSearch(filter, 2, nullptr, false));
    EXPECT_EQ(session.getLastResponseItemCount(), 0);
    EXPECT_NE(session.getLastResponseCode(), 0);
}

TEST(DirectoryClientTest, AnEntryIsEmptyAndEmptiesTheText)
{
    LDAPSession session;
    LDAPEntry entry;
    EXPECT_FALSE(session.getNextEntry(entry));
    std::string attribute = "cn";
    std::string value = "before";
    EXPECT_FALSE(entry.fetchValueByAttribute(attribute.data(), value));
    EXPECT_EQ(value, "");
}

} // namespace
