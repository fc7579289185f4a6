// Tests of the recording and replaying of a job.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/desktop/sending/recorded_job.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace quelm {
namespace {

/// Appends to its cover sheet with every writing.
class GrowingSession : public FaxSession {
public:
    void setPdl(Pdl) override {}
    bool coverPageChosen() override { return withCover; }
    bool checkInfo() override { return true; }
    bool serializeJob(AbstractPDLWriter& writer) override
    {
        writer.writeString("%%one\r\n");
        writer.writeString(std::string("nul\0!", 5));
        return true;
    }
    bool serializeCoverSheet(AbstractPDLWriter& writer) override
    {
        names += "Ann";
        return writer.writeText(names.c_str()) && coverSucceeds;
    }

    std::size_t count(RecipientList list) override { return list == RecipientList::job ? 2 : 1; }
    JobRecipient recipient(RecipientList, std::size_t position) override
    {
        JobRecipient recipient;
        recipient.number = std::to_string(position);
        return recipient;
    }
    JobTexts texts() override
    {
        JobTexts texts;
        texts.dialingPrefix = "9";
        return texts;
    }
    CoverPageTemplate coverPageTemplate() override { return {"header", "trailer"}; }

    bool withCover = true;
    bool coverSucceeds = true;
    std::string names;
};

class Collector : public AbstractPDLWriter {
public:
    bool writeText(const char* text) override
    {
        texts.emplace_back(text);
        return !refuses;
    }
    void writeString(const std::string& text) override { texts.push_back(text); }

    std::vector<std::string> texts;
    bool refuses = false;
};

TEST(RecordedJobTest, HoldsTheTextsOneByOne)
{
    GrowingSession session;
    const auto job = recordJob(session);
    EXPECT_EQ(job.attributes, (std::vector<std::string>{"%%one\r\n", std::string("nul\0!", 5)}));
    EXPECT_EQ(job.coverSheet, std::vector<std::string>{"Ann"});
    EXPECT_TRUE(job.withCoverPage && job.attributesWritten && job.coverSheetWritten);
}

TEST(RecordedJobTest, WithoutACoverPageNoneIsWritten)
{
    GrowingSession session;
    session.withCover = false;
    EXPECT_TRUE(recordJob(session).coverSheet.empty());
    EXPECT_EQ(session.names, "");
}

TEST(RecordedJobTest, HoldsWhatTheTextsAreComparedWith)
{
    GrowingSession session;
    const auto job = recordJob(session);
    EXPECT_EQ(job.recipients, session.recipients());
    EXPECT_EQ(job.texts, session.texts());
    EXPECT_EQ(job.coverPage, session.coverPageTemplate());
    RecordedFaxSession replay(job);
    EXPECT_EQ(replay.recipients(), session.recipients());
    EXPECT_EQ(replay.texts(), session.texts());
    EXPECT_EQ(replay.coverPageTemplate(), session.coverPageTemplate());
    EXPECT_TRUE(replay.picks().empty());
}

TEST(RecordedFaxSessionTest, WritesWhatWasRecorded)
{
    GrowingSession session;
    const auto job = recordJob(session);
    RecordedFaxSession replay(job);
    Collector attributes;
    Collector cover;
    EXPECT_TRUE(replay.checkInfo());
    EXPECT_TRUE(replay.coverPageChosen());
    EXPECT_TRUE(replay.serializeJob(attributes));
    EXPECT_TRUE(replay.serializeCoverSheet(cover));
    EXPECT_EQ(attributes.texts, job.attributes);
    EXPECT_EQ(cover.texts, job.coverSheet);
}

TEST(RecordedFaxSessionTest, AnswersAsTheComponentDid)
{
    GrowingSession session;
    session.coverSucceeds = false;
    const auto job = recordJob(session);
    RecordedFaxSession replay(job);
    Collector writer;
    EXPECT_FALSE(replay.serializeCoverSheet(writer));
}

TEST(RecordedFaxSessionTest, AWriterThatTakesNoMoreEndsTheWriting)
{
    RecordedJob job;
    job.attributes = {"one", "two"};
    job.attributesWritten = true;
    RecordedFaxSession replay(job);
    Collector writer;
    writer.refuses = true;
    EXPECT_FALSE(replay.serializeJob(writer));
    EXPECT_EQ(writer.texts, std::vector<std::string>{"one"});
}

} // namespace
} // namespace quelm
