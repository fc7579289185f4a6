// The shared phonebook of an earlier run: the component has it from the first thing that a user does.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/core/kept_phonebook.h"

#include "driver/config/installation.h"
#include "driver/store/record_store.h"
#include "driver/widgets/widget_tree.h"
#include "tests/support/build_paths.h"
#include "tests/support/driver_fixture.h"
#include "tests/support/log_capture.h"

#include <gmock/gmock.h>
#include <sys/stat.h>

namespace quelm {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

/// Notes which windows were ever seen.
class Sightings : public WidgetObserver {
public:
    explicit Sightings(WidgetTree& widgetTree) : tree_(widgetTree) { tree_.addObserver(*this); }
    ~Sightings() override { tree_.removeObserver(*this); }
    Sightings(const Sightings&) = delete;
    Sightings& operator=(const Sightings&) = delete;

    void windowAdded(Widget& window) override { look(window); }
    void changed(Widget& widget, WidgetChange) override { look(widget); }

    std::vector<std::string> seen;

private:
    void look(const Widget& widget)
    {
        if (widget.kind() == WidgetKind::fileSelection && widget.visible())
            seen.push_back(widget.name());
    }
    WidgetTree& tree_;
};

class KeptPhonebookTest : public DriverTest {
protected:
    KeptPhonebookTest() : DriverTest(build_paths::componentLibrary()) {}

    std::string book(const std::string& name, const std::string& entry) const
    {
        const std::string path = folder / name;
        RecordStore::create(path);
        RecordStore store(path, RecordStore::Access::readWrite);
        store.save({"u" + entry,
                    ".susg\r\n0\r\n.eusg\r\n.snam\r\n" + entry + "\r\n.enam\r\n.sfxn\r\n555\r\n.efxn\r\n"});
        store.commit();
        return path;
    }

    void startWith(const std::string& path)
    {
        const auto kept = featureFilePath(options.configDirectory, options.user);
        std::filesystem::create_directories(std::filesystem::path(kept).parent_path());
        writeFile(kept, "[features]\nLanFax Shared PB Name=" + path + "\n");
        startAfresh();
    }

    /// With a copy of the component, which so knows nothing of the driver before.
    void startAfresh()
    {
        options.component = folder / ("component" + std::to_string(++copies_) + ".so");
        std::filesystem::copy_file(build_paths::componentLibrary(), options.component);
        start();
    }

    std::vector<std::string> sharedNames()
    {
        driver().call("T40InvokeFaxDialog");
        driver().press("AddPBFaxRcpt");
        driver().choose("Current PB Type", 1);
        std::vector<std::string> names;
        for (const auto& row : driver().rows("Fax PB List"))
            names.push_back(row.at(0));
        return names;
    }

private:
    int copies_ = 0;
};

TEST_F(KeptPhonebookTest, IsListedThoughItsChooserWasNeverSeen)
{
    startWith(book("shared.xdb", "Zoe"));
    EXPECT_EQ(driver().widgets().find("SharedPBSelectFileDialog"), nullptr) << "not at the start";
    const Sightings sightings(driver().widgets());
    EXPECT_THAT(sharedNames(), ElementsAre("Zoe"));
    EXPECT_THAT(sightings.seen, IsEmpty());
}

TEST_F(KeptPhonebookTest, WithoutOneTheComponentIsAskedNothing)
{
    EXPECT_THAT(sharedNames(), IsEmpty());
    EXPECT_EQ(driver().widgets().find("SharedPBSelectFileDialog"), nullptr);
}

TEST_F(KeptPhonebookTest, TheChooserWorksAsBefore)
{
    startWith(book("shared.xdb", "Zoe"));
    const std::string other = book("other.xdb", "Ida");
    driver().call("T40InvokeFaxDialog");
    driver().press("Select Shared PB Button");
    EXPECT_EQ(driver().show("SharedPBSelectFileDialog").visible, true);
    EXPECT_EQ(driver().show("SharedPBSelectFileDialog").text, options.home + "/db/phonebook/*.xdb");
    driver().closeWindow("SharedPBSelectFileDialog");
    EXPECT_EQ(driver().show("LanFax Shared PB Name").text, folder / "shared.xdb") << "cancelled";
    driver().press("Select Shared PB Button");
    driver().type("SharedPBSelectFileDialog", other);
    driver().press("SharedPBSelectFileDialog");
    EXPECT_THAT(sharedNames(), ElementsAre("Ida"));
    startAfresh();
    EXPECT_EQ(driver().show("LanFax Shared PB Name").text, other);
    EXPECT_THAT(sharedNames(), ElementsAre("Ida"));
}

TEST_F(KeptPhonebookTest, TheDefaultsOfThePreferencesKeepNone)
{
    startWith(book("shared.xdb", "Zoe"));
    driver().call("LanFaxPrefsTabDefaults");
    startAfresh();
    EXPECT_EQ(driver().show("LanFax Shared PB Name").text, "");
    EXPECT_THAT(sharedNames(), IsEmpty());
}

TEST_F(KeptPhonebookTest, OneThatIsGoneOrNoPhonebookIsToldOnceWhenItIsListed)
{
    std::filesystem::create_directory(folder / "folder.xdb");
    ASSERT_EQ(mkfifo((folder / "fifo.xdb").c_str(), 0600), 0);
    writeFile(folder / "text.xdb", "not a phonebook");
    for (const char* name : {"gone.xdb", "folder.xdb", "fifo.xdb", "text.xdb"}) {
        const LogCapture log;
        startWith(folder / name);
        driver().call("T40InvokeFaxDialog");
        EXPECT_THAT(log.messages, IsEmpty()) << "who lists nothing is told nothing";
        EXPECT_THAT(sharedNames(), IsEmpty()) << name;
        driver().choose("Current PB Type", 0);
        driver().choose("Current PB Type", 1);
        EXPECT_THAT(log.messages, ElementsAre(HasSubstr(name))) << "said once";
    }
}

} // namespace
} // namespace quelm
