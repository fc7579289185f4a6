// A driver without a device answers no query.
#include "host/device_session.h"

#include <gtest/gtest.h>

#include <string>

namespace {

TEST(DeviceSessionTest, NothingIsAnsweredAndNothingTouched)
{
    BaseBiDiSession session;
    std::string name = "ubqSvcMonServiceDetailTableLDAP";
    char untouched[] = "untouched";
    char* value = untouched;
    EXPECT_FALSE(session.getRecipientData(name.data(), 0, &value));
    EXPECT_EQ(value, untouched);
    EXPECT_FALSE(session.fetchSingleOIDResponse(name.data(), &value, sizeof untouched));
    EXPECT_STREQ(untouched, "untouched");
}

} // namespace
