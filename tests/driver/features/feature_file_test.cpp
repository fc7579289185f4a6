// The file of kept options.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/features/feature_file.h"

#include "base/error.h"
#include "base/file_handle.h"
#include "tests/support/failure_line.h"
#include "tests/support/temporary_folder.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>

namespace {

using quelm::FeatureFile;
using Values = std::map<std::string, quelm::FeatureValue>;
using Texts = std::map<std::string, std::string>;

class FeatureFileTest : public testing::Test {
protected:
    TemporaryFolder folder;
    const std::string path = folder / "settings/features/ann.ini";
    const FeatureFile file{path};

    std::string problemOfReading() const
    {
        try {
            file.read();
        } catch (const quelm::Error& error) {
            return error.what();
        }
        return "none";
    }

    void put(const std::string& content) const
    {
        std::filesystem::create_directories(std::filesystem::path(path).parent_path());
        writeFile(path, content);
    }
};

TEST_F(FeatureFileTest, AMissingFileHoldsNothing) { EXPECT_EQ(file.read(), Texts()); }

TEST_F(FeatureFileTest, ReadsWhatItWrote)
{
    file.write({{"Number", 3}, {"Text", std::string("a;b=c #d\\")}, {"Empty", std::string()}});
    EXPECT_EQ(file.read(), (Texts{{"Number", "3"}, {"Text", "a;b=c #d\\"}, {"Empty", ""}}));
}

TEST_F(FeatureFileTest, OnlyItsOwnerCanReadIt)
{
    file.write({{"LanFax Credit Card Info", std::string("4111")}});
    struct stat status {};
    ASSERT_EQ(stat(path.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0600U);
}

TEST_F(FeatureFileTest, AFolderThatAnotherProgramKeepsLockedIsNotWaitedForForEver)
{
    put("[features]\nNumber=1\n");
    const auto locked = std::filesystem::path(path).parent_path().string();
    const quelm::FileHandle other(open(locked.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    ASSERT_EQ(flock(other.get(), LOCK_EX), 0);
    const FeatureFile impatient(path, std::chrono::milliseconds(50));
    EXPECT_EQ(quelm::test::failureLine([&] {
                  impatient.write({{"Number", 3}});
              }),
              "the options cannot be kept in " + path + ": another program keeps the folder \"" + locked +
                  "\" locked; end it and choose the options again");
    EXPECT_EQ(impatient.read(), (Texts{{"Number", "1"}})) << "reading needs no lock";
    ASSERT_EQ(flock(other.get(), LOCK_UN), 0);
    impatient.write({{"Number", 3}});
    EXPECT_EQ(impatient.read(), (Texts{{"Number", "3"}}));
}

TEST_F(FeatureFileTest, AFifoInItsPlaceIsNotWaitedFor)
{
    put("");
    ASSERT_EQ(unlink(path.c_str()), 0);
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    EXPECT_EQ(problemOfReading(),
              "the kept options in " + path +
                  " cannot be used: that is no plain file; repair or remove the file, it is "
                  "left as it is");
}

TEST_F(FeatureFileTest, AFileOfMoreThanAMebibyteIsRefusedAndStaysAsItIs)
{
    const std::string option = "[features]\nNumber=1\n#";
    const std::string fits = option + std::string(1048576 - option.size(), '-');
    put(fits);
    EXPECT_EQ(file.read(), (Texts{{"Number", "1"}}));
    EXPECT_EQ(quelm::test::failureLine([&] {
                  file.write({{"Number", 12345}});
              }),
              "the options cannot be kept in " + path +
                  ": it would be larger than 1 MiB; make the file smaller");
    EXPECT_EQ(contentOf(path), fits);
    put(fits + "-");
    EXPECT_EQ(problemOfReading(),
              "the kept options in " + path +
                  " cannot be used: it is larger than 1 MiB; repair or remove the file, it is "
                  "left as it is");
    EXPECT_THROW(file.write({{"Number", 3}}), quelm::Error);
    EXPECT_EQ(contentOf(path), fits + "-");
}

TEST_F(FeatureFileTest, LeavesNoOtherFileBehind)
{
    file.write({{"Number", 3}});
    file.write({{"Number", 4}});
    const auto names =
        std::distance(std::filesystem::directory_iterator(std::filesystem::path(path).parent_path()), {});
    EXPECT_EQ(names, 1);
}

TEST_F(FeatureFileTest, DamageIsNamedWithTheFile)
{
    for (const char* damaged :
         {"no group", "[features]\n4111222233334444\n", "[features\na=b\n", "[features]\nText=\xff\xfe\n"}) {
        put(damaged);
        EXPECT_EQ(problemOfReading().find("4111"), std::string::npos) << "a card's number may stand there";
        EXPECT_NE(problemOfReading().find("the kept options in " + path + " cannot be used: "),
                  std::string::npos)
            << damaged;
        EXPECT_THROW(file.write({{"Number", 3}}), quelm::Error) << damaged;
        EXPECT_EQ(contentOf(path), damaged);
    }
}

TEST_F(FeatureFileTest, WhatIsNoTextIsNamedByItsLineAndNeverShown)
{
    put("[features]\n# LanFax Credit Card Info=\nLanFax Credit Card=1\nLanFax Credit Card "
        "Info=4111222233334444\xff\n");
    EXPECT_EQ(problemOfReading(), "the kept options in " + path +
                                      " cannot be used: its line 4 is no text that can be read; repair or "
                                      "remove the file, it is left as it is");
}

TEST_F(FeatureFileTest, ANulCutsNoValueShort)
{
    const std::string cut("[features]\nLanFax Cover Sheet Notes=Call\0 me\n", 44);
    put(cut);
    EXPECT_NE(problemOfReading().find("it holds a character NUL"), std::string::npos);
    EXPECT_THROW(file.write({{"Number", 3}}), quelm::Error);
    EXPECT_EQ(contentOf(path), cut);
}

TEST_F(FeatureFileTest, AnUnreadableFileIsAnError)
{
    std::filesystem::create_directories(path);
    EXPECT_NE(problemOfReading(), "none");
    EXPECT_THROW(file.write({{"Number", 3}}), quelm::Error);
}

TEST_F(FeatureFileTest, AFolderThatCannotBeMadeIsAnError)
{
    writeFile(folder / "settings", "in the way");
    EXPECT_THROW(file.write({{"Number", 3}}), quelm::Error);
    EXPECT_EQ(contentOf(folder / "settings"), "in the way");
}

TEST_F(FeatureFileTest, DriversThatWriteAtTheSameTimeLoseNothing)
{
    constexpr int drivers = 4;
    constexpr int rounds = 15;
    std::vector<pid_t> children;
    for (int driver = 0; driver < drivers; ++driver) {
        children.push_back(fork());
        if (children.back() == 0) {
            for (int round = 0; round < rounds; ++round)
                file.write({{"Key " + std::to_string(driver) + " " + std::to_string(round), round}});
            _exit(0);
        }
    }
    for (const pid_t child : children) {
        int status = 1;
        waitpid(child, &status, 0);
        EXPECT_EQ(status, 0);
    }
    EXPECT_EQ(file.read().size(), static_cast<std::size_t>(drivers * rounds));
}

} // namespace
