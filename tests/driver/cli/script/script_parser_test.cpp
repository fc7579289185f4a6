// The script language: words, quotation marks, commands, and what is said about typos.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/cli/script/script_parser.h"

#include "tests/support/failure_line.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace quelm {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

ScriptStep only(std::string_view line)
{
    const auto steps = parseScript(line, "s");
    EXPECT_THAT(steps, SizeIs(1)) << line;
    return steps.empty() ? ScriptStep{} : steps.front();
}

std::string refusal(const std::string& script)
{
    return test::failureLine([&] { parseScript(script, "s"); });
}

TEST(ScriptParser, ReadsEveryCommandWithOneTarget)
{
    const std::pair<const char*, ScriptVerb> commands[] = {
        {"press", ScriptVerb::press}, {"close", ScriptVerb::close}, {"call", ScriptVerb::call},
        {"show", ScriptVerb::show},   {"rows", ScriptVerb::rows},
    };
    for (const auto& [word, verb] : commands) {
        const auto step = only(std::string(word) + " \"Lan Fax Window\"");
        EXPECT_EQ(step.verb, verb) << word;
        EXPECT_EQ(step.target, "Lan Fax Window") << word;
    }
}

TEST(ScriptParser, ReadsWhatToType)
{
    const auto step = only("type \"RecipientName\" \"Ann Lee\"");
    EXPECT_EQ(step.verb, ScriptVerb::type);
    EXPECT_EQ(step.target, "RecipientName");
    EXPECT_EQ(step.text, "Ann Lee");
}

TEST(ScriptParser, ReadsAnEmptyText) { EXPECT_EQ(only("type F \"\"").text, ""); }

TEST(ScriptParser, ReadsOnAndOff)
{
    EXPECT_TRUE(only("tick B on").on);
    EXPECT_FALSE(only("tick B off").on);
    EXPECT_EQ(only("tick B off").target, "B");
    EXPECT_EQ(refusal("tick B maybe"), "s:1: \"maybe\" is neither on nor off");
}

TEST(ScriptParser, ReadsTheAnswerToAQuestion)
{
    EXPECT_EQ(only("answer yes").verb, ScriptVerb::answer);
    EXPECT_TRUE(only("answer yes").on);
    EXPECT_FALSE(only("answer no").on);
    EXPECT_EQ(refusal("answer perhaps"), "s:1: \"perhaps\" is neither yes nor no");
}

TEST(ScriptParser, ReadsTheChosenIndex)
{
    EXPECT_THAT(only("choose \"LanFax Resolution\" 2").numbers, ElementsAre(2));
    for (const auto* word : {"-1", "two", "1x", "99999999999999999999", "1.5", "\"\""})
        EXPECT_THAT(refusal("choose C " + std::string(word)), testing::HasSubstr("is no row or index"))
            << word;
}

TEST(ScriptParser, ReadsSelectedRowsInTheirOrder)
{
    EXPECT_THAT(only("select L 3 0 2").numbers, ElementsAre(3, 0, 2));
}

TEST(ScriptParser, ReadsASelectionOfNothing) { EXPECT_THAT(only("select L").numbers, IsEmpty()); }

TEST(ScriptParser, ReadsCommandsWithoutAndWithTwoTargets)
{
    EXPECT_EQ(only("windows").verb, ScriptVerb::windows);
    const auto fax = only("fax letter.ps \"out put.job\"");
    EXPECT_EQ(fax.verb, ScriptVerb::fax);
    EXPECT_EQ(fax.target, "letter.ps");
    EXPECT_EQ(fax.text, "out put.job");
}

TEST(ScriptParser, ReadsWhatTakesAFaxJob)
{
    EXPECT_EQ(only("fax letter.ps out").place, ScriptPlace::file);
    EXPECT_EQ(only("summary letter.ps").place, ScriptPlace::none);
    EXPECT_EQ(only("summary letter.ps").target, "letter.ps");
    EXPECT_EQ(only("summary letter.ps out").place, ScriptPlace::file);
    EXPECT_EQ(only("summary letter.ps queue fax").place, ScriptPlace::queue);
    EXPECT_EQ(only("fax letter.ps device").place, ScriptPlace::file) << "a file may have any name";
    const auto device = only("fax letter.ps device [::1]:9101");
    EXPECT_EQ(device.place, ScriptPlace::device);
    EXPECT_EQ(device.target, "letter.ps");
    EXPECT_EQ(device.text, "[::1]:9101");
    const auto queue = only("fax letter.ps queue -");
    EXPECT_EQ(queue.place, ScriptPlace::queue);
    EXPECT_EQ(queue.text, "-");
}

