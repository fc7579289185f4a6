// Tests of running PostScript before it is sent.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/documents/postscript_check.h"

#include "base/file_io.h"
#include "tests/driver/jobs/job_support.h"

#include <fcntl.h>

#include <filesystem>
#include <map>

namespace quelm::tests {
namespace {

class PostScriptCheckTest : public JobTest {
protected:
    /// The line with which a program behind "%!PS" is refused; empty when it is not.
    std::string refusal(const std::string& program) const
    {
        const FileHandle opened(::open(file("a.ps", "%!PS\n" + program).c_str(), O_RDONLY | O_CLOEXEC));
        return errorLine([&] { static_cast<void>(checkPostScript(opened, "a.ps", bounds)); });
    }

    /// How many pages it has; -1 when that cannot be told.
    int pages(const std::string& program) const
    {
        const FileHandle opened(::open(file("a.ps", "%!PS\n" + program).c_str(), O_RDONLY | O_CLOEXEC));
        const auto count = checkPostScript(opened, "a.ps", bounds);
        return count ? static_cast<int>(*count) : -1;
    }

    /// Which page and which error that line names: "3 /undefined in foo".
    std::string fault(const std::string& program) const
    {
        const std::string line = refusal(program);
        const std::string page = "a.ps: page ";
        const std::string error = "(PostScript error ";
        if (!line.starts_with(page) || line.find(error) == std::string::npos)
            return line;
        const auto begin = line.find(error) + error.size();
        return line.substr(page.size(), line.find(' ', page.size()) - page.size() + 1) +
               line.substr(begin, line.find(')', begin) - begin);
    }

