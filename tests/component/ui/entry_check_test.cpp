// The check of a typed name and fax number, and its error window.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ui/entry_check.h"

#include "host/calls.h"
#include "tests/support/component_test.h"

#include <cstring>

namespace {

constexpr const char* nameRequired = "The Name is a required field&#10;Please enter a Name.";
constexpr const char* numberRequired = "The Fax Number is a required field&#10;Please enter a Fax Number.";

/// The error window's part of the journal, for a message without a translation.
std::string errorShown(const std::string& message)
{
    return lines({R"(set "LanFax Add Fax Rcpt Error Label" WidgetText "")",
                  "translate " + fake::quoted(message) + " -> none",
                  R"(set "LanFax Add Fax Rcpt Error Label" WidgetText )" + fake::quoted(message),
                  R"(set "LanFax Add Recipient Error Window" Visibility on)"});
}

} // namespace

class EntryCheckTest : public StartedComponentTest {
protected:
    bool check(bool required = true) { return check("RecipientName", "RecipientNumber", required); }

    bool check(const char* nameWidget, const char* numberWidget, bool required)
    {
        return ValidateFaxEntry(host::in(nameWidget), host::in(numberWidget),
                                nameWidget != nullptr ? name.text : nullptr,
                                numberWidget != nullptr ? number.text : nullptr, required);
    }

    void type(const std::string& typedName, const std::string& typedNumber)
    {
        host.setText("RecipientName", typedName);
        host.setText("RecipientNumber", typedNumber);
    }

    host::TextBuffer name;
    host::TextBuffer number;
};

TEST_F(EntryCheckTest, ReadsBothAndHandsTheHostItsCharacterLists)
{
    type("Anne", "555-1234");
    EXPECT_TRUE(check());
    EXPECT_STREQ(name.text, "Anne");
    EXPECT_STREQ(number.text, "555-1234");
    EXPECT_EQ(host.journal.calls(),
              lines({R"(get "RecipientName" Value -> "Anne")", R"(validateName "Anne" "- ." -> accepted)",
                     R"(get "RecipientNumber" Value -> "555-1234")",
                     R"(validatePhoneNumber "555-1234" "- ( ) /" -> accepted)"}));
}

TEST_F(EntryCheckTest, AnEmptyNameIsAskedForAndTheNumberNotLookedAt)
{
    type("", "");
    EXPECT_FALSE(check());
    EXPECT_EQ(host.journal.calls(), R"(get "RecipientName" Value -> "")"
                                    "\n" +
                                        errorShown(nameRequired));
    EXPECT_TRUE(host.visible("LanFax Add Recipient Error Window"));
    EXPECT_EQ(host.text("LanFax Add Fax Rcpt Error Label"),
              "The Name is a required field\nPlease enter a Name.");
}

TEST_F(EntryCheckTest, AnEmptyNumberIsAskedFor)
{
    type("Anne", "");
    EXPECT_FALSE(check());
    EXPECT_EQ(host.journal.effects() + "\n",
              lines({R"(set "LanFax Add Fax Rcpt Error Label" WidgetText "")",
                     R"(set "LanFax Add Fax Rcpt Error Label" WidgetText )" + fake::quoted(numberRequired),
                     R"(set "LanFax Add Recipient Error Window" Visibility on)"}) +
                  "\n");
    EXPECT_EQ(host.text("RecipientName"), "Anne");
}

TEST_F(EntryCheckTest, RequiredTextsAreCopiedByTheHost)
{
    type("", "");
    check();
    type("Anne", "");
    check();
    const std::string journal = host.journal.all();
    EXPECT_NE(journal.find("saveString \"%s\" " + fake::quoted(nameRequired)), std::string::npos);
    EXPECT_NE(journal.find("saveString \"%s\" " + fake::quoted(numberRequired)), std::string::npos);
}

TEST_F(EntryCheckTest, EmptyFieldsThatAreNotRequiredAreAcceptable)
{
    type("", "");
    EXPECT_TRUE(check(false));
    EXPECT_EQ(host.journal.effects(), "");
    EXPECT_EQ(host.journal.count("validate"), 0);
}

TEST_F(EntryCheckTest, FieldsThatAreNotRequiredAreCheckedAllTheSame)
{
    type("Anne", "no digits");
    EXPECT_FALSE(check(false));
    type("<Anne>", "1");
    EXPECT_FALSE(check(false));
}

