// Messages: the host's translation where there is one, the English text otherwise.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "common/messages.h"

#include "common/module_state.h"
#include "tests/support/component_test.h"

#include <algorithm>
#include <cstring>

class MessagesTest : public StartedComponentTest {};

TEST_F(MessagesTest, ATranslationIsShownWhereThereIsOne)
{
    host.translations["Name:"] = "Nom :";
    EXPECT_STREQ(translated("Name:"), "Nom :");
    EXPECT_EQ(questionText("Name:"), "Nom :");
    EXPECT_EQ(duplicateQuestionText("Name:"), "Nom :");
}

TEST_F(MessagesTest, TheEnglishTextStandsInOnBothKindsOfHost)
{
    for (bool copies : {false, true}) {
        host.copiesUntranslated = copies;
        EXPECT_STREQ(translated("Name:"), "Name:");
        EXPECT_EQ(questionText("Name:"), "Name:");
    }
}

TEST_F(MessagesTest, TheDuplicateQuestionTakesTheBufferUntested)
{
    host.copiesUntranslated = true;
    EXPECT_EQ(duplicateQuestionText("Name:"), "Name:");
    host.copiesUntranslated = false;
    EXPECT_EQ(duplicateQuestionText("Name:"), "");
}

TEST_F(MessagesTest, TheWholeBufferIsZeroedBeforeEachTranslation)
{
    std::memset(messageBuffer, '#', sizeof messageBuffer);
    host.translations["Name:"] = "N";
    EXPECT_STREQ(translated("Name:"), "N");
    EXPECT_EQ(sizeof messageBuffer, 4096U);
    EXPECT_EQ(messageBuffer[0], 'N');
    EXPECT_TRUE(std::all_of(messageBuffer + 1, messageBuffer + 4096, [](char c) { return c == '\0'; }));
}

TEST_F(MessagesTest, QuestionTextsLoseTheirMarkup)
{
    host.translations["Name:"] = "<b>Nom</b> &amp; :";
    EXPECT_EQ(questionText("Name:"), "Nom & :");
    EXPECT_EQ(duplicateQuestionText("Name:"), "Nom & :");
    EXPECT_STREQ(translated("Name:"), "<b>Nom</b> &amp; :");
}

TEST_F(MessagesTest, ALongTranslationFillsTheBufferAndNothingElse)
{
    host.translations["Name:"] = longText(9000);
    EXPECT_EQ(translated("Name:"), longText(4095));
}

TEST_F(MessagesTest, AValueStandsThreeBlanksAfterItsLabelAsTyped)
{
    EXPECT_EQ(labelledValue("Name:", "A<b>"), "Name:   A<b>");
    EXPECT_EQ(labelledValue("Name:", ""), "Name:   ");
    EXPECT_EQ(labelledValue("Name:", nullptr), "Name:   ");
}
