// Features: defaults, snapshots, and what is kept between runs.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/features/features.h"

#include "base/file_handle.h"
#include "tests/support/log_capture.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/test_dialogs.h"

#include <fcntl.h>
#include <sys/file.h>

#include <chrono>

namespace {

using quelm::FeatureFile;

class FeaturesTest : public OptionsTest {
protected:
    quelm::Features& features = state.features;

    TemporaryFolder folder;
    const std::string path = folder / "ann.ini";

    void load(bool takeOver = true, bool keepChanges = true)
    {
        features.load(FeatureFile(path), takeOver, keepChanges);
    }
    void loadFrom(const std::string& content)
    {
        writeFile(path, content);
        load();
    }
};

TEST_F(FeaturesTest, StartAtTheirDefaults)
{
    EXPECT_EQ(features.number("LanFax Send Speed"), 2);
    EXPECT_EQ(features.number("LanFax Pref Duplicates"), 1);
    EXPECT_EQ(features.number("LanFax Pref Remove One"), 1);
    EXPECT_EQ(features.number("LanFax Pref Current List"), 0);
    EXPECT_EQ(features.number("LanFax Resolution"), 0);
    EXPECT_EQ(features.number("SendAtHr"), 12);
    EXPECT_EQ(features.number("SendAtMin"), 0);
}

TEST_F(FeaturesTest, ARadioItemIsReadAsZeroOrOne)
{
    EXPECT_EQ(features.number("Show Custom Text"), 0);
    widget("Show Rcpt Info").setNumber(1);
    EXPECT_EQ(features.number("Show Custom Text"), 1);
    EXPECT_EQ(features.number("Show All Rcpt Info"), 0);
}

TEST_F(FeaturesTest, TextsAndUnknownNamesHaveNoNumber)
{
    EXPECT_EQ(features.number("LanFax Cover Sheet Notes"), std::nullopt);
    EXPECT_EQ(features.number("LanFax Dialing Time"), std::nullopt);
}

TEST_F(FeaturesTest, DefaultsComeBackForTheNamedFeaturesAlone)
{
    widget("LanFax Send Speed").setNumber(0);
    widget("SendAtHr").setNumber(3);
    widget("LanFax Pref Duplicates").setFlag(false);
    widget("LanFax Credit Card").setFlag(true);
    widget("Sender Fax Name").setText("Ann");
    widget("LanFax Resolution").setNumber(2);
    widget("LanFax Setup Cover Sheet Button").setSensitive(true);
    EXPECT_EQ(features.setDefaults(",LanFax Send Speed,SendAtHr,LanFax Pref Duplicates,LanFax Credit Card,"
                                   "LanFax Dialing Time,Sender Fax Name,LanFax Setup Cover Sheet Button,"),
              6);
    EXPECT_EQ(widget("LanFax Send Speed").number(), 2);
    EXPECT_EQ(widget("SendAtHr").number(), 12);
    EXPECT_TRUE(widget("LanFax Pref Duplicates").flag());
    EXPECT_FALSE(widget("LanFax Credit Card").flag());
    EXPECT_EQ(widget("Sender Fax Name").text(), "");
    EXPECT_FALSE(widget("LanFax Setup Cover Sheet Button").sensitive());
    EXPECT_EQ(widget("LanFax Resolution").number(), 2);
}

TEST_F(FeaturesTest, RestoringGoesBackToWhatWasSavedLast)
{
    widget("Sender Fax Name").setText("Ann");
    widget("Show Rcpt Info").setNumber(1);
    EXPECT_EQ(features.save(",Sender Fax Name,Show Custom Text,Bogus,"), 2);
    widget("Sender Fax Name").setText("Bob");
    widget("Show Rcpt Info").setNumber(0);
    EXPECT_EQ(features.restore(",Sender Fax Name,Show Custom Text,Bogus,"), 2);
    EXPECT_EQ(widget("Sender Fax Name").text(), "Ann");
    EXPECT_EQ(widget("Show Rcpt Info").number(), 1);

    widget("Sender Fax Name").setText("Cid");
    features.save(",Sender Fax Name,");
    widget("Sender Fax Name").setText("Dan");
    features.restore(",Sender Fax Name,");
    EXPECT_EQ(widget("Sender Fax Name").text(), "Cid");
}

TEST_F(FeaturesTest, WhatWasNeverSavedStaysAsItIs)
{
    widget("Sender Fax Name").setText("Bob");
    EXPECT_EQ(features.restore(",Sender Fax Name,"), 0);
    EXPECT_EQ(widget("Sender Fax Name").text(), "Bob");
}

TEST_F(FeaturesTest, AListIsReadWithAndWithoutItsOuterCommas)
{
    for (const char* list : {",SendAtHr,SendAtMin,", "SendAtHr,SendAtMin"})
        EXPECT_EQ(features.save(list), 2) << list;
    EXPECT_EQ(features.save(""), 0);
    EXPECT_EQ(features.save(",,,"), 0);
}

TEST_F(FeaturesTest, AreKeptFromOneRunToTheNext)
{
    load();
    widget("LanFax Resolution").setNumber(2);
    widget("Sender Fax Name").setText(" Zoë; [x] = \\n ");
    widget("LanFax Pref Duplicates").setFlag(false);
    features.keep();

    widget("LanFax Resolution").setNumber(0);
    widget("Sender Fax Name").setText("");
    widget("LanFax Pref Duplicates").setFlag(true);
    load();
    EXPECT_EQ(widget("LanFax Resolution").number(), 2);
    EXPECT_EQ(widget("Sender Fax Name").text(), " Zoë; [x] = \\n ");
    EXPECT_FALSE(widget("LanFax Pref Duplicates").flag());
}

TEST_F(FeaturesTest, WithoutAChangeNoFileIsWritten)
{
    load();
    features.keep();
    EXPECT_TRUE(folder.names().empty());
}

TEST_F(FeaturesTest, WhatBelongsToOneRecipientOrToTheComponentIsNotKept)
{
    load();
    widget("RecipientName").setText("Ann");
    widget("LanFax Personal PB Name").setText("/books/ann.xdb");
    features.keep();
    EXPECT_TRUE(folder.names().empty());
}

TEST_F(FeaturesTest, WithoutKeepingTheFileStaysAsItIs)
{
    writeFile(path, "[features]\nLanFax Resolution=1\n");
    load(true, false);
    EXPECT_EQ(widget("LanFax Resolution").number(), 1);
    widget("LanFax Resolution").setNumber(2);
    features.keep();
    EXPECT_EQ(contentOf(path), "[features]\nLanFax Resolution=1\n");
}

TEST_F(FeaturesTest, WithoutTakingOverTheDefaultsStay)
{
    writeFile(path, "[features]\nLanFax Resolution=1\n");
    load(false, false);
    EXPECT_EQ(widget("LanFax Resolution").number(), 0);
}

TEST_F(FeaturesTest, AConfiguredValueIsTheDefaultOfAnOptionThatWasNotKept)
{
    features.configureDefaults({{"LanFax Resolution", "2"}, {"Sender Fax Name", "Reception"}});
    features.setAllDefaults();
    loadFrom("[features]\nSender Fax Name=Ann\n");
    EXPECT_EQ(widget("LanFax Resolution").number(), 2);
    EXPECT_EQ(widget("Sender Fax Name").text(), "Ann");
    features.keep();
    EXPECT_EQ(contentOf(path), "[features]\nSender Fax Name=Ann\n") << "it may be configured anew";
    widget("LanFax Resolution").setNumber(0);
    features.keep();
    EXPECT_EQ(contentOf(path), "[features]\nSender Fax Name=Ann\nLanFax Resolution=0\n");
}

TEST_F(FeaturesTest, AConfiguredValueIsWhatResettingAnOptionGoesBackTo)
{
    features.configureDefaults({{"LanFax Resolution", "2"}});
    features.setAllDefaults();
    widget("LanFax Resolution").setNumber(1);
    widget("LanFax Send Speed").setNumber(0);
    EXPECT_EQ(features.setDefaults("LanFax Resolution,LanFax Send Speed"), 2);
    EXPECT_EQ(widget("LanFax Resolution").number(), 2);
    EXPECT_EQ(widget("LanFax Send Speed").number(), 2);
}

TEST_F(FeaturesTest, AConfiguredValueThatDoesNotSuitIsNamedUntilAnotherIsKept)
{
    features.configureDefaults({{"LanFax Resolution", "7"}});
    features.setAllDefaults();
    load(true, true);
    ASSERT_EQ(features.troubles().size(), 1U);
    EXPECT_EQ(features.troubles()[0].line,
              "the value \"7\" of \"Options\" in the configuration does not suit and is passed over; "
              "set it anew in the fax dialog, or remove it from the file");
    EXPECT_TRUE(features.troubles()[0].decides);
    EXPECT_EQ(features.setDefaults("LanFax Resolution"), 1);
    EXPECT_EQ(widget("LanFax Resolution").number(), 0);
    loadFrom("[features]\nLanFax Resolution=1\n");
    EXPECT_TRUE(features.troubles().empty());
}

TEST_F(FeaturesTest, OnlyWhatChangedIsWrittenSoThatTwoDriversLoseNothing)
{
    loadFrom("# mine\n[features]\nLanFax Resolution=1\nOf A Newer Driver=5\n[other]\na=b\n");
    widget("Sender Fax Name").setText("Ann");
    writeFile(path, "# mine\n[features]\nLanFax Resolution=2\nOf A Newer Driver=5\n[other]\na=b\n");
    features.keep();
    EXPECT_EQ(contentOf(path), "# mine\n\n[features]\nLanFax Resolution=2\nOf A Newer Driver=5\n"
                               "Sender Fax Name=Ann\n\n[other]\na=b\n");
}

TEST_F(FeaturesTest, AValueThatDoesNotSuitIsPassedOverAndNamed)
{
    loadFrom("[features]\nLanFax Resolution=3\nSendAtHr=0\nSendAtMin=x\nLanFax Send Speed=\n"
             "LanFax Credit Card=2\nSender Fax Name=12345678901234567890123456789012\n"
             "Cover Sheet Custom Text=two\\nlines\nLanFax Send Time=1\n");
    ASSERT_EQ(features.troubles().size(), 7U);
    EXPECT_EQ(features.troubles()[1].name, "LanFax Resolution");
    EXPECT_EQ(features.troubles()[1].line, "the value \"3\" of \"Options\" in " + path +
                                               " does not suit and is passed over; set it anew in the fax "
                                               "dialog, or remove it from the file");
    EXPECT_EQ(widget("LanFax Resolution").number(), 0);
    EXPECT_EQ(widget("SendAtHr").number(), 12);
    EXPECT_EQ(widget("SendAtMin").number(), 0);
    EXPECT_EQ(widget("LanFax Send Speed").number(), 2);
    EXPECT_FALSE(widget("LanFax Credit Card").flag());
    EXPECT_EQ(widget("Sender Fax Name").text(), "");
    EXPECT_EQ(widget("Cover Sheet Custom Text").text(), "");
    EXPECT_EQ(widget("LanFax Send Time").number(), 1);
}

TEST_F(FeaturesTest, OfAValueThatDoesNotSuitNoMoreIsShownThanASentenceHasRoomForAndOfACardNothing)
{
    loadFrom("[features]\nSender Fax Name=" + std::string(5000, 'x') +
             "\nLanFax Credit Card Info=" + std::string(40, '4') + "\n");
    ASSERT_EQ(features.troubles().size(), 2U);
    EXPECT_EQ(features.troubles()[0].line.find("the value \"...\" of \"Options\""), 0U);
    EXPECT_LT(features.troubles()[1].line.size(), path.size() + 300);
}

TEST_F(FeaturesTest, OnlyPreferencesDoNotDecideWhatGoesOut)
{
    loadFrom("[features]\nLanFax Pref Duplicates=7\nLanFax Pref Remove One=7\nLanFax Pref Current List=7\n"
             "LanFax Shared PB Name=books/relative.xdb\nLanFax Send Time=7\n");
    ASSERT_EQ(features.troubles().size(), 5U);
    for (const auto& trouble : features.troubles())
        EXPECT_EQ(trouble.decides, trouble.name == "LanFax Send Time") << trouble.name;
}

TEST_F(FeaturesTest, WhatIsSetAnewIsNoTroubleAnyMoreAndIsWrittenOverWhatDoesNotSuit)
{
    loadFrom("[features]\nLanFax Resolution=3\nSendAtHr=0\n");
    features.settle("LanFax Resolution"); // set to what it shows by now
    ASSERT_EQ(features.troubles().size(), 1U);
    features.setDefaults(",SendAtHr,");
    EXPECT_TRUE(features.troubles().empty());
    features.keep();
    EXPECT_EQ(contentOf(path), "[features]\nLanFax Resolution=0\nSendAtHr=12\n");
}

TEST_F(FeaturesTest, TheSharedPhonebookIsKeptAndHasToBeAnAbsolutePathOfOneLine)
{
    load();
    widget("LanFax Shared PB Name").setText("/books/Zo\u00eb's.xdb");
    features.keep();
    widget("LanFax Shared PB Name").setText("");
    load();
    EXPECT_EQ(widget("LanFax Shared PB Name").text(), "/books/Zo\u00eb's.xdb");
    for (const std::string& hostile :
         {std::string("books/a.xdb"), std::string("/books/\x1b[2J.xdb"), std::string("/books/a\\nb.xdb"),
          "/" + std::string(4095, 'x'), std::string("/books/\u2028")}) {
        widget("LanFax Shared PB Name").setText("");
        loadFrom("[features]\nLanFax Shared PB Name=" + hostile + "\n");
        EXPECT_EQ(widget("LanFax Shared PB Name").text(), "") << hostile;
        EXPECT_EQ(features.troubles().size(), 1U) << hostile;
    }
    loadFrom("[features]\nLanFax Shared PB Name=\n");
    EXPECT_TRUE(features.troubles().empty()) << "none is kept";
}

TEST_F(FeaturesTest, ASharedPhonebookThatWasChosenByARelativePathIsKeptByItsWholePath)
{
    load();
    widget("LanFax Shared PB Name").setText("books/a.xdb");
    features.keep();
    EXPECT_EQ(FeatureFile(path).read().at("LanFax Shared PB Name"),
              std::filesystem::current_path().string() + "/books/a.xdb");
    EXPECT_EQ(widget("LanFax Shared PB Name").text(), "books/a.xdb") << "what is shown is the component's";
}

TEST_F(FeaturesTest, WhatACancelReturnsToCanBePutAsideAndBack)
{
    widget("Sender Fax Name").setText("Ann");
    features.save(",Sender Fax Name,");
    const auto saved = features.savedValues();
    widget("Sender Fax Name").setText("Bob");
    features.save(",Sender Fax Name,LanFax Resolution,");
    features.setSavedValues(saved);
    EXPECT_EQ(features.restore(",Sender Fax Name,LanFax Resolution,"), 1);
    EXPECT_EQ(widget("Sender Fax Name").text(), "Ann");
}

TEST_F(FeaturesTest, ADamagedFileIsNamedAndIsNeverWrittenTo)
{
    const std::string damaged = "[features]\nLanFax Resolution=1\nLanFax Re";
    loadFrom(damaged);
    ASSERT_EQ(features.troubles().size(), 1U);
    EXPECT_EQ(features.troubles()[0].name, "");
    EXPECT_TRUE(features.troubles()[0].decides);
    EXPECT_NE(features.troubles()[0].line.find(path), std::string::npos);
    EXPECT_EQ(widget("LanFax Resolution").number(), 0);
    widget("LanFax Resolution").setNumber(2);
    features.keep();
    EXPECT_EQ(contentOf(path), damaged);
}

TEST_F(FeaturesTest, ALockThatAnotherProgramKeepsIsToldAndHoldsNothingUp)
{
    features.load(FeatureFile(path, std::chrono::milliseconds(50)), true, true);
    const quelm::FileHandle other(open(folder.path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    ASSERT_EQ(flock(other.get(), LOCK_EX), 0);
    const LogCapture log;
    widget("LanFax Resolution").setNumber(2);
    features.keep();
    features.keep();
    ASSERT_EQ(log.messages.size(), 1U) << "said once";
    EXPECT_NE(log.messages[0].find("locked; end it and choose the options again"), std::string::npos);
    EXPECT_FALSE(std::filesystem::exists(path));
    ASSERT_EQ(flock(other.get(), LOCK_UN), 0);
    features.keep();
    EXPECT_EQ(contentOf(path), "[features]\nLanFax Resolution=2\n") << "kept once the lock is gone";
}

TEST_F(FeaturesTest, AFileThatIsDamagedLaterIsNotWrittenToEither)
{
    loadFrom("[features]\nLanFax Resolution=1\n");
    const LogCapture log;
    writeFile(path, "rubbish");
    widget("LanFax Resolution").setNumber(2);
    features.keep();
    EXPECT_EQ(contentOf(path), "rubbish");
    ASSERT_EQ(log.messages.size(), 1U);
    features.keep();
    EXPECT_EQ(log.messages.size(), 1U) << "said once";

    writeFile(path, "");
    features.keep();
    EXPECT_EQ(contentOf(path), "[features]\nLanFax Resolution=2\n") << "kept once the file is repaired";
}

} // namespace
