// Starting a driver, what it shows, and what it keeps.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/core/driver.h"

#include "driver/boundary/host_state.h"
#include "driver/core/user_actions.h"
#include "driver/plugin/component_library.h"
#include "tests/support/driver_fixture.h"
#include "tests/support/log_capture.h"

namespace {

class RunningDriverTest : public DriverTest {};

TEST_F(RunningDriverTest, TakesTheComponentOfItsInstallation)
{
    EXPECT_EQ(driver().home(), options.home);
    EXPECT_EQ(driver().user(), "ann");
    EXPECT_EQ(driver().component().path(), options.home + "/libBramblecorLanFax.so");
    EXPECT_NE(driver().resource("FaxSession"), nullptr);
    EXPECT_EQ(driver().resource("Other"), nullptr);
}

TEST_F(RunningDriverTest, ShowsWidgetsRowsAndWindows)
{
    EXPECT_EQ(driver().show("Button").text, "_Press");
    EXPECT_EQ(driver().rows("One"), (std::vector<std::vector<std::string>>{{"Ann"}, {"Bob"}, {"Cid"}}));
    EXPECT_EQ(driver().windows(), (std::vector<std::string>{"Test Window"}));
    const std::string lacking = "the component's dialogs lack something that the driver needs; install the "
                                "component that came with it";
    EXPECT_EQ(refusal([&] { driver().show("Nothing"); }), lacking);
    EXPECT_EQ(refusal([&] { driver().rows("Nothing"); }), lacking);
    EXPECT_EQ(refusal([&] { driver().rows("Button"); }), lacking);
    driver().actions().nameWidgets();
    EXPECT_EQ(refusal([&] { driver().show("Nothing"); }), "there is no widget \"Nothing\"");
    EXPECT_EQ(refusal([&] { driver().rows("Nothing"); }), "there is no widget \"Nothing\"");
    EXPECT_EQ(refusal([&] { driver().rows("Button"); }), "\"Button\" is no list");
}

TEST_F(RunningDriverTest, RemembersTheHelpTopic)
{
    EXPECT_EQ(driver().helpTopic(), "");
    driver().press("Help Button");
    EXPECT_EQ(driver().helpTopic(), "LanFax");
}

TEST_F(RunningDriverTest, KeepsOptionsFromOneRunToTheNext)
{
    driver().type("Sender Fax Name", "Ann");
    start();
    EXPECT_EQ(driver().show("Sender Fax Name").text, "Ann");
}

TEST_F(RunningDriverTest, WritesAnOptionAsSoonAsTheUserChangedIt)
{
    driver().type("Sender Fax Name", "Ann");
    EXPECT_EQ(contentOf(folder / "config/features/ann.ini"), "[features]\nSender Fax Name=Ann\n");
}

TEST_F(RunningDriverTest, TheOptionsOfOneUserAreNotThoseOfAnother)
{
    driver().type("Sender Fax Name", "Ann");
    options.user = "bob";
    start();
    EXPECT_EQ(driver().show("Sender Fax Name").text, "");
}

TEST_F(RunningDriverTest, WithoutSavingTheOptionsEndWithTheRun)
{
    driver().type("Sender Fax Name", "Ann");
    options.saveFeatures = false;
    start();
    EXPECT_EQ(driver().show("Sender Fax Name").text, "Ann");
    driver().type("Sender Fax Name", "Bob");
    start();
    EXPECT_EQ(driver().show("Sender Fax Name").text, "Ann");
}

TEST_F(RunningDriverTest, WithoutLoadingItStartsWithTheDefaults)
{
    driver().type("Sender Fax Name", "Ann");
    options.loadFeatures = false;
    options.saveFeatures = false;
    start();
    EXPECT_EQ(driver().show("Sender Fax Name").text, "");
}

TEST_F(RunningDriverTest, KeptOptionsBringTheirFieldsToLife)
{
    driver().tick("LanFax Dialing Prefix", true);
    start();
    EXPECT_TRUE(driver().show("LanFax Dialing Prefix Info").sensitive);
}

TEST_F(RunningDriverTest, StartsWithADamagedFeatureFileAndLeavesIt)
{
    driver().type("Sender Fax Name", "Ann");
    writeFile(folder / "config/features/ann.ini", "rubbish");
    const LogCapture log;
    start();
    EXPECT_EQ(log.messages.size(), 1U);
    driver().type("Sender Fax Name", "Bob");
    EXPECT_EQ(contentOf(folder / "config/features/ann.ini"), "rubbish");
}

class OptionTroublesTest : public DriverTest {
protected:
    void startWith(const std::string& name)
    {
        std::filesystem::create_directories(folder / "config/features");
        writeFile(folder / "config/features/ann.ini", "[features]\nSender Fax Name=" + name + "\n");
        start();
    }
    const std::string tooLong = std::string(32, 'x');
};

TEST_F(OptionTroublesTest, AreToldAtTheStartAndRefuseAJobUntilTheOptionIsSet)
{
    const LogCapture log;
    startWith(tooLong);
    ASSERT_EQ(log.messages.size(), 1U);
    EXPECT_EQ(log.severities[0], quelm::Severity::warning);
    EXPECT_EQ(refusal([&] { driver().requireReadableOptions(); }), "nothing");
    EXPECT_EQ(refusal([&] { driver().requireKnownOptions(); }), log.messages[0]);
    EXPECT_EQ(driver().unknownOptions(), log.messages);
    driver().type("Sender Fax Name", "");
    EXPECT_EQ(refusal([&] { driver().requireKnownOptions(); }), "nothing");
    EXPECT_EQ(driver().unknownOptions(), std::vector<std::string>());
    EXPECT_EQ(contentOf(folder / "config/features/ann.ini"), "[features]\nSender Fax Name=\n");
}

TEST_F(OptionTroublesTest, OfAFileThatCannotBeReadNothingSettles)
{
    const LogCapture log;
    startWith("\xff");
    ASSERT_EQ(log.messages.size(), 1U);
    EXPECT_EQ(log.severities[0], quelm::Severity::error);
    driver().type("Sender Fax Name", "Ann");
    EXPECT_EQ(refusal([&] { driver().requireReadableOptions(); }), log.messages[0]);
    EXPECT_EQ(refusal([&] { driver().requireKnownOptions(); }), log.messages[0]);
}

TEST_F(OptionTroublesTest, ThatAreHeldAreThrownOrToldAtTheEnd)
{
    const LogCapture log;
    options.holdOptionTroubles = true;
    startWith(tooLong);
    EXPECT_TRUE(log.messages.empty());
    options.user = "bob";
    start();
    ASSERT_EQ(log.messages.size(), 1U) << "at the end";
    options.user = "ann";
    start();
    EXPECT_EQ(refusal([&] { driver().requireKnownOptions(); }), log.messages[0]);
    options.user = "bob";
    start();
    EXPECT_EQ(log.messages.size(), 1U) << "what is thrown is not told besides";
}

TEST_F(OptionTroublesTest, OfValuesThatAreHandedOverAreFoundTheSame)
{
    const LogCapture log;
    options.optionValues = {{"Sender Fax Name", tooLong}};
    start();
    ASSERT_EQ(log.messages.size(), 1U);
    EXPECT_EQ(refusal([&] { driver().requireKnownOptions(); }), log.messages[0]);
}

TEST_F(RunningDriverTest, IsTheOnlyOneInItsProcess)
{
    EXPECT_EQ(refusal([&] { const quelm::Driver second(options); }),
              "a driver runs in this process already; end it before another one is started");
    driver().press("Button");
    EXPECT_EQ(journal(), "Button;");
}

class FailingStart : public testing::Test {
protected:
    std::string problemOf(const std::string& component)
    {
        quelm::DriverOptions options;
        options.home = folder.path();
        options.user = "ann";
        options.configDirectory = folder / "config";
        options.component = component;
        try {
            const quelm::Driver driver(options);
        } catch (const quelm::Error& error) {
            EXPECT_EQ(quelm::HostState::current(), nullptr);
            return error.what();
        }
        return "none";
    }

