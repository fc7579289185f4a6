// The number of a credit card from a file, which is told nowhere.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/cli/job/credit_card_file.h"

#include "tests/support/failure_line.h"
#include "tests/support/log_capture.h"
#include "tests/support/temporary_folder.h"

#include <gmock/gmock.h>
#include <sys/stat.h>

namespace quelm {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

class CreditCardFileTest : public testing::Test {
protected:
    std::string file(const std::string& content, mode_t mode = 0600) const
    {
        const auto path = writeFile(folder / "card", content);
        EXPECT_EQ(::chmod(path.c_str(), mode), 0);
        return path;
    }

    TemporaryFolder folder;
    LogCapture log;
};

TEST_F(CreditCardFileTest, TheFirstLineCountsWithoutItsLineEnd)
{
    for (const char* content :
         {"4111-1111 1111", "4111-1111 1111\n", "4111-1111 1111\r\n", "4111-1111 1111\nx\n"})
        EXPECT_EQ(readCreditCard(file(content)), "4111-1111 1111");
    EXPECT_THAT(log.messages, IsEmpty());
}

TEST_F(CreditCardFileTest, AFileThatOthersReadIsAWarningThatDoesNotTellIt)
{
    for (const mode_t mode : {0640U, 0604U, 0644U}) {
        log.messages.clear();
        EXPECT_EQ(readCreditCard(file("4111", mode)), "4111");
        EXPECT_THAT(log.messages, ElementsAre(AllOf(HasSubstr("others can read"), Not(HasSubstr("4111")))));
    }
}

TEST_F(CreditCardFileTest, WhatIsNoNumberIsRefusedWithoutBeingTold)
{
    for (const char* content : {"", "\n4111", "4111\"", "4111;\n", "4111x", "4111\r\r5\n",
                                "\xef\xbb\xbf"
                                "4111"})
        EXPECT_THAT(test::failureLine([&] { static_cast<void>(readCreditCard(file(content))); }),
                    AllOf(HasSubstr("the first line is no credit card number"), Not(HasSubstr("4111"))));
    EXPECT_NE(test::failureLine([&] { static_cast<void>(readCreditCard(folder / "none")); }), "");
}

} // namespace
} // namespace quelm
