// Phonebook files after crashes and on full disks.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "tests/driver/store/record_store_fixture.h"

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <random>

TEST_F(RecordStoreTest, KilledWriterLeavesWhatItHadCommitted)
{
    // Each round a driver saves records in pairs, one pair a commit, tells what it committed,
    // and is killed at a random moment.
    std::mt19937 random(20240305);
    constexpr int rounds = 50;
    int next = 0;
    for (int round = 0; round < rounds; ++round) {
        std::array<int, 2> told{};
        ASSERT_EQ(pipe(told.data()), 0);
        const pid_t driver = fork();
        if (driver == 0) {
            RecordStore store(book, Access::readWrite);
            for (int i = next;; i += 2) {
                for (const int number : {i, i + 1})
                    store.save({"u" + std::to_string(number), std::string(3000, 'x')});
                store.commit();
                [[maybe_unused]] const ssize_t said = write(told[1], &i, sizeof i);
            }
        }
        close(told[1]);
        int committed = next - 2;
        // The first commit is waited for, so that the kill falls among the later ones.
        ASSERT_EQ(read(told[0], &committed, sizeof committed), static_cast<ssize_t>(sizeof committed));
        const auto until = std::chrono::steady_clock::now() + std::chrono::microseconds(random() % 20000);
        while (std::chrono::steady_clock::now() < until) {
        }
        kill(driver, SIGKILL);
        waitpid(driver, nullptr, 0);
        while (read(told[0], &committed, sizeof committed) > 0) {
        }
        close(told[0]);

        const RecordStore store(book, round % 2 == 0 ? Access::read : Access::readWrite);
        const auto count = static_cast<int>(store.records().size());
        ASSERT_EQ(count % 2, 0) << "round " << round << ": half a commit";
        ASSERT_GE(count, committed + 2) << "round " << round << ": a commit was lost";
        ASSERT_LE(count, committed + 4) << "round " << round;
        for (int i = 0; i < count; ++i) {
            ASSERT_EQ(store.records()[static_cast<std::size_t>(i)].key, "u" + std::to_string(i));
            ASSERT_EQ(store.records()[static_cast<std::size_t>(i)].data.size(), 3000U);
        }
        next = count;
    }
    save("u" + std::to_string(next), "1");
    EXPECT_EQ(folder.names(), Names{"anne.xdb"}) << "no journal is left";
}

/// Leaves a file as a writer does that is killed while its pages are half in the file.
class HotJournal : public RecordStoreTest {
protected:
    HotJournal()
    {
        save("uAnne", "before");
        EXPECT_EQ(inProcess([&]() -> int { dieWhileSaving(book, "UPDATE record SET data = x'41'"); }),
                  128 + SIGKILL);
        EXPECT_EQ(folder.names(), (Names{"anne.xdb", "anne.xdb-journal"}));
    }
};

TEST_F(HotJournal, IsUndoneByAReader)
{
    EXPECT_EQ(stored(), Names{"uAnne=before"});
    EXPECT_EQ(folder.names(), Names{"anne.xdb"});
}

TEST_F(HotJournal, IsUndoneByAWriter)
{
    save("uBernard", "1");
    EXPECT_EQ(stored(), (Names{"uAnne=before", "uBernard=1"}));
}

TEST_F(RecordStoreTest, ReaderThatIsOpenMeanwhileSurvivesAKilledWriter)
{
    save("uAnne", "before");
    RecordStore reader(book, Access::read);
    EXPECT_EQ(inProcess([&]() -> int { dieWhileSaving(book); }), 128 + SIGKILL);
    reader.refresh();
    EXPECT_EQ(listed(reader), Names{"uAnne=before"});
}

TEST_F(RecordStoreTest, FullDiskFailsTheCommitAndLeavesTheFileAsItWas)
{
    save("uAnne", "1");
    const std::string before = contentOf(book);
    const int status = inProcess([&] {
        const rlimit limit{before.size() + 8192, before.size() + 8192};
        setrlimit(RLIMIT_FSIZE, &limit);
        RecordStore store(book, Access::readWrite);
        const std::string line = problem([&] {
            for (int i = 0; i < 20; ++i)
                store.save({"u" + std::to_string(i), std::string(4000, 'x')});
            store.commit();
        });
        return mentions(line, "cannot be saved: its file could not be extended") ? 0 : 1;
    });
    EXPECT_EQ(status, 0);
    EXPECT_EQ(contentOf(book), before);
    EXPECT_EQ(folder.names(), Names{"anne.xdb"});
}

TEST_F(RecordStoreTest, WhatCouldNotBeCommittedGoesIntoTheFileWithTheNextCommit)
{
    const int status = inProcess([&] {
        RecordStore store(book, Access::readWrite);
        rlimit limit{};
        getrlimit(RLIMIT_FSIZE, &limit);
        const rlimit none{contentOf(book).size() + 4096, limit.rlim_max};
        setrlimit(RLIMIT_FSIZE, &none);
        store.save({"uAnne", std::string(20000, 'x')});
        const bool failed = !problem([&] { store.commit(); }).empty();
        const bool remembered = store.records().size() == 1;
        setrlimit(RLIMIT_FSIZE, &limit);
        store.save({"uBernard", "1"});
        store.commit();
        return failed && remembered ? 0 : 1;
    });
    EXPECT_EQ(status, 0);
    const RecordStore store(book, Access::read);
    ASSERT_EQ(store.records().size(), 2U);
    EXPECT_EQ(store.records()[0].data, std::string(20000, 'x'));
    EXPECT_EQ(store.records()[1].key, "uBernard");
}

TEST_F(RecordStoreTest, FailedCommitLetsOthersSave)
{
    quelm::setDatabasePatience(std::chrono::milliseconds(100));
    RecordStore store(book, Access::readWrite);
    const auto reader = quelm::sqlite::open(book, SQLITE_OPEN_READONLY);
    quelm::sqlite::Statement reading(reader, "SELECT count(*), 1 FROM record UNION ALL SELECT 1, 2");
    store.save({"uAnne", "1"});
    reading.step(); // a foreign reader that does not let go
    EXPECT_TRUE(mentions(problem([&] { store.commit(); }), "another program"));
    reading.reset();
    save("uBernard", "1");
    store.commit();
    EXPECT_EQ(stored(), (Names{"uBernard=1", "uAnne=1"}));
}
