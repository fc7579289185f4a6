// Tests of opening the device's database.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/jobs/device_database.h"

#include "tests/device/jobs/state_support.h"
#include "tests/support/failure_line.h"

#include <gmock/gmock.h>

#include <filesystem>

namespace quelm::device::tests {
namespace {

namespace fs = std::filesystem;
using quelm::test::failureLine;
using testing::HasSubstr;

class DeviceDatabaseTest : public StateTest {
protected:
    DeviceDatabaseTest()
    {
        open();
        addRendered(faxFor({"111"}));
        close();
    }

    /// Why the database is refused, which is left as it is.
    std::string refusal()
    {
        const std::string before = contentOf(path / "device.db");
        const std::string line = failureLine([&] { open(); });
        close();
        EXPECT_EQ(contentOf(path / "device.db"), before);
        EXPECT_THAT(line, HasSubstr((path / "device.db").string()));
        return line;
    }

    void run(const char* statements) const
    {
        try {
            sqlite::run(sqlite::open(path / "device.db", SQLITE_OPEN_READWRITE), statements);
        } catch (const sqlite::Failure& failure) {
            ADD_FAILURE() << statements << ": " << failure.text;
        }
    }
};

TEST_F(DeviceDatabaseTest, OneOfALaterVersionIsRefused)
{
    run("PRAGMA user_version=2");
    EXPECT_THAT(refusal(), HasSubstr("written by a newer version"));
}

TEST_F(DeviceDatabaseTest, OneOfAnotherProgramIsRefused)
{
    fs::remove(path / "device.db");
    sqlite::run(sqlite::open(path / "device.db", SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE),
                "CREATE TABLE birds(name TEXT)");
    EXPECT_THAT(refusal(), HasSubstr("no database of a device"));
}

TEST_F(DeviceDatabaseTest, OneWithOtherTablesIsRefused)
{
    run("CREATE TRIGGER more AFTER INSERT ON call BEGIN DELETE FROM job; END");
    EXPECT_THAT(refusal(), HasSubstr("it is damaged"));
}

TEST_F(DeviceDatabaseTest, ADamagedOneIsRefused)
{
    std::string content = contentOf(path / "device.db");
    constexpr std::size_t page = 4096;
    for (std::size_t at = page; at < content.size(); at += page)
        content.replace(at, 64, 64, '\x5A');
    writeFile(path / "device.db", content);
    EXPECT_THAT(refusal(), HasSubstr("it is damaged"));
    writeFile(path / "device.db", "Dear Sir or Madam,\n" + std::string(2000, 'x'));
    EXPECT_THAT(refusal(), HasSubstr("it is damaged"));
}

TEST_F(DeviceDatabaseTest, WordsAndNumbersThatNoDeviceWroteAreDamage)
{
    for (const char* change : {"UPDATE job SET state = 'calling again'", "UPDATE job SET speed = ''",
                               "UPDATE job SET size = -1", "UPDATE recipient SET attempts = 99999999999"}) {
        const std::string before = contentOf(path / "device.db");
        run(change);
        open();
        EXPECT_THAT(failureLine([&] { (void)log->jobs(0, 10); }), HasSubstr("it is damaged")) << change;
        close();
        writeFile(path / "device.db", before);
    }
    open();
    EXPECT_EQ(log->jobs(0, 10).size(), 1U);
}

TEST_F(DeviceDatabaseTest, ACardThatIsSaidToBeEndlessTakesNoMemory)
{
    run("UPDATE job SET card_size = 9000000000000000");
    open();
    EXPECT_LE(log->job(1)->reading.creditCard.size(), 100U);
}

TEST_F(DeviceDatabaseTest, AnEmptyFileBecomesOne)
{
    writeFile(path / "device.db", "");
    open();
    EXPECT_EQ(log->load().waitingJobs, 0);
    EXPECT_EQ(add(faxFor({"111"})), 2) << "the number of a job that was acknowledged is never given again";
}

TEST_F(DeviceDatabaseTest, AChangeThatFailsLeavesNothing)
{
    const StateFolder state(path);
    DeviceDatabase database(state);
    EXPECT_EQ(failureLine([&] {
                  database.change([&] {
                      database.statement("DELETE FROM job").step();
                      throw Error("no");
                  });
              }),
              "no");
    EXPECT_THAT(
        failureLine([&] { database.change([&] { database.statement("DELETE FROM birds").step(); }); }),
        HasSubstr("birds"));
    auto select = database.statement("SELECT count(*) FROM job");
    ASSERT_TRUE(select.step());
    EXPECT_EQ(select.number(0), 1);
}

} // namespace
} // namespace quelm::device::tests
