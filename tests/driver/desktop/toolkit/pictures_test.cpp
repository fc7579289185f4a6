// The pictures that the dialogs name.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/desktop/toolkit/pictures.h"

#include "driver/widgets/widget_tree.h"
#include "tests/support/build_paths.h"
#include "tests/support/driver_fixture.h"
#include "tests/support/log_capture.h"

#include <gtkmm/main.h>

#include <set>

namespace {

void collectPictures(const quelm::Widget& widget, std::set<std::string>& files)
{
    for (const auto& child : widget.children()) {
        if (const std::string* file = child->attribute("PicFile"))
            files.insert(*file);
        collectPictures(*child, files);
    }
}

class Pictures : public DriverTest {
protected:
    Pictures() : DriverTest(build_paths::componentLibrary()) { Gtk::Main::init_gtkmm_internals(); }
};

} // namespace

TEST_F(Pictures, EveryPictureOfTheDefinitionIsThereInAFittingSize)
{
    std::set<std::string> files;
    for (const auto& window : driver().widgets().windows())
        collectPictures(*window, files);
    EXPECT_EQ(files.size(), 9U);
    quelm::Pictures pictures(build_paths::projectFolder);
    for (const std::string& file : files) {
        const auto picture = pictures.load(file);
        ASSERT_TRUE(picture) << file;
        EXPECT_GE(picture->get_width(), 32) << file;
        EXPECT_LE(picture->get_width(), 48) << file;
        EXPECT_EQ(picture->get_width(), picture->get_height()) << file;
        EXPECT_TRUE(picture->get_has_alpha()) << file;
    }
}

TEST_F(Pictures, AreKeptOnceLoaded)
{
    quelm::Pictures pictures(build_paths::projectFolder);
    const auto first = pictures.load("icon/base/Fax/AddRecipient.gif");
    EXPECT_EQ(pictures.load("icon/base/Fax/AddRecipient.gif"), first);
}

TEST_F(Pictures, AMissingOneIsLoggedOnceAndShowsNothing)
{
    const LogCapture log;
    quelm::Pictures pictures(folder.path());
    EXPECT_FALSE(pictures.load("icon/base/Fax/None.gif"));
    EXPECT_FALSE(pictures.load("icon/base/Fax/None.gif"));
    ASSERT_EQ(log.messages.size(), 1U);
    EXPECT_NE(log.messages[0].find("icon/base/Fax/None.gif"), std::string::npos) << log.messages[0];
}

TEST_F(Pictures, ANameThatIsNoneIsNotLookedFor)
{
    const LogCapture log;
    quelm::Pictures pictures(folder.path());
    EXPECT_FALSE(pictures.load(""));
    EXPECT_TRUE(log.messages.empty());
}

TEST_F(Pictures, TheProgramHasIconsInThreeSizes)
{
    quelm::Pictures pictures(build_paths::projectFolder);
    for (const int size : {16, 32, 48}) {
        const auto icon = pictures.load("icon/quelm-driver-" + std::to_string(size) + ".png");
        ASSERT_TRUE(icon);
        EXPECT_EQ(icon->get_width(), size);
    }
}
