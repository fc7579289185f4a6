// One JSON document for each answer, failures included.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/command_line/json_answer.h"

#include "base/error.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <new>
#include <vector>

namespace quelm {
namespace {

using Json = nlohmann::json;

bool asks(std::vector<const char*> arguments)
{
    arguments.insert(arguments.begin(), "program");
    return asksForJson(static_cast<int>(arguments.size()), arguments.data());
}

/// What stands on standard output when work with --json ends with an exception.
template <typename Failure, typename Work>
std::string outputOf(bool asJson, const Work& work)
{
    testing::internal::CaptureStdout();
    EXPECT_THROW(withJsonFailure(asJson, work), Failure);
    return testing::internal::GetCapturedStdout();
}

TEST(JsonAnswer, IsAskedForWhereverTheOptionStandsButNotBehindTheLastOne)
{
    EXPECT_TRUE(asks({"--json"}));
    EXPECT_TRUE(asks({"fax", "--bogus", "--json"}));
    EXPECT_FALSE(asks({"fax", "--json=x", "--jso"}));
    EXPECT_FALSE(asks({"fax", "--", "--json"}));
    EXPECT_FALSE(asks({}));
}

TEST(JsonAnswer, AFailureIsTheAnswerAndGoesOn)
{
    const auto failed = outputOf<Error>(true, [] { throw Error("a\nb \xff"); });
    EXPECT_EQ(failed.find('\n'), failed.size() - 1) << failed;
    EXPECT_EQ(Json::parse(failed), Json({{"error", "a b \ufffd"}, {"status", 1}}));
    const auto misused = outputOf<UsageError>(true, [] { throw UsageError("no"); });
    EXPECT_EQ(Json::parse(misused)["status"], 2);
    EXPECT_EQ(outputOf<std::bad_alloc>(true, [] { throw std::bad_alloc(); }), "");
    EXPECT_EQ(outputOf<Error>(false, [] { throw Error("no"); }), "");
}

TEST(JsonAnswer, AFailureBehindAnAnswerIsNoSecondOne)
{
    EXPECT_EQ(outputOf<Error>(true,
                              [] {
                                  writeJsonAnswer("[]\n");
                                  throw Error("no");
                              }),
              "[]\n");
    EXPECT_NE(outputOf<Error>(true, [] { throw Error("no"); }), "") << "the next work answers anew";
}

} // namespace
} // namespace quelm