    TemporaryFolder folder;
    LogCapture log;
};

TEST_F(FailingStart, NamesTheComponentThatIsMissing)
{
    EXPECT_EQ(problemOf(""), "the component " + folder / "libBramblecorLanFax.so" +
                                 " cannot be loaded: no such file; install it there or name another one");
}

TEST_F(FailingStart, SaysWhyWhenTheHostKnows)
{
    const auto startProblem = [](const std::string& plugin, const std::string& reason) {
        return "the component " + pluginPath(plugin) + " cannot start: " + reason;
    };
    EXPECT_EQ(problemOf(pluginPath("start_fails")), startProblem("start_fails", "it gives no reason"));
    EXPECT_EQ(problemOf(pluginPath("start_misses_widget")),
              startProblem("start_misses_widget",
                           "its dialogs lack something that it asks for; install the component again"));
    EXPECT_EQ(problemOf(pluginPath("broken_definition"))
                  .find(startProblem("broken_definition", "the dialog definition cannot be used: ")),
              0U);
}

TEST_F(FailingStart, AnExceptionAtTheStartIsLogged)
{
    EXPECT_EQ(problemOf(pluginPath("start_throws")),
              "the component " + pluginPath("start_throws") + " cannot start: it failed in its start-up");
    ASSERT_EQ(log.messages.size(), 1U);
    EXPECT_EQ(log.messages[0], "the component failed in InitializeFaxComponent: cannot begin");
}

TEST_F(FailingStart, LeavesRoomForADriverThatCanStart)
{
    EXPECT_NE(problemOf(pluginPath("start_fails")), "none");
    EXPECT_EQ(problemOf(pluginPath("good")), "none");
}

TEST_F(FailingStart, AWrongClockIsRefused)
{
    quelm::DriverOptions options;
    options.home = folder.path();
    options.component = pluginPath("good");
    options.now = "yesterday";
    EXPECT_THROW(quelm::Driver{options}, quelm::Error);
}

} // namespace
