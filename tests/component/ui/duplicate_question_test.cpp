// The question that is asked before a recipient is added a second time.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ui/duplicate_question.h"

#include "host/calls.h"
#include "tests/support/component_test.h"

namespace {

void neverAnswered(_GtkWidget*, void*) {}

} // namespace

class DuplicateQuestionTest : public StartedComponentTest {
protected:
    DuplicateQuestionTest() { host.copiesUntranslated = true; }

    bool asks(const std::string& name, const std::string& faxNumber)
    {
        const bool asked = TestForDuplicateRecipient(neverAnswered, host::in(name), host::in(faxNumber));
        EXPECT_EQ(host.questions.size(), asked ? 1U : 0U);
        return asked;
    }

    std::string question() { return host.questions.at(0).text; }
};

TEST_F(DuplicateQuestionTest, AsksWithBothValuesAsTyped)
{
    addRecipient("Anne", "555-1234");
    EXPECT_TRUE(asks("Anne", "555-1234"));
    EXPECT_EQ(question(), "Name:   Anne\r\nFax Number:   555-1234\r\n\n"
                          "This Recipient already exists in your Recipient List.\r\n"
                          "Do you want to add a duplicate of this Recipient?");
    EXPECT_EQ(host.questions[0].kind, 3);
    EXPECT_EQ(host.questions[0].response, neverAnswered);
}

TEST_F(DuplicateQuestionTest, ReadsThePreferenceAndTranslatesFourTextsInOrder)
{
    addRecipient("Anne", "1");
    host.journal.clear();
    host.translations = {{"Name:", "Nom :"}, {"Fax Number:", "N\xC2\xB0 :"}};
    asks("Anne", "1");
    EXPECT_EQ(host.journal.calls(),
              lines({R"(feature "LanFax Pref Duplicates" -> 1)", R"(translate "Name:" -> "Nom :")",
                     "translate \"Fax Number:\" -> \"N\xC2\xB0 :\"",
                     R"(translate "This Recipient already exists in your Recipient List." -> none)",
                     R"(translate "Do you want to add a duplicate of this Recipient?" -> none)",
                     "ask 3 " + fake::quoted("Nom :   Anne\r\nN\xC2\xB0 :   1\r\n\n"
                                             "This Recipient already exists in your Recipient List.\r\n"
                                             "Do you want to add a duplicate of this Recipient?")}));
}

TEST_F(DuplicateQuestionTest, EveryTextLosesItsMarkupButNameAndNumberStandAsTyped)
{
    host.translations = {{"Name:", "<b>Nom</b>"},
                         {"Do you want to add a duplicate of this Recipient?", "&lt;?&gt;"}};
    addRecipient("<i>A</i>", "&amp;");
    asks("<i>A</i>", "&amp;");
    EXPECT_TRUE(question().starts_with("Nom   <i>A</i>\r\nFax Number:   &amp;\r\n\n")) << question();
    EXPECT_TRUE(question().ends_with("\r\n<?>")) << question();
}

TEST_F(DuplicateQuestionTest, TheBufferIsUsedWithoutTestingWhetherThereIsATranslation)
{
    host.copiesUntranslated = false;
    addRecipient("Anne", "1");
    asks("Anne", "1");
    EXPECT_EQ(question(), "   Anne\r\n   1\r\n\n\r\n");
}

TEST_F(DuplicateQuestionTest, OnlyThePreferenceOneAsks)
{
    addRecipient("Anne", "1");
    for (int preference : {0, 2, -1}) {
        host.featureValues["LanFax Pref Duplicates"] = preference;
        EXPECT_FALSE(asks("Anne", "1")) << preference;
    }
    host.featureValues["LanFax Pref Duplicates"] = 1;
    EXPECT_TRUE(asks("Anne", "1"));
}

TEST_F(DuplicateQuestionTest, APreferenceThatTheHostDoesNotKnowDoesNotAsk)
{
    addRecipient("Anne", "1");
    host.unknownFeatures.insert("LanFax Pref Duplicates");
    EXPECT_FALSE(asks("Anne", "1"));
}

TEST_F(DuplicateQuestionTest, ThePreferenceIsTheHostsAndNotTheJobs)
{
    addRecipient("Anne", "1");
    job().promptOnDuplicates = true;
    host.tick("LanFax Pref Duplicates", false);
    EXPECT_FALSE(asks("Anne", "1"));
}

TEST_F(DuplicateQuestionTest, AStrangerIsNotAskedAboutNorThePreferenceRead)
{
    addRecipient("Anne", "1");
    host.journal.clear();
    EXPECT_FALSE(asks("Anne", "2"));
    EXPECT_FALSE(asks("anne", "1"));
    EXPECT_EQ(host.journal.calls(), "");
}

TEST_F(DuplicateQuestionTest, NamesAndNumbersThatJoinToTheSameKeyAreDuplicates)
{
    addRecipient("Anne", "5551234");
    EXPECT_TRUE(asks("Anne5", "551234"));
}

TEST_F(DuplicateQuestionTest, NumbersAreComparedAsTyped)
{
    addRecipient("Anne", "555-1234");
    EXPECT_FALSE(asks("Anne", "5551234"));
}

TEST_F(DuplicateQuestionTest, ARecipientAmongThePicksCounts)
{
    addPick("Anne", "1");
    EXPECT_TRUE(asks("Anne", "1"));
}

TEST_F(DuplicateQuestionTest, AnEmptyEntryIsNoDuplicate)
{
    addRecipient("", "");
    EXPECT_FALSE(asks("", ""));
}

TEST_F(DuplicateQuestionTest, LongTextsAreAskedAboutWhole)
{
    addRecipient(longText(3000), std::string(3000, '5'));
    EXPECT_TRUE(asks(longText(3000), std::string(3000, '5')));
    EXPECT_NE(question().find(longText(3000) + "\r\n"), std::string::npos);
    EXPECT_NE(question().find(std::string(3000, '5') + "\r\n\n"), std::string::npos);
}
