// Phonebook files that several drivers use at once.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "tests/driver/store/record_store_fixture.h"

#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>

TEST_F(RecordStoreTest, TwoDriversThatSaveAtOnceLoseNothing)
{
    constexpr int each = 40;
    std::vector<pid_t> drivers;
    for (const char* name : {"a", "b", "c"}) {
        const pid_t driver = fork();
        if (driver == 0) {
            const std::string line = problem([&] {
                quelm::setDatabasePatience(std::chrono::seconds(60));
                RecordStore store(book, Access::readWrite);
                for (int i = 0; i < each; ++i) {
                    store.save({name + std::to_string(i), "own"});
                    store.save({"shared" + std::to_string(i), name});
                    store.commit();
                }
            });
            _exit(line.empty() ? 0 : 1);
        }
        drivers.push_back(driver);
    }
    for (const pid_t driver : drivers) {
        int status = 0;
        waitpid(driver, &status, 0);
        EXPECT_EQ(status, 0);
    }
    const RecordStore store(book, Access::read);
    EXPECT_EQ(store.records().size(), 4U * each);
    for (const char* name : {"a", "b", "c"}) {
        std::size_t last = 0;
        for (int i = 0; i < each; ++i) {
            const auto at = store.find(name + std::to_string(i));
            ASSERT_TRUE(at);
            EXPECT_TRUE(i == 0 || *at > last) << "in the order in which it was saved";
            last = *at;
        }
    }
}

TEST_F(RecordStoreTest, WaitForAnotherDriverIsBounded)
{
    quelm::setDatabasePatience(std::chrono::milliseconds(100));
    RecordStore holder(book, Access::readWrite);
    RecordStore other(book, Access::readWrite);
    holder.save({"uAnne", "held"});
    const auto start = std::chrono::steady_clock::now();
    EXPECT_TRUE(mentions(problem([&] { other.save({"uBernard", "1"}); }), "another program is saving to it"));
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(4));
    EXPECT_EQ(listed(other), Names{});
    holder.commit();
    other.save({"uBernard", "1"});
    other.commit();
    EXPECT_EQ(stored(), (Names{"uAnne=held", "uBernard=1"}));
}

TEST_F(RecordStoreTest, ReadersDoNotDisturbAWriterNorItThem)
{
    save("uAnne", "1");
    RecordStore writer(book, Access::readWrite);
    writer.save({"uBernard", "1"});
    RecordStore reader(book, Access::read);
    EXPECT_EQ(listed(reader), Names{"uAnne=1"});
    reader.refresh();
    writer.commit();
    reader.refresh();
    EXPECT_EQ(reader.records().size(), 2U);
}

TEST_F(RecordStoreTest, LookingAtTheFileDoesNotLoseTheLocksOfThisProcess)
{
    RecordStore writer(book, Access::readWrite);
    writer.save({"uAnne", "1"});
    EXPECT_EQ(stored(), Names{});
    EXPECT_EQ(inProcess([&] {
                  quelm::setDatabasePatience(std::chrono::milliseconds(50));
                  const std::string line = problem([&] { saveTo(book, "uBernard", "1"); });
                  return mentions(line, "another program is saving to it") ? 0 : 1;
              }),
              0);
}

TEST_F(RecordStoreTest, ReplacedFileIsNoticed)
{
    save("uAnne", "1");
    RecordStore store(book, Access::readWrite);
    std::filesystem::rename(book, folder / "moved.xdb");
    EXPECT_TRUE(mentions(problem([&] { store.save({"uBernard", "1"}); }), "removed or replaced"));
    EXPECT_TRUE(mentions(problem([&] { store.refresh(); }), "no such file"));
    EXPECT_EQ(listed(store), Names{});
    RecordStore::create(book);
    save("uClaire", "1");
    store.refresh();
    EXPECT_EQ(listed(store), Names{"uClaire=1"});
    store.save({"uBernard", "1"});
    store.commit();
    EXPECT_EQ(stored(), (Names{"uClaire=1", "uBernard=1"}));
}
