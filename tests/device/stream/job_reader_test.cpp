// A job as it comes: in pieces, with others behind it, cut short.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/stream/job_reader.h"

#include "tests/device/stream/sample_jobs.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace quelm::device {
namespace {

using testing::HasSubstr;

/// Jobs of all forms, in order and not.
std::vector<std::string> someJobs()
{
    return {joined(dscJob()),
            joined(pjlJob()),
            std::string(uel) + joined(dscJob()) + std::string(uel),
            "%!PS\nshowpage\n",
            std::string(uel) + "@PJL ENTER LANGUAGE=POSTSCRIPT\r\n%!PS\rshowpage\r" + std::string(uel),
            joined(replaced(pjlJob(), "ENTER", "@PJL ENTER LANGUAGE=PCL\r")),
            joined(replaced(dscJob(), "RESOLUTION", "%%OID_ATT_FAX_RESOLUTION 1;\r")),
            "\x1B%-1234\x1B%-12345X\x1B",
            ""};
}

TEST(JobReader, MakesTheSameOfAJobHoweverItIsCut)
{
    for (const auto& bytes : someJobs()) {
        const auto whole = described(readJob(bytes));
        for (std::size_t cut = 0; cut <= bytes.size(); ++cut) {
            JobReader reader;
            auto taken = reader.take(std::string_view(bytes).substr(0, cut));
            if (taken == cut)
                taken += reader.take(std::string_view(bytes).substr(cut));
            const auto job = reader.finish();
            ASSERT_EQ(described(job), whole) << cut;
            ASSERT_EQ(job.size, taken) << cut;
        }
        EXPECT_EQ(described(readJob(bytes, 1)), whole);
    }
}

TEST(JobReader, AFaxThatEndsTooEarlyIsRefusedWhereverItEnds)
{
    for (const auto& lines : {dscJob(), pjlJob()}) {
        const auto bytes = joined(lines);
        // The last line end of the DSC form is not missed.
        const auto least = bytes.size() - (bytes.ends_with('\n') ? 1 : 0);
        for (std::size_t size = 0; size < least; ++size) {
            const auto job = readJob(std::string_view(bytes).substr(0, size));
            ASSERT_TRUE(job.isRefused() || !job.isFax) << size;
            // Nothing of it is printed instead, once an attribute has come.
            ASSERT_TRUE(job.isRefused() || size < bytes.find("OID_ATT_JOB_TYPE")) << size;
        }
        EXPECT_FALSE(readJob(std::string_view(bytes).substr(0, least)).isRefused());
    }
}

TEST(JobReader, SaysWhereThePostScriptIs)
{
    const auto dsc = joined(dscJob());
    const auto ofDsc = readJob(dsc);
    EXPECT_EQ(ofDsc.postScriptBegin, 0U);
    EXPECT_EQ(ofDsc.postScriptEnd, dsc.size());
    EXPECT_EQ(ofDsc.size, dsc.size());

    const auto pjl = joined(pjlJob());
    const auto ofPjl = readJob(pjl);
    EXPECT_EQ(ofPjl.size, pjl.size());
    const auto postScript = pjl.substr(ofPjl.postScriptBegin, ofPjl.postScriptEnd - ofPjl.postScriptBegin);
    EXPECT_TRUE(postScript.starts_with("%!PS-Adobe-3.0\n"));
    EXPECT_TRUE(postScript.ends_with("%%EOF\n"));

    // As some systems wrap what they send.
    const std::string around = "\x04" + std::string(uel) + "\x04%!PS\nshowpage\n\x04" + std::string(uel);
    const auto job = readJob(around);
    EXPECT_EQ(job.postScriptBegin, 11U);
    EXPECT_EQ(around.substr(job.postScriptBegin, job.postScriptEnd - job.postScriptBegin),
              "%!PS\nshowpage\n\x04");
}

TEST(JobReader, JobsInPjlFormFollowOneAnother)
{
    const auto one = joined(pjlJob());
    const auto two =
        joined(replaced(pjlJob(), "5550104477", "@PJL COMMENT OID_ATT_FAX_DESTINATION_PHONE \"7\";\r\n"));
    const std::string both = one + "\r\n" + two;
    JobReader first;
    EXPECT_EQ(first.take(both), one.size());
    EXPECT_TRUE(first.isComplete());
    EXPECT_EQ(first.take("more"), 0U);
    EXPECT_EQ(first.finish().destinations.at(0).number, "5550104477");
    EXPECT_EQ(first.nextLine(), 19U);

    JobReader second(first.nextLine());
    EXPECT_EQ(second.take(std::string_view(both).substr(one.size())), two.size() + 2);
    EXPECT_TRUE(second.isComplete());
    const auto job = second.finish();
    EXPECT_EQ(job.destinations.at(0).number, "7");
    EXPECT_EQ(job.destinations.at(0).line, 26U);
    EXPECT_EQ(job.size, two.size() + 2);
}

TEST(JobReader, UelEndsAJobInDscForm)
{
    const auto one = joined(dscJob());
    const auto both = one + std::string(uel) + one;
    JobReader first;
    EXPECT_EQ(first.take(both), one.size() + uel.size());
    EXPECT_TRUE(first.isComplete());
    const auto job = first.finish();
    EXPECT_EQ(refusalsOf(job), "");
    EXPECT_EQ(job.postScriptEnd, one.size());
    EXPECT_EQ(job.size, one.size() + uel.size());
}

TEST(JobReader, NothingIsAJobUntilSomethingComes)
{
    JobReader reader;
    EXPECT_TRUE(reader.isEmpty());
    reader.take(std::string(uel) + "\r\n \t\f\x04" + std::string(uel));
    EXPECT_TRUE(reader.isEmpty());
    EXPECT_FALSE(reader.isComplete());
    reader.take("\x1B");
    EXPECT_FALSE(reader.isEmpty());
    EXPECT_EQ(refusalsOf(reader.finish()), "");
    JobReader other;
    other.take("x");
    EXPECT_FALSE(other.isEmpty());
    EXPECT_EQ(refusalsOf(readJob("")), "0: the job has no document\n");
}

TEST(JobReader, KeepsLittleOfALongLineAndALongJob)
{
    const std::string line(1 << 20, 'x');
    JobReader reader;
    reader.take("%!PS\n");
    for (int i = 0; i < 64; ++i)
        EXPECT_EQ(reader.take(line), line.size());
    const auto job = reader.finish();
    EXPECT_EQ(job.size, 5 + 64 * line.size());
    EXPECT_FALSE(job.isFax);
    EXPECT_FALSE(job.isRefused());
}

TEST(JobReader, RemarksHaveABound)
{
    std::string many;
    for (int i = 0; i < 1000; ++i)
        many += "%%OID_ATT_FAX_RESOLUTION 9;\r\n%%OID_ATT_NEW 1;\r\n";
    const auto job = readJob(joined(inserted(dscJob(), "RESOLUTION", many)));
    EXPECT_EQ(job.refusals.size(), 101U);
    EXPECT_EQ(job.refusalCount(), job.refusalsLeftOut + 100U);
    EXPECT_GT(job.refusalCount(), 1000U);
    EXPECT_THAT(job.refusals.back().text, HasSubstr("more"));
    EXPECT_EQ(job.objections.size(), 101U);
}

} // namespace
} // namespace quelm::device