TEST_F(EntryCheckTest, ARejectedNameIsEmptiedAndTheHostsMessageShown)
{
    type("<Anne>", "1");
    EXPECT_FALSE(check());
    EXPECT_EQ(host.journal.calls(),
              lines({R"(get "RecipientName" Value -> "<Anne>")",
                     R"(validateName "<Anne>" "- ." -> "A Name must not contain the character <")",
                     R"(set "RecipientName" WidgetText "")"}) +
                  errorShown("A Name must not contain the character <"));
    EXPECT_EQ(host.text("RecipientNumber"), "1");
}

TEST_F(EntryCheckTest, ARejectedNumberIsEmptiedAndTheHostsMessageShown)
{
    type("Anne", "5x5");
    EXPECT_FALSE(check());
    EXPECT_EQ(host.journal.calls(),
              lines({R"(get "RecipientName" Value -> "Anne")", R"(validateName "Anne" "- ." -> accepted)",
                     R"(get "RecipientNumber" Value -> "5x5")",
                     R"(validatePhoneNumber "5x5" "- ( ) /" -> "A Number must not contain the character x")",
                     R"(set "RecipientNumber" WidgetText "")"}) +
                  errorShown("A Number must not contain the character x"));
    EXPECT_EQ(host.text("RecipientName"), "Anne");
}

TEST_F(EntryCheckTest, MessagesAreTranslated)
{
    host.translations[nameRequired] = "Le nom manque.";
    host.translations["A Number must not contain the character x"] = "Pas de x.";
    type("", "");
    check();
    EXPECT_EQ(host.text("LanFax Add Fax Rcpt Error Label"), "Le nom manque.");
    type("Anne", "x");
    check();
    EXPECT_EQ(host.text("LanFax Add Fax Rcpt Error Label"), "Pas de x.");
}

TEST_F(EntryCheckTest, AHostThatCopiesUntranslatedTextsShowsTheSame)
{
    host.copiesUntranslated = true;
    type("", "");
    check();
    EXPECT_EQ(host.text("LanFax Add Fax Rcpt Error Label"),
              "The Name is a required field\nPlease enter a Name.");
}

TEST_F(EntryCheckTest, AMessageOfAnyLengthIsShownWhole)
{
    host.nameCheck = [](const std::string&, const std::string&) { return longText(6000); };
    type("Anne", "1");
    EXPECT_FALSE(check());
    EXPECT_EQ(host.text("LanFax Add Fax Rcpt Error Label"), longText(6000));
}

TEST_F(EntryCheckTest, AFieldThatIsNotGivenIsSkipped)
{
    type("", "");
    EXPECT_TRUE(check(nullptr, nullptr, true));
    EXPECT_EQ(host.journal.all(), "");

    type("Anne", "");
    EXPECT_TRUE(check("RecipientName", nullptr, true));
    EXPECT_EQ(host.journal.count("get \"RecipientNumber\""), 0);

    type("", "1");
    host.journal.clear();
    EXPECT_TRUE(check(nullptr, "RecipientNumber", true));
    EXPECT_EQ(host.journal.count("get \"RecipientName\""), 0);
}

TEST_F(EntryCheckTest, AFieldThatCannotBeReadCountsAsEmpty)
{
    type("Anne", "1");
    std::memset(name.text, '#', sizeof name.text);
    host.faults.failOn(fake::Op::readProperty, "RecipientName");
    EXPECT_FALSE(check());
    EXPECT_EQ(std::string(name.text, 4), std::string(4, '\0'));
    EXPECT_EQ(host.text("LanFax Add Fax Rcpt Error Label"),
              "The Name is a required field\nPlease enter a Name.");
    EXPECT_TRUE(check(false));
}

TEST_F(EntryCheckTest, LongTextsAreReadAsTheHostHandsThemOver)
{
    type(longText(6000), std::string(6000, '5'));
    EXPECT_TRUE(check());
    EXPECT_EQ(name.text, longText(4095));
    EXPECT_EQ(std::strlen(number.text), 4095U);
}

TEST_F(EntryCheckTest, TheErrorWindowIsClosedByItsOwnButtonOrItsFrame)
{
    for (bool fromFrame : {false, true}) {
        type("", "");
        check();
        host.journal.clear();
        if (fromFrame)
            host.close("LanFax Add Recipient Error Window");
        else
            host.press("LanFax Add Fax Rcpt Error Close Button");
        EXPECT_EQ(host.journal.all(), lines({R"(set "LanFax Add Recipient Error Window" Visibility off)"}));
    }
}
