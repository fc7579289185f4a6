// Whole fax jobs: what Ghostscript shows of them, and where they go.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "tests/journeys/journey.h"

#include <gmock/gmock.h>

namespace journeys {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

class FaxJourney : public Journey {
protected:
    std::string letter = document("letter.ps", "Hello");

    /// Writes a job for Ann, which must succeed, and returns its file.
    std::string job(const Arguments& options) const
    {
        Arguments all{"fax", letter, "--to", "Ann=555-1234", "--output", path("job")};
        all.insert(all.end(), options.begin(), options.end());
        const auto result = driver(all);
        EXPECT_EQ(result.status, 0) << result.errors;
        EXPECT_EQ(result.output, "");
        return path("job");
    }
};

TEST_F(FaxJourney, ADscJobHoldsTheAttributesAndTheDocument)
{
    EXPECT_THAT(pages(job({})), ElementsAre("Hello"));
    EXPECT_THAT(content("job"), StartsWith("%!PS-Adobe-3.0\n"));
    EXPECT_THAT(content("job"), HasSubstr(attributeText({"--to", "Ann=555-1234"})));
}

TEST_F(FaxJourney, APjlJobHoldsTheAttributesAheadOfTheLanguage)
{
    EXPECT_THAT(pages(job({"--pdl", "pjl"})), ElementsAre("Hello"));
    const auto text = content("job");
    EXPECT_THAT(text, StartsWith("\x1b%-12345X@PJL "));
    const auto attributes = text.find(attributeText({"--to", "Ann=555-1234", "--pdl", "pjl"}));
    EXPECT_LT(attributes, text.find("@PJL ENTER LANGUAGE=POSTSCRIPT"));
}

TEST_F(FaxJourney, TheCoverSheetIsPageOneInBothForms)
{
    for (const auto* pdl : {"dsc", "pjl"}) {
        const auto rendered = pages(job({"--cover", "--note", "Call me", "--pdl", pdl}));
        ASSERT_EQ(rendered.size(), 2U) << pdl;
        EXPECT_THAT(rendered[0], HasSubstr("FaxCoverSheet")) << pdl;
        EXPECT_THAT(rendered[0], HasSubstr("Callme")) << pdl;
        EXPECT_EQ(rendered[1], "Hello") << pdl;
    }
}

TEST_F(FaxJourney, APdfDocumentIsTaken)
{
    Request convert;
    convert.arguments = {"gs",
                         "-q",
                         "-dSAFER",
                         "-dBATCH",
                         "-dNOPAUSE",
                         "-sDEVICE=pdfwrite",
                         "-sOutputFile=" + path("letter.pdf"),
                         letter};
    ASSERT_EQ(runProgram(convert).status, 0);
    const auto result = driver({"fax", path("letter.pdf"), "--to", "Ann=1", "--output", path("job")});
    EXPECT_EQ(result.status, 0) << result.errors;
    EXPECT_THAT(pages(path("job")), ElementsAre("Hello"));
}

TEST_F(FaxJourney, SaysInOneLineWhatWasWritten)
{
    EXPECT_EQ(driver({"fax", letter, "--to", "Ann=1", "--output", path("job")}).errors,
              path("job") + ": fax job of " + letter + " for 1 recipient\n");
    EXPECT_EQ(driver({"fax", letter, "--to", "Ann=1", "--to", "Bob=2", "--output", path("job")}).errors,
              path("job") + ": fax job of " + letter + " for 2 recipients\n");
}

TEST_F(FaxJourney, StandardOutputHoldsTheJobAndNothingElse)
{
    const auto result =
        driver({"--now", "2024-03-05T14:07", "fax", letter, "--to", "Ann=555-1234", "--output", "-"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.errors, "");
    job({"--now", "2024-03-05T14:07"});
    EXPECT_EQ(result.output, content("job"));
}

TEST_F(FaxJourney, ADocumentCanComeFromAPipe)
{
    const auto result = driver({"fax", "-", "--to", "Ann=1", "--output", path("job")}, content("letter.ps"));
    EXPECT_EQ(result.status, 0) << result.errors;
    EXPECT_THAT(pages(path("job")), ElementsAre("Hello"));
}

TEST_F(FaxJourney, AFixedClockMakesTheSameJobTwice)
{
    const Arguments options{"--cover", "--now", "2024-02-29T00:05"};
    job(options);
    const auto first = content("job");
    job(options);
    EXPECT_EQ(content("job"), first);
    EXPECT_THAT(pages(path("job"))[0], HasSubstr("02/29/202412:05AM"));
}

TEST_F(FaxJourney, AJobReplacesAnOlderOneWhole)
{
    file("job", std::string(1000000, 'x'));
    job({});
    EXPECT_THAT(content("job"), StartsWith("%!PS-Adobe-3.0\n"));
    EXPECT_LT(content("job").size(), 10000U);
    EXPECT_THAT(files(), ElementsAre("job", "letter.ps"));
}

} // namespace
} // namespace journeys