    GhostscriptBounds bounds;
};

TEST_F(PostScriptCheckTest, DocumentsThatRunToTheirEndPass)
{
    for (const char* program : {
             "showpage showpage\n",
             "",
             "72 72 moveto 100 100 lineto stroke\n", // a figure that leaves its page to others
             "showpage stop this is not run\n",
             "showpage quit this is not run\n",
             "showpage systemdict /quit get exec nor is this\n",
             "\x04\nshowpage\n\x04",
             "statusdict begin 1 setpapertray end showpage\n",
             "<< /Duplex true /MediaType (thick) /MediaWeight 90 /NoDevice 1 >> setpagedevice showpage\n",
             "/setnodevice where { pop setnodevice } if systemdict /setnothing known { setnothing } if "
             "showpage",
             "{ nonsense } stopped { clear } if showpage\n",
             "{ nonsense } stopped pop showpage stop\n",
             "{ nonsense } stopped pop showpage quit\n",
             "showpage { nonsense } stopped pop\n",
             "currentfile 9 string readline\nnonsense\npop pop showpage",
             "(a lot of chatter) print (more) == stack pstack showpage",
             "(quelm done) = save showpage restore showpage",
         })
        EXPECT_EQ(refusal(program), "") << program;
}

TEST_F(PostScriptCheckTest, CountsThePagesThatComeOut)
{
    const std::map<std::string, int> counts = {
        {"", 0},
        {"showpage", 1},
        {"showpage showpage quit showpage", 2},
        {"showpage stop showpage", 1},
        {"/page { showpage } bind def page page page", 3},
        {"save showpage restore save showpage restore", 2},
        {"copypage showpage", 2},
        {"showpage <</PageSize [99 99]>> setpagedevice showpage", 2},
        {"/#copies 3 def showpage", 3},
        {"(\\nquelm pages: 7\\n) print showpage", 1},
        {"showpage systemdict /quit get exec", -1},
    };
    for (const auto& [program, expected] : counts)
        EXPECT_EQ(pages(program), expected) << program;
}

TEST_F(PostScriptCheckTest, AFailureIsToldInPlainWordsWithItsPageAndError)
{
    EXPECT_EQ(
        refusal("showpage showpage nonsense showpage\n"),
        "a.ps: page 3 cannot be faxed: it uses a command that is not known (PostScript error /undefined in "
        "nonsense); print or save the document again and fax that");
    EXPECT_EQ(
        refusal("showpage (never ended"),
        "a.ps: page 2 cannot be faxed: it is damaged or ends too early (PostScript error /syntaxerror in "
        "----nostringval----); print or save the document again and fax that");
    EXPECT_EQ(refusal("1 0 div"),
              "a.ps: page 1 cannot be faxed: there is a mistake in it (PostScript error /undefinedresult in "
              "div); print or save the document again and fax that");
}

TEST_F(PostScriptCheckTest, EachErrorOfTheInterpreterIsSeen)
{
    const std::map<std::string, std::string> faults = {
        {"showpage { unfinished", "2 /syntaxerror in ----nostringval----"},
        {"/a { 1 a 1 } def showpage a", "2 /execstackoverflow in a"},
        {"{ 1 dict begin } loop", "1 /dictstackoverflow in begin"},
        {"(/etc/passwd) (r) file", "1 /invalidfileaccess in file"},
        {"/showpage { nonsense } def showpage", "1 /undefined in nonsense"},
        {"save showpage restore save showpage restore nonsense", "3 /undefined in nonsense"},
        {"<</PageSize [99 99]>> setpagedevice showpage <</PageSize [9 9]>> setpagedevice nonsense",
         "2 /undefined in nonsense"},
        {"copypage nonsense", "2 /undefined in nonsense"},
        {"/page { showpage } bind def page page nonsense", "3 /undefined in nonsense"},
        {"72 72 scale 8 8 8 [8 0 0 8 0 0] { nonsense } image showpage", "1 /undefined in image"},
        {"clear cleardictstack showpage nonsense", "2 /undefined in nonsense"},
        {"(two words \\001\\377) cvn cvx exec", "1 /undefined in two?words???"},
    };
    for (const auto& [program, expected] : faults)
        EXPECT_EQ(fault(program), expected) << program;
}

TEST_F(PostScriptCheckTest, ADocumentsOwnErrorHandlersHideNothing)
{
    for (const char* program : {
             "errordict /handleerror { (trouble) = showpage } put showpage nonsense",
             "errordict /handleerror { quit } put showpage nonsense",
             "showpage { nonsense } stopped { handleerror } if showpage",
             "showpage { nonsense } stopped { stop } if showpage",
             "showpage { nonsense } stopped { quit } if showpage",
             "showpage { nonsense } stopped { $error /newerror get { stop } if } if",
             "/quit { } def /stop { } def showpage nonsense",
         })
        EXPECT_EQ(fault(program), "2 /undefined in nonsense") << program;
}

TEST_F(PostScriptCheckTest, TheWatcherLeavesNothingWhereADocumentLooks)
{
    EXPECT_EQ(refusal("count 0 ne { nonsense } if countdictstack 3 ne { nonsense } if\n"
                      "userdict { pop 100 string cvs (quelm) anchorsearch { nonsense } if pop } forall"),
              "");
}

TEST_F(PostScriptCheckTest, MemoryAndTimeAreBounded)
{
    bounds.memoryLimit = std::uint64_t{100} << 20U;
    EXPECT_TRUE(fault("showpage [ { 65000 array } loop").starts_with("2 /VMerror in "));
    bounds.timeLimit = std::chrono::milliseconds(300);
    EXPECT_EQ(refusal("{ } loop"),
              "a.ps: cannot be checked: the program \"gs\" was ended: it ran longer than "
              "300 ms; try a smaller document");
}

TEST_F(PostScriptCheckTest, WithoutGhostscriptTheLineSaysSo)
{
    bounds.program = "quelm-no-such-program";
    EXPECT_EQ(refusal("showpage"), "a.ps: cannot be checked: Ghostscript, the program "
                                   "\"quelm-no-such-program\", is not installed; install it and "
                                   "try again");
}

TEST_F(PostScriptCheckTest, AnInterpreterThatBreaksDownIsToldOf)
{
    bounds.program = file("stand-in", "#!/bin/sh\nexit 3\n");
    std::filesystem::permissions(bounds.program, std::filesystem::perms::owner_all);
    EXPECT_EQ(refusal("showpage"), "a.ps: cannot be faxed: Ghostscript, which runs it beforehand, ended with "
                                   "status 3; print or save the document again and fax that");
}

} // namespace
} // namespace quelm::tests
