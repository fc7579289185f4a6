// The groups of features: which call hands the host which list.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "common/option_lists.h"

#include "tests/support/component_test.h"

namespace {

using Names = std::vector<const char*>;

const Names options = {
    "LanFaxConfSheet",
    "LanFax Cover Sheet Option",
    "LanFax Setup Cover Sheet Button",
    "LanFax Send Speed",
    "LanFax Resolution",
    "LanFax Cover Sheet Notes",
    "LanFax Send Time",
    "SendAtHr",
    "SendAtMin",
    "SendAtAmPm",
    "LanFax Dialing Prefix",
    "LanFax Dialing Prefix Info",
    "LanFax Credit Card",
    "LanFax Credit Card Info",
    "LanFax Pref Current Cover Notes",
    "Show Rcpt Info Checkbox",
    "Show Rcpt Info",
    "Cover Sheet Custom Text",
    "Show Sender Info Checkbox",
    "Sender Properties Button",
    "Cover Sheet Size",
    "Sender Fax Number",
    "Sender Fax Name",
    "Sender Fax Organization",
    "Sender Fax Tel Number",
    "Sender Fax Email Addr",
};

const Names preferences = {
    "LanFax Default PB",        "LanFax Pref Duplicates",          "LanFax Pref Remove One",
    "LanFax Pref Current List", "LanFax Pref Current Cover Notes", "LanFax Personal PB Name",
    "LanFax Shared PB Name",
};

const Names coverSheet = {
    "Cover Sheet Custom Text",   "Sender Info",      "Show Rcpt Info Checkbox", "Show Rcpt Info",
    "Show Sender Info Checkbox", "Cover Sheet Size",
};

const Names sender = {
    "Sender Fax Number",     "Sender Fax Name",       "Sender Fax Organization",
    "Sender Fax Tel Number", "Sender Fax Email Addr",
};

const Names dialingOptions = {
    "LanFax Dialing Prefix",     "LanFax Credit Card",    "LanFax Dialing Time",
    "Show Rcpt Info Checkbox",   "Show Rcpt Info",        "Show Custom Text",
    "Show Sender Info Checkbox", "LanFax No Cover Sheet", "LanFax Cover Sheet Option",
};

std::string tokenList(const Names& names)
{
    std::string list = ",";
    for (const char* name : names)
        list += std::string(name) + ",";
    return list;
}

} // namespace

class OptionListsTest : public StartedComponentTest {};

TEST_F(OptionListsTest, TheListsHoldTheseNamesInThisOrder)
{
    EXPECT_EQ(options.size(), 26U);
    EXPECT_EQ(optionsFeatures, tokenList(options));
    EXPECT_EQ(preferencesFeatures, tokenList(preferences));
    EXPECT_EQ(coverSheetFeatures, tokenList(coverSheet));
    EXPECT_EQ(senderFeatures, tokenList(sender));
}

TEST_F(OptionListsTest, TheDialingOptionsAreKeptAlthoughNothingUsesThem)
{
    EXPECT_EQ(dialingOptionsFeatures, tokenList(dialingOptions));
}

TEST_F(OptionListsTest, DefaultsOnTheOptionsTabIsOneCallOfTheHost)
{
    host.press("Defaults Button"); // the first of the two: the options tab's
    EXPECT_EQ(host.journal.all(), lines({"setDefaults " + fake::quoted(tokenList(options))}));
}

TEST_F(OptionListsTest, DefaultsOnThePreferencesTabIsOneCallOfTheHost)
{
    host.fire("LanFaxPrefsTabDefaults");
    EXPECT_EQ(host.journal.all(), lines({"setDefaults " + fake::quoted(tokenList(preferences))}));
}

TEST_F(OptionListsTest, TheCoverSheetSnapshotIsOneCallOfTheHost)
{
    SaveFaxCoverSheetSetupDialogOption();
    EXPECT_EQ(host.journal.all(), lines({"saveFeatures " + fake::quoted(tokenList(coverSheet))}));
}

TEST_F(OptionListsTest, TheHostsResultComesBackUnchanged)
{
    for (int result : {0, 1, 42, -7}) {
        host.featureResult = result;
        EXPECT_EQ(LanFaxOptionsTabDefaults(), result);
        EXPECT_EQ(LanFaxPrefsTabDefaults(), result);
        EXPECT_EQ(SaveFaxCoverSheetSetupDialogOption(), result);
    }
}

TEST_F(OptionListsTest, DefaultsOnTheOptionsTabAlsoResetsTheCustomTextAndTheSender)
{
    for (const char* name : sender)
        host.setText(name, "typed");
    host.setText("Cover Sheet Custom Text", "typed");
    host.setSensitive("LanFax Setup Cover Sheet Button", true);
    host.setSensitive("Sender Properties Button", true);
    host.setText("LanFax Personal PB Name", "/somewhere.xdb");

    LanFaxOptionsTabDefaults();

    for (const char* name : sender)
        EXPECT_EQ(host.text(name), "") << name;
    EXPECT_EQ(host.text("Cover Sheet Custom Text"), "");
    EXPECT_FALSE(host.sensitive("LanFax Setup Cover Sheet Button"));
    EXPECT_FALSE(host.sensitive("Sender Properties Button"));
    EXPECT_EQ(host.text("LanFax Personal PB Name"), "/somewhere.xdb");
}

TEST_F(OptionListsTest, DefaultsOnThePreferencesTabResetsThePhonebookNamesWithTheBoxes)
{
    host.setText("LanFax Personal PB Name", "/somewhere.xdb");
    host.setText("LanFax Shared PB Name", "/elsewhere.xdb");
    host.tick("LanFax Pref Duplicates", false);
    host.tick("LanFax Pref Remove One", false);

    LanFaxPrefsTabDefaults();

    EXPECT_EQ(host.text("LanFax Personal PB Name"), "");
    EXPECT_EQ(host.text("LanFax Shared PB Name"), "");
    EXPECT_TRUE(host.ticked("LanFax Pref Duplicates"));
    EXPECT_TRUE(host.ticked("LanFax Pref Remove One"));
}

TEST_F(OptionListsTest, DefaultsLeaveTheJobAsItIs)
{
    job().dialingPrefix = "9";
    job().creditCard = "1234";
    job().coverNotes = " (x) ";
    job().senderName = "Sue";
    job().customText = "All";
    job().faxCoverPage = true;
    job().promptOnDuplicates = true;

    LanFaxOptionsTabDefaults();
    LanFaxPrefsTabDefaults();

    EXPECT_EQ(job().dialingPrefix, "9");
    EXPECT_EQ(job().creditCard, "1234");
    EXPECT_EQ(job().coverNotes, " (x) ");
    EXPECT_EQ(job().senderName, "Sue");
    EXPECT_EQ(job().customText, "All");
    EXPECT_TRUE(job().faxCoverPage);
    EXPECT_TRUE(job().promptOnDuplicates);
}
