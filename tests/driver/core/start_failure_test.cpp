// Why a component could not start.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/core/start_failure.h"

#include "driver/boundary/host_state.h"
#include "host/calls.h"
#include "tests/support/log_capture.h"
#include "tests/support/temporary_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <stdexcept>
#include <string>

namespace {

using quelm::startFailure;
using testing::HasSubstr;

class StartFailureReasonTest : public testing::Test {
protected:
    LogCapture log;
    TemporaryFolder folder;
    quelm::HostState state{folder.path(), "ann"};
};

TEST_F(StartFailureReasonTest, IsWhatTheHostRefused)
{
    std::filesystem::create_directory(folder / "db");
    EXPECT_EQ(startFailure(state), "it gives no reason");
    EXPECT_FALSE(pDriverDirector->parseXMLBuffer(host::in("\xff")));
    EXPECT_EQ(startFailure(state), "the dialog definition cannot be used: it is not UTF-8");
}

TEST_F(StartFailureReasonTest, IsAFolderThatCannotBeMade)
{
    EXPECT_EQ(startFailure(state), "the folder " + folder / "db/phonebook" + " cannot be made; " +
                                       folder / "db" + " is no folder that you may write to");
}

TEST_F(StartFailureReasonTest, IsAPhonebookThatIsNone)
{
    std::filesystem::create_directories(folder / "db/phonebook/user");
    const std::string file = writeFile(folder / "db/phonebook/user/ann.xdb", "no phonebook at all");
    QuelmLegacyDatabase database;
    EXPECT_FALSE(host::openDatabase(database, file, "r+"));
    EXPECT_FALSE(host::createDatabase(database, file, 2));
    EXPECT_THAT(startFailure(state), HasSubstr(file));
    EXPECT_THAT(startFailure(state), HasSubstr("is no phonebook"));
}

TEST_F(StartFailureReasonTest, IsAnExceptionBeforeAnythingElse)
{
    state.guard.run("InitializeFaxComponent", [] { throw std::runtime_error("oh"); });
    EXPECT_EQ(startFailure(state), "it failed in its start-up");
}

} // namespace