TEST(ScriptParser, RefusesPlacesThatTakeNoFaxJob)
{
    EXPECT_EQ(refusal("fax letter.ps file out"), "s:1: \"file\" is neither device nor queue");
    EXPECT_THAT(refusal("fax letter.ps device a:b"), StartsWith("s:1: \"a:b\" is no address"));
}

TEST(ScriptParser, KeepsAFaxJobOffStandardOutput)
{
    EXPECT_THAT(refusal("summary letter.ps device a:b"), StartsWith("s:1: \"a:b\" is no address"));
    EXPECT_THAT(refusal("summary"), StartsWith("s:1: write: summary DOCUMENT"));
    EXPECT_THAT(refusal("fax letter.ps -"), StartsWith("s:1: a script's answers stand on standard output"));
}

TEST(ScriptParser, ReadsEscapes)
{
    EXPECT_EQ(only(R"(type F "a\"b\\c\n\r\t\x41\xc3\xa9")").text, "a\"b\\c\n\r\tA\xc3\xa9");
}

TEST(ScriptParser, RefusesUnknownAndUnfinishedEscapes)
{
    for (const auto* text : {R"("\q")", R"("\x4")", R"("\xg0")", R"("\x00")", R"("\xff")", "\"\\"})
        EXPECT_THAT(refusal("type F " + std::string(text)), StartsWith("s:1: ")) << text;
}

TEST(ScriptParser, PassesOverEmptyLinesAndComments)
{
    const auto steps = parseScript("# first\n\n   \t\n  press A # then\npress \"B # C\"#end\n", "s");
    ASSERT_THAT(steps, SizeIs(2));
    EXPECT_EQ(steps[0].line, 4U);
    EXPECT_EQ(steps[0].target, "A");
    EXPECT_EQ(steps[1].line, 5U);
    EXPECT_EQ(steps[1].target, "B # C");
}

TEST(ScriptParser, TakesCarriageReturnsAndAByteOrderMark)
{
    const auto steps = parseScript("\xef\xbb\xbfpress A\r\nwindows\r\n", "s");
    ASSERT_THAT(steps, SizeIs(2));
    EXPECT_EQ(steps[0].target, "A");
}

TEST(ScriptParser, NamesFileAndLineOfATypo)
{
    EXPECT_EQ(refusal("windows\npush \"A\"\n"), "s:2: unknown command \"push\"");
    EXPECT_EQ(refusal("press"), "s:1: write: press \"WIDGET\"");
    EXPECT_EQ(refusal("press A B"), "s:1: write: press \"WIDGET\"");
    EXPECT_EQ(refusal("windows all"), "s:1: write: windows");
    EXPECT_EQ(refusal("type A"), "s:1: write: type \"WIDGET\" \"TEXT\"");
    EXPECT_EQ(refusal("fax A"),
              "s:1: write: fax DOCUMENT OUTPUT, fax DOCUMENT device ADDRESS or fax DOCUMENT queue NAME");
    EXPECT_THAT(refusal("fax A device B C"), StartsWith("s:1: write: fax DOCUMENT OUTPUT, "));
    EXPECT_EQ(refusal("press \"A"), "s:1: a quotation mark is not closed");
    EXPECT_EQ(refusal("press A\"B\""), "s:1: a quotation mark stands amid a word");
    EXPECT_EQ(refusal("type \"A\"\"B\""), "s:1: a word follows a quotation mark without a blank");
}

TEST(ScriptParser, TakesThePictureOfACoverPage)
{
    const auto steps = parseScript("cover \"my cover.png\"\ncover a.png\n", "s");
    ASSERT_THAT(steps, SizeIs(2));
    EXPECT_EQ(steps[0].verb, ScriptVerb::cover);
    EXPECT_EQ(steps[0].target, "my cover.png");
    EXPECT_EQ(steps[1].target, "a.png");
    EXPECT_EQ(refusal("cover"), "s:1: write: cover FILE.png");
    EXPECT_EQ(refusal("cover a b"), "s:1: write: cover FILE.png");
    EXPECT_EQ(refusal("cover \"\""), "s:1: the file name is empty; name a file");
    EXPECT_EQ(refusal("cover -"),
              "s:1: a script's answers stand on standard output; name a file for the picture");
}

TEST(ScriptParser, RefusesBinaryText)
{
    EXPECT_EQ(refusal(std::string("press A\0B", 9)), "s:1: holds a NUL byte");
    EXPECT_EQ(refusal("press \xff"), "s:1: is not UTF-8");
}

TEST(ScriptParser, QuotesTextsSoThatTheyReadBack)
{
    const std::string text = "a \"b\" \\ \n\r\t\x01\x7f é";
    EXPECT_EQ(inQuotes(text), "\"a \\\"b\\\" \\\\ \\n\\r\\t\\x01\\x7f é\"");
    EXPECT_EQ(only("type F " + inQuotes(text)).text, text);
}

} // namespace
} // namespace quelm
