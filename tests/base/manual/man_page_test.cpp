// What stands on a manual page.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/manual/man_page.h"

#include "tests/base/command_line/tried_program.h"

#include <gmock/gmock.h>

namespace quelm {
namespace {

using testing::HasSubstr;

class ManPages : public testing::Test {
protected:
    ManPages()
    {
        addHelp(program.app, {{"Whatever it is."},
                              {{"quelm-try a.ps", "Tries it."}},
                              {},
                              {{"HOME", "Where one lives."}},
                              {{"~/.tried", "What was tried."}},
                              {"quelm-other(1)"}});
        pages = manPages(viewOf(program.app), "2026-11-23");
    }

    test::TriedProgram program;
    std::vector<ManPage> pages;
};

TEST_F(ManPages, AreWrittenForTheProgramAndEachCommand)
{
    std::vector<std::string> names;
    for (const auto& page : pages)
        names.push_back(page.name);
    EXPECT_THAT(names, testing::ElementsAre("quelm-try", "quelm-try-print", "quelm-try-book",
                                            "quelm-try-book-list", "quelm-try-book-add", "quelm-try-help"));
}

TEST_F(ManPages, HaveTheirParts)
{
    const auto& text = pages[1].text;
    EXPECT_THAT(text, HasSubstr(".TH QUELM\\-TRY\\-PRINT 1 2026-11-23 \"quelm\\-try "));
    EXPECT_THAT(text, HasSubstr(".SH \"NAME\"\nquelm\\-try\\-print \\- Prints files\n"));
    EXPECT_THAT(text, HasSubstr(".SH \"SYNOPSIS\"\n\\fBquelm\\-try print\\fR [OPTIONS] FILE...\n"));
    EXPECT_THAT(text, HasSubstr(".SH \"DESCRIPTION\"\nPrints files\n.PP\nAll of them come out.\n"));
    EXPECT_THAT(
        text, HasSubstr(".SS \"Paper\"\n.TP\n\\fB\\-n\\fR, \\fB\\-\\-note\\fR \\fITEXT\\fR\nA note on it\n"));
    EXPECT_THAT(text, HasSubstr("(not with \\-\\-slow)"));
    EXPECT_THAT(text, HasSubstr(".SS \"Options of quelm\\-try\"\n"));
    EXPECT_THAT(text, HasSubstr(".TP\n\\fB2\\fR\nWrong usage"));
    EXPECT_THAT(text, HasSubstr(".TP\n\\fBHOME\\fR\nWhere one lives.\n"));
    EXPECT_THAT(text, HasSubstr(".TP\n\\fB\\(ti/.tried\\fR\nWhat was tried.\n"));
    EXPECT_THAT(text, HasSubstr("Prints a file.\n.PP\n.RS 4\n.nf\nquelm\\-try print a.ps\n.fi\n.RE\n"));
    EXPECT_THAT(text, HasSubstr("\\fBquelm\\-try\\-book\\fR(1)"));
    EXPECT_THAT(text, HasSubstr("\\fBquelm\\-other\\fR(1)"));
}

TEST_F(ManPages, NameAProgramWithoutTheStopOfItsSentence)
{
    EXPECT_THAT(pages[0].text, HasSubstr("quelm\\-try \\- Tries\n"));
    EXPECT_THAT(pages[0].text, HasSubstr(".SH \"COMMANDS\"\n.TP\n\\fBprint\\fR\nPrints files\n"));
}

} // namespace
} // namespace quelm
