// The shapes and the order of attribute lines.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/stream/attribute_section.h"

#include "device/stream/attribute_values.h"
#include "tests/device/stream/sample_jobs.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace quelm::device {
namespace {

using testing::HasSubstr;
using testing::Not;

constexpr const char* numberLine = "%%OID_ATT_FAX_DESTINATION_PHONE \"5550104477\";\r\n";

/// What is refused of the sample with a line in the place of the one that holds `part`.
std::string refusalsWith(std::string_view part, const std::string& line)
{
    return refusalsOf(readJob(joined(replaced(dscJob(), part, line))));
}

TEST(AttributeSection, ReadsTheSample)
{
    const auto job = readJob(joined(dscJob()));
    EXPECT_EQ(refusalsOf(job), "");
    EXPECT_EQ(objectionsOf(job), "");
    EXPECT_TRUE(job.isFax);
    EXPECT_TRUE(job.coverSheet);
    EXPECT_TRUE(job.confirmationSheet);
    EXPECT_EQ(job.resolution, Resolution::fine);
    EXPECT_EQ(job.speed, Speed::upTo14400);
    ASSERT_EQ(job.destinations.size(), 2U);
    EXPECT_EQ(job.destinations[0].number, "5550104477");
    EXPECT_EQ(job.destinations[0].mailbox, "");
    EXPECT_EQ(job.destinations[0].line, 10U);
    EXPECT_EQ(job.destinations[1].number, "9,+5550108812");
    EXPECT_EQ(job.destinations[1].mailbox, "12a#");
    EXPECT_EQ(job.destinations[1].line, 11U);
    EXPECT_EQ(job.creditCard, "4000 1234");
}

TEST(AttributeSection, EveryLineMayHaveItsOtherValues)
{
    const auto with = [](std::string_view part, const std::string& line) {
        auto job = readJob(joined(replaced(dscJob(), part, line)));
        EXPECT_EQ(refusalsOf(job), "") << line;
        return job;
    };
    EXPECT_FALSE(with("COVER_SHEET", "%%OID_ATT_FAX_COVER_SHEET FALSE;\r\n").coverSheet);
    EXPECT_FALSE(with("CONFIRMATION", "%%OID_ATT_FAX_CONFIRMATION_SHEET FALSE;\r\n").confirmationSheet);
    EXPECT_EQ(with("RESOLUTION", "%%OID_ATT_FAX_RESOLUTION 2;\r\n").resolution, Resolution::superfine);
    EXPECT_EQ(with("RESOLUTION", "").resolution, Resolution::standard);
    EXPECT_EQ(with("FAX_TYPE", "%%OID_ATT_FAX_TYPE OID_VAL_FAX_TYPE_G3_FORCED_4800;\r\n").speed,
              Speed::forced4800);
    EXPECT_EQ(with("FAX_TYPE", "").speed, Speed::automatic);
    EXPECT_EQ(with("CREDIT_CARD", "").creditCard, "");
    EXPECT_EQ(with("MAILBOX", "").destinations.at(1).mailbox, "");
}

TEST(AttributeSection, AJobTypeInThePlaceOfTheConfirmationSheetMeansNone)
{
    const auto job = readJob(
        joined(replaced(dscJob(), "CONFIRMATION", "%%OID_ATT_JOB_TYPE OID_VAL_JOB_TYPE_FAX_SEND;\n")));
    EXPECT_EQ(refusalsOf(job), "");
    EXPECT_FALSE(job.confirmationSheet);
    const auto twice = replaced(dscJob(), "CONFIRMATION", "%%OID_ATT_JOB_TYPE OID_VAL_JOB_TYPE_FAX_SEND;\n");
    EXPECT_EQ(refusalsOf(readJob(
                  joined(inserted(twice, "RESOLUTION", "%%OID_ATT_JOB_TYPE OID_VAL_JOB_TYPE_FAX_SEND;\n")))),
              "8: \"OID_ATT_JOB_TYPE\" stands a second time; the first is in line 6\n");
}

TEST(AttributeSection, OfADoubledJobTypeAndAConfirmationSheetTheJobTypeIsTooMuch)
{
    const auto all = inserted(dscJob(), "CONFIRMATION", "%%OID_ATT_JOB_TYPE OID_VAL_JOB_TYPE_FAX_SEND;\n");
    EXPECT_EQ(refusalsOf(readJob(joined(all))),
              "7: \"OID_ATT_JOB_TYPE\" stands a second time; the first is in line 6\n");
}

TEST(AttributeSection, LineEndsArePartOfTheFormat)
{
    EXPECT_EQ(refusalsWith("JOB_TYPE", "%%OID_ATT_JOB_TYPE OID_VAL_JOB_TYPE_FAX_SEND;\r\n"),
              "6: the line of \"OID_ATT_JOB_TYPE\" ends in CR LF; it should end in LF\n");
    EXPECT_EQ(refusalsWith("RESOLUTION", "%%OID_ATT_FAX_RESOLUTION 1;\n"),
              "8: the line of \"OID_ATT_FAX_RESOLUTION\" ends in LF; it should end in CR LF\n");
    EXPECT_EQ(refusalsWith("RESOLUTION", "%%OID_ATT_FAX_RESOLUTION 1;\r"),
              "8: the line of \"OID_ATT_FAX_RESOLUTION\" ends in CR; it should end in CR LF\n");
    EXPECT_EQ(refusalsWith("QLMend", "%%QLMend\n"),
              "15: the line of \"QLMend\" ends in LF; it should end in CR LF\n");
}

TEST(AttributeSection, ALineOfAnotherShapeIsRefusedWithTheShapeThatItShouldHave)
{
    for (const auto* line : {"%%OID_ATT_FAX_RESOLUTION 1\r\n", "%%OID_ATT_FAX_RESOLUTION 1; \r\n",
                             "%%OID_ATT_FAX_RESOLUTION=1;\r\n", "%%OID_ATT_FAX_RESOLUTION: 1;\r\n",
                             "%%OID_ATT_FAX_RESOLUTION ;\r\n", "%%OID_ATT_FAX_RESOLUTION\r\n",
                             "%%OID_ATT_FAX_RESOLUTION\t1;\r\n", "%%%OID_ATT_FAX_RESOLUTION 1;\r\n",
                             "%% OID_ATT_FAX_RESOLUTION 1;\r\n", "%%oid_att_fax_resolution 1;\r\n"})
        EXPECT_EQ(refusalsWith("RESOLUTION", line),
                  "8: the line is not written \"%%OID_ATT_FAX_RESOLUTION 0|1|2;\"\n")
            << line;
    for (const auto* line :
         {"%%OID_ATT_FAX_DESTINATION_PHONE 5550104477;\r\n",
          "%%OID_ATT_FAX_DESTINATION_PHONE \"5550104477;\r\n", "%%OID_ATT_FAX_DESTINATION_PHONE \";\r\n",
          "%%OID_ATT_FAX_DESTINATION_PHONE 5550104477\";\r\n"})
        EXPECT_EQ(refusalsOf(readJob(joined(replaced(dscJob(), "5550104477", line)))),
                  "10: the line is not written \"%%OID_ATT_FAX_DESTINATION_PHONE \"NUMBER\";\"\n")
            << line;
    for (const auto* prefix : {"@PJL  COMMENT ", "@PJL COMMENT  ", "@pjl comment ", "@PJL COMMENT\t"})
        EXPECT_EQ(refusalsOf(readJob(joined(replaced(
                      pjlJob(), "RESOLUTION", std::string(prefix) + "OID_ATT_FAX_RESOLUTION 1;\r\n")))),
                  "5: the line is not written \"@PJL COMMENT OID_ATT_FAX_RESOLUTION 0|1|2;\"\n")
            << prefix;
    EXPECT_EQ(refusalsWith("QLMbegin", "%%QLMbegin;\r\n"), "13: the line is not written \"%%QLMbegin\"\n");
}

TEST(AttributeSection, AValueThatNoTableListsIsRefused)
{
    EXPECT_EQ(refusalsWith("RESOLUTION", "%%OID_ATT_FAX_RESOLUTION 3;\r\n"),
              "8: \"OID_ATT_FAX_RESOLUTION\" has the value \"3\", which is none of 0|1|2\n");
    EXPECT_THAT(refusalsWith("RESOLUTION", "%%OID_ATT_FAX_RESOLUTION  1;\r\n"),
                HasSubstr("the value \" 1\""));
    EXPECT_THAT(refusalsWith("COVER_SHEET", "%%OID_ATT_FAX_COVER_SHEET YES;\r\n"), HasSubstr("5: \"OID"));
    EXPECT_THAT(refusalsWith("CONFIRMATION", "%%OID_ATT_FAX_CONFIRMATION_SHEET;\r\n"),
                HasSubstr("7: the line"));
    EXPECT_THAT(refusalsWith("JOB_TYPE", "%%OID_ATT_JOB_TYPE OID_VAL_JOB_TYPE_PRINT;\n"),
                HasSubstr("none of OID_VAL_JOB_TYPE_FAX_SEND"));
    EXPECT_THAT(refusalsWith("FAX_TYPE", "%%OID_ATT_FAX_TYPE OID_VAL_FAX_TYPE_G4;\r\n"),
                HasSubstr("9: \"OID"));
}

TEST(AttributeSection, NumbersAndMailboxesThatCannotBeAreRefused)
{
    EXPECT_EQ(refusalsOf(readJob(
                  joined(replaced(dscJob(), "5550104477", "%%OID_ATT_FAX_DESTINATION_PHONE \"\";\r\n")))),
              "10: the number \"\" has no digit\n");
    EXPECT_EQ(refusalsOf(readJob(joined(
                  replaced(dscJob(), "5550104477", "%%OID_ATT_FAX_DESTINATION_PHONE \"55\"; \"66\";\r\n")))),
              "10: the number \"55\"; \"66\" holds \"\"\", which no number to dial can\n");
    EXPECT_EQ(refusalsWith("MAILBOX", "%%OID_ATT_FAX_MAILBOX \"12345\";\r\n"),
              "12: the mailbox \"12345\" is none: it is one to four letters, digits, \"*\" and \"#\"\n");
    EXPECT_EQ(refusalsWith("MAILBOX", "%%OID_ATT_FAX_MAILBOX \"\";\r\n"),
              "12: the mailbox \"\" is none: it is one to four letters, digits, \"*\" and \"#\"\n");
}

TEST(AttributeSection, WhatIsTooLongIsRefusedWithItsLengthAndTheLimit)
{
    const auto number = [](std::size_t keys) {
        return refusalsOf(readJob(
            joined(replaced(dscJob(), "5550104477",
                            "%%OID_ATT_FAX_DESTINATION_PHONE \"" + std::string(keys, '5') + "\";\r\n"))));
    };
    EXPECT_EQ(number(mostKeys), "");
    EXPECT_EQ(number(101), "10: the number has 101 keys, and a telephone number 100 at most\n");
    EXPECT_EQ(number(5000), "10: the line of \"OID_ATT_FAX_DESTINATION_PHONE\" is longer than 4096 bytes\n");
    EXPECT_EQ(
        refusalsWith("CREDIT_CARD", "%%OID_ATT_CREDIT_CARD \"" + std::string(mostKeys, '4') + "\";\r\n"), "");
    EXPECT_EQ(refusalsWith("CREDIT_CARD", "%%OID_ATT_CREDIT_CARD \"" + std::string(101, '4') + "\";\r\n"),
              "14: the credit card has 101 keys, and may have 100 at most\n");
}

TEST(AttributeSection, LinesThatSomebodyMayHaveMeantAsAttributesAreFound)
{
    for (const auto* line :
         {"%%OID_ATT_X", " %%OID_ATT_X", "OID_ATT_X", "% OID-ATT x", "@PJL COMMENT oid_att_x", "%%QLM_begin",
          "qlmend", "\t%%%%OIDATTX", "@PJL OID_ATT_X"})
        EXPECT_TRUE(looksLikeAttribute(line)) << line;
    for (const auto* line :
         {"%%Title: (OID_ATT_X)", "% see OID_ATT_X", "%%QLM", "", "%", "(OID) show", "%%OID"})
        EXPECT_FALSE(looksLikeAttribute(line)) << line;
}

TEST(AttributeSection, AMisspeltAttributeIsRefusedAndNotPassedOver)
{
    for (const auto* line :
         {"%%OID-ATT_FAX_RESOLUTION 1;\r\n", "%OID_ATT_FAX_COLOR 1;\r\n", "%%QLM-begin\r\n"})
        EXPECT_EQ(refusalsOf(readJob(joined(inserted(dscJob(), "RESOLUTION", line)))),
                  "8: the line looks like an attribute, and does not begin with \"%%OID_ATT_\"\n")
            << line;
    EXPECT_EQ(
        refusalsOf(readJob(joined(inserted(pjlJob(), "RESOLUTION", "@PJL COMMENT OID-ATT_FAX_X 1;\r\n")))),
        "5: the line looks like an attribute, and does not begin with \"@PJL COMMENT OID_ATT_\"\n");
}

TEST(AttributeSection, NoRefusalShowsACard)
{
    for (const auto* line :
         {"%%OID_ATT_CREDIT_CARD \"4000x1234\";\r\n", "%%OID_ATT_CREDIT_CARD 4000 1234;\r\n",
          "%%OID_ATT_CREDIT_CARD \"4000 1234\";\n", "%%OID_ATT_CREDIT_CARD \"\";\r\n",
          "%%OID_ATT_CREDIT_CARD_2 \"4000 1234\";\r\n", "%%CREDIT_CARD:\"4000\"\r\n",
          "%%OID_ATT_CREDIT_CARD\"4000 1234\";\r\n", "%%OID_ATT_CREDIT_CARD_4000123412341234 \"x\";\r\n",
          "%%OID-ATT_CREDIT_CARD4000123412341234\r\n", "%%OID_ATT_CREDITCARD \"4000 1234\";\r\n",
          "%%OID_ATT_CARD \"4000 1234\";\r\n", "%%OID_ATT_FAX_RESOLUTION 4000123412341234;\r\n",
          "%%OID_ATT_FAX_MAILBOX \"4000-1234-1234-1234\";\r\n",
          "%%OID_ATT_FAX_DESTINATION_PHONE \"4000 1234 1234 1234\";\r\n"}) {
        const auto job = readJob(joined(replaced(dscJob(), "CREDIT_CARD", line)));
        auto said = refusalsOf(job) + objectionsOf(job);
        EXPECT_THAT(refusalsOf(job), HasSubstr("14: ")) << line;
        for (const auto& destination : job.destinations)
            said += destination.number + destination.mailbox;
        EXPECT_THAT(said, Not(HasSubstr("4000"))) << line;
        EXPECT_THAT(said, Not(HasSubstr("1234"))) << line;
    }
}

TEST(AttributeSection, EachLineHasItsPlaceInTheOrder)
{
    // Every line of the sample but those that may repeat, moved ahead of every other.
    const auto sample = dscJob();
    constexpr std::size_t first = 4;
    constexpr std::size_t end = 15;
    for (std::size_t from = first; from < end; ++from)
        for (std::size_t to = first; to < from; ++to) {
            auto lines = sample;
            lines.erase(lines.begin() + static_cast<std::ptrdiff_t>(from));
            lines.insert(lines.begin() + static_cast<std::ptrdiff_t>(to), sample[from]);
            // A recipient may stand ahead of another, a mailbox below another.
            const bool isRecipient = sample[from].find("PHONE") != std::string::npos ||
                                     (sample[from].find("MAILBOX") != std::string::npos && to > 9);
            const bool isAnotherOrder = !isRecipient || sample[to].find("PHONE") == std::string::npos;
            const auto job = readJob(joined(lines));
            EXPECT_EQ(job.isRefused(), isAnotherOrder) << sample[from] << sample[to] << refusalsOf(job);
        }
    EXPECT_EQ(
        refusalsOf(readJob(joined(
            inserted(replaced(dscJob(), "RESOLUTION", ""), "COVER", "%%OID_ATT_FAX_RESOLUTION 1;\r\n")))),
        "6: \"OID_ATT_FAX_COVER_SHEET\" stands behind \"OID_ATT_FAX_RESOLUTION\"; it belongs ahead of it\n"
        "7: \"OID_ATT_JOB_TYPE\" stands behind \"OID_ATT_FAX_RESOLUTION\"; it belongs ahead of it\n"
        "8: \"OID_ATT_FAX_CONFIRMATION_SHEET\" stands behind \"OID_ATT_FAX_RESOLUTION\"; it belongs ahead of "
        "it\n");
}

TEST(AttributeSection, NothingButRecipientsStandsTwice)
{
    for (const auto& line : dscJob()) {
        if (line.find("OID_ATT") == std::string::npos && line.find("QLM") == std::string::npos)
            continue;
        auto lines = dscJob();
        lines.insert(std::ranges::find(lines, line), line);
        const auto job = readJob(joined(lines));
        const bool mayRepeat = line.find("PHONE") != std::string::npos;
        EXPECT_EQ(job.isRefused(), !mayRepeat) << line;
        EXPECT_EQ(job.destinations.size(), mayRepeat ? 3U : 2U) << line;
    }
    EXPECT_EQ(refusalsOf(readJob(joined(inserted(dscJob(), "FAX_TYPE", "%%OID_ATT_FAX_RESOLUTION 2;\r\n")))),
              "9: \"OID_ATT_FAX_RESOLUTION\" stands a second time; the first is in line 8\n");
}

TEST(AttributeSection, WhatIsMissingIsRefused)
{
    for (const auto* part : {"COVER_SHEET", "JOB_TYPE", "CONFIRMATION", "QLMbegin", "QLMend"}) {
        const auto refusals = refusalsWith(part, "");
        EXPECT_THAT(refusals, HasSubstr("%%")) << part;
        EXPECT_THAT(refusals, HasSubstr("15: the line \"%%")) << part;
        EXPECT_THAT(refusals, HasSubstr(part)) << part;
    }
    auto nobody = replaced(replaced(dscJob(), "9,+555", ""), "MAILBOX", "");
    EXPECT_EQ(refusalsOf(readJob(joined(replaced(nobody, "5550104477", "")))),
              "13: the line \"%%OID_ATT_FAX_DESTINATION_PHONE \"NUMBER\";\" is missing\n");
}

TEST(AttributeSection, AMailboxStandsBelowItsRecipientAndThereIsOne)
{
    EXPECT_THAT(
        refusalsOf(readJob(joined(inserted(dscJob(), "5550104477", "%%OID_ATT_FAX_MAILBOX \"1\";\r\n")))),
        HasSubstr("10: the mailbox stands below no recipient\n"));
    EXPECT_EQ(refusalsOf(readJob(joined(inserted(dscJob(), "QLMbegin", "%%OID_ATT_FAX_MAILBOX \"1\";\r\n")))),
              "13: the recipient has a second mailbox\n");
    EXPECT_THAT(refusalsOf(readJob(joined(inserted(dscJob(), "CREDIT", "%%OID_ATT_FAX_MAILBOX \"1\";\r\n")))),
                HasSubstr("14: the mailbox stands below no recipient\n"));
}

TEST(AttributeSection, ACardStandsBetweenTheBrackets)
{
    const auto outside =
        inserted(replaced(dscJob(), "CREDIT_CARD", ""), "QLMbegin", "%%OID_ATT_CREDIT_CARD \"4000\";\r\n");
    EXPECT_THAT(refusalsOf(readJob(joined(outside))),
                HasSubstr("13: the credit card does not stand between"));
    EXPECT_EQ(refusalsOf(readJob(joined(inserted(pjlJob(), "CREDIT_CARD", "@PJL COMMENT QLMbegin\r\n")))),
              "10: \"QLMbegin\" stands in DSC form only\n");
}

TEST(AttributeSection, UnknownAttributesAndOtherLinesAreObjections)
{
    const auto unknown = readJob(joined(inserted(dscJob(), "JOB_TYPE", "%%OID_ATT_FAX_COLOR 1;\n")));
    EXPECT_EQ(refusalsOf(unknown), "");
    EXPECT_EQ(objectionsOf(unknown), "6: \"OID_ATT_FAX_COLOR\" is no attribute that the device knows\n");
    const auto other = readJob(joined(inserted(dscJob(), "EndComments", "%%Pages: 3\n")));
    EXPECT_EQ(refusalsOf(other), "");
    EXPECT_EQ(objectionsOf(other),
              "16: \"%%Pages\" stands among the attribute lines or behind them, where nothing "
              "else should\n");
}

TEST(AttributeSection, AnUnknownAttributeAloneMakesNoFax)
{
    const auto job = readJob("%!PS-Adobe-3.0\n%%OID_ATT_TRAY 2;\n%%EndComments\nshowpage\n");
    EXPECT_FALSE(job.isFax);
    EXPECT_EQ(refusalsOf(job), "");
    EXPECT_EQ(objectionsOf(job), "2: \"OID_ATT_TRAY\" is no attribute that the device knows\n");
}

TEST(AttributeSection, RecipientsHaveABound)
{
    std::string many;
    for (std::size_t i = 2; i < mostDestinations; ++i)
        many += numberLine;
    const auto at = inserted(dscJob(), "5550104477", many);
    const auto most = readJob(joined(at));
    EXPECT_EQ(refusalsOf(most), "");
    EXPECT_EQ(most.destinations.size(), mostDestinations);
    const auto more = readJob(joined(inserted(at, "QLMbegin", std::string(numberLine) + numberLine)));
    EXPECT_EQ(refusalsOf(more), "10011: the job has more than 10000 recipients\n");
    EXPECT_EQ(more.destinations.size(), mostDestinations);
}

TEST(AttributeSection, LinesThatOnlyNameAttributesAreNone)
{
    EXPECT_FALSE(attributeLine(JobForm::dsc, "%%Title: (OID_ATT_FAX_RESOLUTION 1;)"));
    EXPECT_FALSE(attributeLine(JobForm::dsc, "OID_ATT_FAX_RESOLUTION 1;"));
    EXPECT_FALSE(attributeLine(JobForm::dsc, "%%QLMbeginning"));
    EXPECT_FALSE(attributeLine(JobForm::pjl, "@PJL SET NAME=\"OID_ATT_FAX_RESOLUTION 1;\""));
    EXPECT_TRUE(attributeLine(JobForm::pjl, "@pjl  comment\tOID_ATT_FAX_RESOLUTION 1;"));
}

} // namespace
} // namespace quelm::device
