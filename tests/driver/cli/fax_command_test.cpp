// The command `fax` while time goes by, with the real component.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/cli/command_line.h"
#include "driver/cli/commands.h"
#include "tests/support/build_paths.h"
#include "tests/support/kept_variable.h"
#include "tests/support/passing_clock.h"
#include "tests/support/temporary_folder.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <iterator>
#include <vector>

namespace quelm {
namespace {

using testing::HasSubstr;

class FaxCommandTest : public testing::Test {
protected:
    FaxCommandTest()
    {
        std::filesystem::create_directory(folder / "home");
        std::filesystem::copy_file(build_paths::componentLibrary(), folder / "home/libBramblecorLanFax.so");
        writeFile(folder / "letter.ps", "%!PS\nshowpage\n");
        setenv("XDG_STATE_HOME", (folder / "state").c_str(), 1);
        setenv("XDG_CONFIG_HOME", (folder / "config").c_str(), 1);
    }

    /// What `fax` says of a letter for 10:09 to two recipients of one number, about whom it warns.
    std::string fax() const
    {
        const std::vector<std::string> words{"quelm-driver",
                                             "--home",
                                             folder / "home",
                                             "--user",
                                             "ann",
                                             "fax",
                                             folder / "letter.ps",
                                             "--to",
                                             "Ann=555",
                                             "--to",
                                             "Bob=555",
                                             "--send-at",
                                             "10:09",
                                             "--output",
                                             job};
        std::vector<const char*> arguments;
        std::ranges::transform(words, std::back_inserter(arguments),
                               [](const auto& word) { return word.c_str(); });
        const auto line = parseCommandLine(static_cast<int>(arguments.size()), arguments.data());
        testing::internal::CaptureStderr();
        runFaxCommand(line);
        return testing::internal::GetCapturedStderr();
    }

    TemporaryFolder folder;
    const std::string job = folder / "job";

private:
    KeptVariable state_{"XDG_STATE_HOME"};
    KeptVariable config_{"XDG_CONFIG_HOME"};
};

TEST_F(FaxCommandTest, TheMinuteInWhichItBeginsIsAtOnceHoweverLongItTakes)
{
    const PassingClock clock("2026-11-22T10:09", "2026-11-22T10:10");
    EXPECT_EQ(fax(), job + ": fax job of " + (folder / "letter.ps") + " for 2 recipients\n");
    EXPECT_TRUE(clock.hasPassed);
    EXPECT_TRUE(std::filesystem::exists(job));
}

TEST_F(FaxCommandTest, AMomentThatPassesMeanwhileIsAtOnce)
{
    const PassingClock clock("2026-11-22T10:08", "2026-11-22T10:10");
    fax();
    EXPECT_TRUE(clock.hasPassed);
    EXPECT_TRUE(std::filesystem::exists(job));
}

TEST_F(FaxCommandTest, AMomentThatIsStillAheadIsWaitedFor)
{
    const PassingClock clock("2026-11-22T10:07", "2026-11-22T10:08");
    EXPECT_THAT(fax(), HasSubstr("waits until today at 10:09"));
    EXPECT_FALSE(std::filesystem::exists(job));
}

} // namespace
} // namespace quelm
