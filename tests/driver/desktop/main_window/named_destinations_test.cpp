// Tests of the configuration's destinations in the main window.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "tests/driver/desktop/main_window/main_window_fixture.h"

#include <gmock/gmock.h>

namespace quelm {
namespace {

using testing::HasSubstr;

constexpr int firstNamedItem = 3;

class NamedDestinationsTest : public MainWindowTest {
protected:
    NamedDestinationsTest() { configure("Archive"); }

    /// Opens the window anew, as the program would be started after the configuration changed.
    void configure(const std::string& preset)
    {
        window->closeAtOnce();
        close();
        destinations = {{"Lab", NetworkAddress{"127.0.0.1", 1}, {}},
                        {"Archive", FileTarget{folder / "fax.job"}, Pdl::pjl}};
        destination = preset;
        open();
    }

    static int chosenItem()
    {
        return gtk_combo_box_get_active(GTK_COMBO_BOX(onScreen("Main Destination Kind")));
    }
    static int chosenForm() { return gtk_combo_box_get_active(GTK_COMBO_BOX(onScreen("Main Job Format"))); }
    static std::string place() { return gtk_label_get_text(GTK_LABEL(onScreen("Main Destination Place"))); }
};

TEST_F(NamedDestinationsTest, TheDefaultOneIsChosenAsLongAsTheUserChoseNothing)
{
    EXPECT_EQ(chosenItem(), firstNamedItem + 1);
    EXPECT_EQ(place(), folder / "fax.job");
    EXPECT_EQ(chosenForm(), 1) << "the form that it takes";
    chooseItem("Main Destination Kind", firstNamedItem);
    EXPECT_EQ(place(), "Device 127.0.0.1:1");
    EXPECT_EQ(chosenForm(), 0);
    configure("Archive");
    EXPECT_EQ(chosenItem(), firstNamedItem) << "the user's choice is kept";
}

TEST_F(NamedDestinationsTest, WhoHasTheDefaultOneFollowsWhenItChanges)
{
    EXPECT_EQ(chosenItem(), firstNamedItem + 1);
    configure("Lab");
    EXPECT_EQ(chosenItem(), firstNamedItem);
    configure("Archive");
    EXPECT_EQ(chosenItem(), firstNamedItem + 1);
}

TEST_F(NamedDestinationsTest, AJobGoesThere)
{
    openDocument();
    fillFax({"Ann"});
    EXPECT_THAT(sendAndRead(), HasSubstr("was written to " + folder / "fax.job"));
    EXPECT_THAT(contentOf(folder / "fax.job"), testing::StartsWith("\x1b%-12345X"));
}

TEST_F(NamedDestinationsTest, AFileThatIsThereIsAskedAbout)
{
    writeFile(folder / "fax.job", "mine");
    openDocument();
    fillFax({"Ann"});
    press("Main Send Button");
    EXPECT_TRUE(loopUntil([] { return onScreen("Main Replace Question") != nullptr; }));
    EXPECT_EQ(contentOf(folder / "fax.job"), "mine");
}

TEST_F(NamedDestinationsTest, OneThatIsGoneIsReplacedByTheDefault)
{
    chooseItem("Main Destination Kind", firstNamedItem);
    window->closeAtOnce();
    close();
    destinations = {{"Archive", FileTarget{folder / "fax.job"}, Pdl::pjl}};
    open();
    EXPECT_EQ(chosenItem(), firstNamedItem);
    EXPECT_EQ(place(), folder / "fax.job");
    window->closeAtOnce();
    close();
    destinations = {};
    destination = "";
    open();
    EXPECT_EQ(chosenItem(), fileItem);
}

} // namespace
} // namespace quelm
