// Good jobs with one thing after another changed in them, from a fixed seed.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/stream/job_reader.h"
#include "tests/device/stream/sample_jobs.h"

#include <gtest/gtest.h>

#include <random>

namespace quelm::device {
namespace {

using namespace std::string_view_literals;

constexpr unsigned seed = 20261122;

class Mutations : public testing::Test {
protected:
    std::size_t below(std::size_t bound)
    {
        return std::uniform_int_distribution<std::size_t>(0, bound - 1)(random);
    }

    /// Drops, doubles or swaps lines.
    Lines withLinesChanged(Lines lines)
    {
        const auto at = static_cast<std::ptrdiff_t>(below(lines.size()));
        const auto other = below(lines.size());
        switch (below(3)) {
        case 0:
            lines.erase(lines.begin() + at);
            break;
        case 1:
            lines.insert(lines.begin() + static_cast<std::ptrdiff_t>(other),
                         lines[static_cast<std::size_t>(at)]);
            break;
        default:
            std::swap(lines[static_cast<std::size_t>(at)], lines[other]);
        }
        return lines;
    }

    /// Changes, removes or adds a byte, of those that mean something above all.
    std::string withByteChanged(std::string bytes)
    {
        constexpr auto signs = "\r\n%@\"; \x1B,OID_9\0\xE4X-"sv;
        const auto at = below(bytes.size());
        const char sign = signs[below(signs.size())];
        switch (below(3)) {
        case 0:
            bytes[at] = sign;
            break;
        case 1:
            bytes.erase(at, 1);
            break;
        default:
            bytes.insert(at, 1, sign);
        }
        return bytes;
    }

    /// What holds of whatever is read.
    void checkInvariants(const std::string& bytes)
    {
        const auto whole = readJob(bytes);
        ASSERT_LE(whole.size, bytes.size());
        ASSERT_LE(whole.postScriptBegin, whole.postScriptEnd);
        ASSERT_LE(whole.postScriptEnd, whole.size);
        ASSERT_LE(whole.refusals.size(), 101U);
        ASSERT_TRUE(whole.isFax || whole.destinations.empty());
        ASSERT_TRUE(whole.isRefused() || !whole.isFax || !whole.destinations.empty());
        ASSERT_EQ(described(readJob(bytes, 1 + below(20))), described(whole));
        const auto lines = static_cast<std::uint64_t>(
            1 + std::ranges::count_if(bytes, [](char byte) { return byte == '\n' || byte == '\r'; }));
        for (const auto* remarks : {&whole.refusals, &whole.objections})
            for (const auto& remark : *remarks)
                ASSERT_LE(remark.line, lines) << remark.text;
    }

    std::mt19937 random{seed};
};

/// The lines of a job that its fax goes by, one behind the other.
std::string attributesIn(const std::string& bytes)
{
    const auto first = std::min(bytes.find("%%OID"), bytes.find("@PJL COMMENT"));
    const auto last = std::min(bytes.find("%%EndComments"), bytes.find("@PJL ENTER"));
    return first == std::string::npos || last == std::string::npos || last < first
               ? ""
               : bytes.substr(first, last - first);
}

TEST_F(Mutations, OfBytesBreakNothing)
{
    for (const auto& lines : {dscJob(), pjlJob()})
        for (int round = 0; round < 1500; ++round) {
            auto bytes = joined(lines);
            for (std::size_t times = 1 + below(4); times > 0; --times)
                bytes = withByteChanged(bytes);
            SCOPED_TRACE(testing::Message() << "seed " << seed << ", round " << round << "\n" << bytes);
            ASSERT_NO_FATAL_FAILURE(checkInvariants(bytes));
        }
}

TEST_F(Mutations, OfLinesBreakNothing)
{
    for (const auto& lines : {dscJob(), pjlJob()})
        for (int round = 0; round < 1500; ++round) {
            auto changed = lines;
            for (std::size_t times = 1 + below(4); times > 0; --times)
                changed = withLinesChanged(changed);
            SCOPED_TRACE(testing::Message() << "seed " << seed << ", round " << round << "\n"
                                            << joined(changed));
            ASSERT_NO_FATAL_FAILURE(checkInvariants(joined(changed)));
        }
}

TEST_F(Mutations, OfAttributeLinesAreNeverTakenForTheJobAsItWas)
{
    for (const auto& lines : {dscJob(), pjlJob()}) {
        const auto original = joined(lines);
        const auto attributes = attributesIn(original);
        const auto begin = original.find(attributes);
        const auto meant = described(readJob(original));
        int taken = 0;
        int refused = 0;
        for (int round = 0; round < 3000; ++round) {
            const auto changed = withByteChanged(attributes);
            if (changed == attributes)
                continue;
            const auto bytes = std::string(original).replace(begin, attributes.size(), changed);
            const auto job = readJob(bytes);
            SCOPED_TRACE(testing::Message() << "seed " << seed << ", round " << round << "\n" << bytes);
            // Refused, remarked upon, or read as what stands there now.
            ASSERT_TRUE(job.isRefused() || !job.objections.empty() || described(job) != meant);
            ++(job.isRefused() ? refused : taken);
            if (job.isRefused())
                continue;
            for (const auto& destination : job.destinations)
                ASSERT_NE(changed.find("PHONE \"" + destination.number + "\";\r\n"), std::string::npos);
            ASSERT_TRUE(job.creditCard.empty() ||
                        changed.find("\"" + job.creditCard + "\"") != std::string::npos);
        }
        // Some changes are as good as what was there: another digit.
        EXPECT_GT(taken, 0);
        EXPECT_GT(refused, taken);
    }
}

} // namespace
} // namespace quelm::device
