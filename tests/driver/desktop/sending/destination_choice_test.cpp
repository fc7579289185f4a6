// Tests of the chosen destination's checks and words.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/desktop/sending/destination_choice.h"

#include "base/error.h"

#include <gmock/gmock.h>

namespace quelm {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

TEST(DestinationChoiceTest, TheChosenKindNeedsItsOwnTextAlone)
{
    EXPECT_THAT(troubleWith({DestinationKind::file, "", "host", "queue"}), HasSubstr("file"));
    EXPECT_THAT(troubleWith({DestinationKind::device, "/f", "", "queue"}), HasSubstr("device"));
    EXPECT_THAT(troubleWith({DestinationKind::queue, "/f", "host", ""}), HasSubstr("queue"));
    EXPECT_EQ(troubleWith({DestinationKind::file, "/f", "", ""}), "");
    EXPECT_EQ(troubleWith({DestinationKind::device, "", "host", ""}), "");
    EXPECT_EQ(troubleWith({DestinationKind::queue, "", "", "queue"}), "");
}

TEST(DestinationChoiceTest, AFolderIsNoFile)
{
    EXPECT_NE(troubleWith({DestinationKind::file, "/folder/", "", ""}), "");
}

TEST(DestinationChoiceTest, WhatIsNoAddressIsNoDevice)
{
    EXPECT_THAT(troubleWith({DestinationKind::device, "", "host:port", ""}), HasSubstr("host:port"));
    EXPECT_EQ(troubleWith({DestinationKind::file, "/f", "host:port", ""}), "");
}

TEST(DestinationChoiceTest, TheChosenKindIsTheTarget)
{
    DestinationChoice choice{DestinationKind::file, "/f", "fax.example:9101", "office"};
    EXPECT_EQ(std::get<FileTarget>(targetOf(choice)).path, "/f");
    choice.kind = DestinationKind::device;
    EXPECT_EQ(std::get<NetworkAddress>(targetOf(choice)).host, "fax.example");
    EXPECT_EQ(std::get<NetworkAddress>(targetOf(choice)).port, 9101);
    choice.kind = DestinationKind::queue;
    EXPECT_EQ(std::get<QueueTarget>(targetOf(choice)).name, "office");
    choice.kind = DestinationKind::device;
    choice.device = "host:port";
    EXPECT_THROW(targetOf(choice), Error);
}

TEST(DestinationChoiceTest, APlaceOfTheConfigurationIsOneThatCouldBeTyped)
{
    const auto queue = choiceOf(QueueTarget{"fax", "print.example"});
    EXPECT_EQ(queue.kind, DestinationKind::queue);
    EXPECT_EQ(std::get<QueueTarget>(targetOf(queue)).name, "fax");
    EXPECT_EQ(std::get<QueueTarget>(targetOf(queue)).server, "print.example");
    const auto device = choiceOf(NetworkAddress{"2001:db8::1", 9101});
    EXPECT_EQ(std::get<NetworkAddress>(targetOf(device)).host, "2001:db8::1");
    EXPECT_EQ(std::get<NetworkAddress>(targetOf(device)).port, 9101);
    EXPECT_EQ(std::get<FileTarget>(targetOf(choiceOf(FileTarget{"/f"}))).path, "/f");
    EXPECT_EQ(troubleWith({DestinationKind::named, "", "", "", "", "Office"}), "");
}

TEST(DestinationChoiceTest, TypedPathsBecomeAbsolute)
{
    EXPECT_EQ(absolutePath("/a/b", "/home/ann", "/folder"), "/a/b");
    EXPECT_EQ(absolutePath("~/b", "/home/ann", "/folder"), "/home/ann/b");
    EXPECT_EQ(absolutePath("~/b", "", "/folder"), "/folder/~/b");
    EXPECT_EQ(absolutePath("~ann", "/home/ann", "/folder"), "/folder/~ann");
    EXPECT_EQ(absolutePath("b", "/home/ann", "/folder"), "/folder/b");
    EXPECT_EQ(absolutePath("-", "/home/ann", "/folder"), "/folder/-");
    EXPECT_EQ(absolutePath("", "/home/ann", "/folder"), "");
}

TEST(DestinationChoiceTest, TheEndSaysWhatWasHandedOverAndToWhom)
{
    EXPECT_EQ(handedOverText(DestinationKind::file, "/tmp/a.job", "letter.ps", 1),
              "The fax job of letter.ps for 1 recipient was written to /tmp/a.job.");
    EXPECT_EQ(handedOverText(DestinationKind::device, "fax:9100", "letter.ps", 2),
              "The fax job of letter.ps for 2 recipients was handed over to fax:9100.");
}

TEST(DestinationChoiceTest, TheEndNeverClaimsThatTheFaxArrived)
{
    for (const auto kind : {DestinationKind::file, DestinationKind::device, DestinationKind::queue})
        EXPECT_THAT(handedOverText(kind, "place", "document", 3),
                    AllOf(Not(HasSubstr("deliver")), Not(HasSubstr("sent")), Not(HasSubstr("faxed"))));
}

} // namespace
} // namespace quelm
