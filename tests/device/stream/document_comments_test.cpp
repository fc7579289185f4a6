// What is read of the PostScript in a job.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/stream/document_comments.h"

#include "tests/device/stream/sample_jobs.h"

#include <gtest/gtest.h>

namespace quelm::device {
namespace {

class DocumentCommentsTest : public testing::Test {
protected:
    /// Takes lines as they are split.
    static void take(const Lines& lines, DocumentComments& comments)
    {
        LineSplitter splitter(1);
        const std::string bytes = joined(lines);
        for (std::string_view rest = bytes; !rest.empty();) {
            rest.remove_prefix(splitter.take(rest));
            if (!splitter.isReady())
                continue;
            comments.take(splitter.line());
            splitter.next();
        }
    }
    void take(const Lines& lines) { take(lines, document); }

    Remarks refusals;
    Remarks objections;
    AttributeSection attributes{JobForm::dsc, refusals, objections};
    DocumentComments document{attributes};
};

TEST_F(DocumentCommentsTest, ReadsTheHeader)
{
    take(dscJob());
    EXPECT_TRUE(document.hasContent());
    EXPECT_TRUE(document.beginsInForm());
    EXPECT_TRUE(document.hasWholeHeader());
    EXPECT_TRUE(document.endsInForm());
    EXPECT_EQ(document.title(), "letter.ps");
    EXPECT_TRUE(attributes.hasLines());
    EXPECT_EQ(attributes.firstLine(), 5U);
    EXPECT_EQ(document.strayAttribute(), 0U);
}

TEST_F(DocumentCommentsTest, AttributesBehindTheHeaderAreTheDocumentsOwn)
{
    take({"%!PS-Adobe-3.0\n", "%%EndComments\n", "72 72 moveto\n", "%%OID_ATT_FAX_RESOLUTION 7;\r\n",
          "%%QLMbegin\r\n"});
    EXPECT_FALSE(attributes.hasLines());
    EXPECT_EQ(document.headerEndLine(), 2U);
    EXPECT_EQ(document.strayAttribute(), 4U);
    EXPECT_EQ(document.nearAttribute(), 0U);
    EXPECT_EQ(document.anotherJob(), 0U);
}

TEST_F(DocumentCommentsTest, AttributesAheadOfPostScriptAreNear)
{
    for (const auto* line : {"%%OID_ATT_FAX_RESOLUTION 7;\r\n", " % oid-att\r\n", "OID_ATT_X\n",
                             "@PJL COMMENT OID_ATT_FAX_TYPE 1;\n", "\x04QLMend\n"}) {
        DocumentComments other(attributes);
        take({"%!PS-Adobe-3.0\n", "%%EndComments\n", "% a comment\n", "\n", line, "showpage\n"}, other);
        EXPECT_EQ(other.nearAttribute(), 5U) << line;
        EXPECT_EQ(other.anotherJob(), std::string_view(line).starts_with("%%OID") ? 5U : 0U) << line;
    }
}

TEST_F(DocumentCommentsTest, AttributesAtTheHeadOfAnotherDocumentAreAnotherJobs)
{
    for (const auto* head : {"%!PS-Adobe-3.0\n", "%!PS\n", "\x04%!PS-Adobe-3.0 EPSF-3.0\n", "%%EOF\n",
                             "%%EOF%!PS-Adobe-3.0\n"}) {
        DocumentComments other(attributes);
        take({"%!PS-Adobe-3.0\n", "%%EndComments\n", "showpage\n", head, "%%Title: (x)\n",
              "% OID_ATT_FAX_TYPE\n", "%%QLMend\r\n"},
             other);
        EXPECT_EQ(other.anotherJob(), 7U) << head;
        EXPECT_EQ(other.nearAttribute(), 0U) << head;
    }
    take({"%!PS-Adobe-3.0\n", "%%EndComments\n", "showpage\n", "%!PS-Adobe-3.0\n", "showpage\n",
          "%%QLMend\r\n"});
    EXPECT_EQ(document.anotherJob(), 0U);
    EXPECT_EQ(document.strayAttribute(), 6U);
}

TEST_F(DocumentCommentsTest, ALineThatIsNoCommentEndsTheHeader)
{
    for (const auto* line : {"\n", "/a 1 def\n", "% a comment\n", "%\n", "%\xC3\xA4\n"}) {
        DocumentComments other(attributes);
        take({"%!PS-Adobe-3.0\n", line, "%%OID_ATT_FAX_RESOLUTION 1;\r\n"}, other);
        EXPECT_FALSE(attributes.hasLines()) << line;
        EXPECT_FALSE(other.hasWholeHeader()) << line;
        EXPECT_EQ(other.strayAttribute(), 3U) << line;
    }
}

TEST_F(DocumentCommentsTest, NothingButItsOwnLineEndsTheHeaderInOrder)
{
    for (const auto* line : {"%%EndComments \n", "%%EndCommentsHere\n", "%%endcomments\n"}) {
        DocumentComments other(attributes);
        take({"%!PS-Adobe-3.0\n", line, "showpage\n"}, other);
        EXPECT_FALSE(other.hasWholeHeader()) << line;
        EXPECT_EQ(other.headerEndLine(), 3U) << line;
    }
}

TEST_F(DocumentCommentsTest, OnlyTheHeadersTitleIsOne)
{
    take({"%!PS-Adobe-3.0\n", "%%EndComments\n", "%%Title: (other)\n"});
    EXPECT_EQ(document.title(), "");
    DocumentComments first(attributes);
    take({"%!PS-Adobe-3.0\n", "%%Title: (first)\n", "%%Title: (second)\n"}, first);
    EXPECT_EQ(first.title(), "first");
}

TEST_F(DocumentCommentsTest, EndsInFormOnlyWithItsLastLine)
{
    take({"%!PS-Adobe-3.0\n", "%%EOF\n", "showpage\n"});
    EXPECT_FALSE(document.endsInForm());
    take({"%%EOF\r\n", "\n", "  \n", "\x04\n"});
    EXPECT_TRUE(document.endsInForm());
    take({"%%EOF \n"});
    EXPECT_FALSE(document.endsInForm());
}

} // namespace
} // namespace quelm::device
