// Tests of the recording and replaying of a job.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/desktop/sending/recorded_job.h"

#include "base/error.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace quelm {
namespace {

/// Appends to its cover sheet with every writing, as the component does.
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

TEST(RecordedJobTest, RecordingApartLeavesTheSessionAsItIs)
{
    GrowingSession session;
    const auto first = recordJobApart(session);
    EXPECT_EQ(recordJobApart(session), first);
    EXPECT_EQ(first.coverSheet, std::vector<std::string>{"Ann"});
    EXPECT_EQ(session.names, "");
    EXPECT_EQ(recordJob(session), first);
}

TEST(RecordedJobTest, PackingKeepsEverything)
{
    RecordedJob job;
    job.attributes = {"", "a b", std::string("\0 3 x", 5)};
    job.coverSheet = {"12 "};
    job.withCoverPage = true;
    job.coverSheetWritten = true;
    job.recipients = 7;
    EXPECT_EQ(unpacked(packed(job)), job);
    EXPECT_EQ(unpacked(packed({})), RecordedJob());
}

TEST(RecordedJobTest, ADamagedPackIsRefused)
{
    RecordedJob job;
    job.attributes = {"text"};
    const std::string pack = packed(job);
    for (std::size_t size = 0; size < pack.size(); ++size)
        EXPECT_THROW(unpacked(pack.substr(0, size)), Error) << size;
    EXPECT_THROW(unpacked(pack + "x"), Error);
    EXPECT_THROW(unpacked("99999999999999999999999 "), Error);
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
