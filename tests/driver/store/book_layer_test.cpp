// What another user lays beside a phonebook or in its place.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/store/book_layer.h"

#include "tests/driver/store/record_store_fixture.h"
#include "tests/support/two_users.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <csignal>
#include <functional>
#include <thread>

namespace {

/// The victim's phonebook in a folder that everybody may write to: uAnne=5551234.
class ForgedFiles : public TwoUsers {
protected:
    void SetUp() override
    {
        TwoUsers::SetUp();
        if (HasFatalFailure())
            return;
        openFolder(folder / "open");
        ASSERT_EQ(asUser(victim,
                         [&] {
                             RecordStore::create(book, RecordStore::Readers::everybody);
                             RecordStore store(book, Access::readWrite);
                             store.save({"uAnne", "5551234"});
                             store.commit();
                             return 0;
                         }),
                  0);
    }

    /// Leaves beside the attacker's own copy of the book what a writer leaves that is killed, and gives the
    /// journal `ending` the name of the victim's.
    void forge(const std::string& ending, const std::function<void(const std::string& copy)>& writeAndDie)
    {
        const std::string copy = folder / "open/copy.xdb";
        const std::string content = contentOf(book);
        ASSERT_EQ(asUser(attacker,
                         [&] {
                             writeFile(copy, content);
                             writeAndDie(copy);
                             return 0;
                         }),
                  128 + SIGKILL);
        ASSERT_EQ(asUser(attacker,
                         [&] {
                             chmod((copy + ending).c_str(), 0666);
                             std::filesystem::rename(copy + ending, book + ending);
                             return 0;
                         }),
                  0);
    }

    void forgeLog()
    {
        // The attacker's own change, in a log that a reader of the unchanged file would put over it.
        forge("-wal", [](const std::string& copy) {
            const auto database = quelm::sqlite::open(copy, SQLITE_OPEN_READWRITE);
            quelm::sqlite::run(database,
                               "PRAGMA journal_mode=WAL; UPDATE record SET data = CAST('999' AS BLOB)");
            raise(SIGKILL);
        });
    }

    /// The line that `action` ends with when `user` does it; empty when there is none.
    template <typename Action>
    std::string lineOf(uid_t user, Action action)
    {
        const std::string answer = writeFile(folder / "answer", "");
        chmod(answer.c_str(), 0666);
        EXPECT_EQ(asUser(user,
                         [&] {
                             writeFile(answer, problem(action));
                             return 0;
                         }),
                  0);
        return contentOf(answer);
    }

    /// What `user` reads in the phonebook: "uAnne=5551234", or why he cannot.
    std::string readBy(uid_t user, Access access)
    {
        return lineOf(user, [&] {
            const RecordStore store(book, access);
            std::string text;
            for (const auto& record : store.records())
                text += record.key + "=" + record.data;
            throw quelm::Error(text);
        });
    }

    /// Why the victim cannot save; empty when he could.
    std::string savingProblem()
    {
        return lineOf(victim, [&] {
            RecordStore store(book, Access::readWrite);
            store.save({"uBen", "1"});
            store.commit();
        });
    }

    std::string book = folder / "open/victim.xdb";
};

} // namespace

TEST_F(ForgedFiles, ALogOfAnotherUserChangesNoNumber)
{
    forgeLog();
    EXPECT_EQ(readBy(victim, Access::readWrite), "uAnne=5551234");
    EXPECT_EQ(readBy(victim, Access::read), "uAnne=5551234");
}

TEST_F(ForgedFiles, AJournalOfAnotherUserChangesNoNumber)
{
    // A journal holds what the pages were before: the attacker's book dialled 999 until a change that was
    // never finished, which whoever opens the victim's book would undo.
    forge("-journal", [](const std::string& copy) {
        {
            const auto database = quelm::sqlite::open(copy, SQLITE_OPEN_READWRITE);
            quelm::sqlite::run(database, "UPDATE record SET data = CAST('999' AS BLOB)");
        }
        dieWhileSaving(copy, "UPDATE record SET data = CAST('5551234' AS BLOB)");
    });
    for (const Access access : {Access::read, Access::readWrite})
        EXPECT_EQ(readBy(victim, access), "uAnne=5551234");
    const std::string line = savingProblem();
    EXPECT_TRUE(mentions(line, "cannot be saved: somebody else has put " + book +
                                   "-journal beside it; have "
                                   "that removed and try again"))
        << line;
    EXPECT_EQ(readBy(victim, Access::read), "uAnne=5551234");
}

TEST_F(ForgedFiles, WithSomebodyElsesLogBesideItNothingIsSaved)
{
    forgeLog();
    EXPECT_TRUE(mentions(savingProblem(), book + "-wal"));
    EXPECT_EQ(readBy(victim, Access::read), "uAnne=5551234");
}

TEST_F(ForgedFiles, AFifoOrALinkInAJournalsPlaceIsNotWaitedFor)
{
    for (const char* ending : {"-journal", "-wal"}) {
        const std::string path = book + ending;
        ASSERT_EQ(asUser(attacker, [&] { return mkfifo(path.c_str(), 0666); }), 0);
        EXPECT_EQ(readBy(victim, Access::readWrite), "uAnne=5551234");
        EXPECT_TRUE(mentions(savingProblem(), path));
        std::filesystem::remove(path);
        // A file of the victim's own, behind the attacker's link.
        ASSERT_EQ(asUser(attacker, [&] { return symlink(book.c_str(), path.c_str()); }), 0);
        EXPECT_EQ(readBy(victim, Access::readWrite), "uAnne=5551234");
        EXPECT_TRUE(mentions(savingProblem(), path));
        std::filesystem::remove(path);
    }
    EXPECT_EQ(savingProblem(), "");
}

TEST_F(ForgedFiles, AJournalOfTheOwnersOrOfRootCounts)
{
    // A writer that died in the middle of saving, as the victim and as root.
    for (const uid_t writer : {victim, uid_t{0}}) {
        EXPECT_EQ(asUser(writer, [&]() -> int { dieWhileSaving(book, "UPDATE record SET data = x'41'"); }),
                  128 + SIGKILL);
        ASSERT_TRUE(std::filesystem::exists(book + "-journal"));
        const std::string others = readBy(attacker, Access::read);
        EXPECT_TRUE(mentions(others, "have its owner open it once")) << others;
        EXPECT_EQ(readBy(victim, Access::read), "uAnne=5551234");
    }
}

TEST_F(ForgedFiles, OnlyTheOwnerChangesAPhonebookAndEverybodyReadsIt)
{
    chmod(book.c_str(), 0666);
    const std::string line = readBy(attacker, Access::readWrite);
    EXPECT_TRUE(mentions(line,
                         "it belongs to 61001, who alone may change it; read it as a shared phonebook or "
                         "choose another file"))
        << line;
    EXPECT_EQ(readBy(attacker, Access::read), "uAnne=5551234");
}

TEST_F(ForgedFiles, ALinkIsNoPhonebookOfOnesOwn)
{
    const std::string own = folder / "open/own.xdb";
    ASSERT_EQ(asUser(attacker, [&] { return symlink(book.c_str(), own.c_str()); }), 0);
    book = own;
    EXPECT_TRUE(mentions(readBy(victim, Access::readWrite), "cannot be opened: it is a link; "));
    EXPECT_EQ(readBy(victim, Access::read), "uAnne=5551234");
}

/// An attacker who owns the folder of the victim's phonebook, and swaps it for something else and back as
/// fast as he can.
class SwappedFiles : public ForgedFiles {
protected:
    /// Opens the phonebook as the victim until it was opened and refused often enough.
    void expectNothingElseIsOpened(const std::string& other, Access access)
    {
        giveTo(folder / "open", attacker);
        std::filesystem::permissions(folder / "open", std::filesystem::perms::all);
        std::atomic<bool> begins{false};
        std::atomic<bool> ends{false};
        std::thread swapping([&] {
            begins = true;
            begins.notify_one();
            while (!ends)
                renameat2(AT_FDCWD, other.c_str(), AT_FDCWD, book.c_str(), RENAME_EXCHANGE);
        });
        // A process that is made while a thread begins may take over a lock of the sanitizer's for good.
        begins.wait(false);
        EXPECT_EQ(
            asUser(victim,
                   [&] {
                       constexpr int often = 20;
                       int opened = 0;
                       int refused = 0;
                       const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(20);
                       while (opened < often || refused < often) {
                           std::string content;
                           const std::string line = problem([&] {
                               const RecordStore store(book, access);
                               for (const auto& record : store.records())
                                   content += record.key + "=" + record.data;
                           });
                           ++(line.empty() ? opened : refused);
                           if (line.empty() && content != "uAnne=5551234")
                               return 1;
                           if (!line.empty() && !mentions(line, "it is a ") && !mentions(line, "try again"))
                               return 2;
                           if (std::chrono::steady_clock::now() > deadline)
                               return 3;
                       }
                       return 0;
                   }),
            0);
        ends = true;
        swapping.join();
    }
};

TEST_F(SwappedFiles, AFifoIsNotWaitedFor)
{
    ASSERT_EQ(mkfifo((folder / "open/fifo").c_str(), 0666), 0);
    expectNothingElseIsOpened(folder / "open/fifo", Access::read);
}

TEST_F(SwappedFiles, WhatALinkLeadsToIsNotTakenForOnesOwn)
{
    const std::string forged = folder / "open/forged.xdb";
    ASSERT_EQ(asUser(attacker,
                     [&] {
                         RecordStore::create(forged, RecordStore::Readers::everybody);
                         RecordStore store(forged, Access::readWrite);
                         store.save({"uAnne", "999"});
                         store.commit();
                         return chmod(forged.c_str(), 0666);
                     }),
              0);
    ASSERT_EQ(symlink(forged.c_str(), (folder / "open/link").c_str()), 0);
    expectNothingElseIsOpened(folder / "open/link", Access::readWrite);
}

TEST_F(RecordStoreTest, APhonebookIsMadeForItsOwnerAloneOrForAll)
{
    const auto mode = [](const std::string& path) {
        struct stat status {};
        stat(path.c_str(), &status);
        return status.st_mode & 07777;
    };
    const auto mask = umask(0);
    RecordStore::create(folder / "own.xdb");
    RecordStore::create(folder / "shared.xdb", RecordStore::Readers::everybody);
    umask(mask);
    EXPECT_EQ(mode(folder / "own.xdb"), 0600U);
    EXPECT_EQ(mode(folder / "shared.xdb"), 0644U);
    RecordStore(folder / "shared.xdb", Access::readWrite).makePrivate();
    EXPECT_EQ(mode(folder / "shared.xdb"), 0600U);
}

TEST_F(RecordStoreTest, ClosingAPhonebookToOthersDoesNotLoseTheLocksOfThisProcess)
{
    std::filesystem::permissions(book, std::filesystem::perms(0644));
    RecordStore writer(book, Access::readWrite);
    writer.save({"uAnne", "1"});
    writer.makePrivate();
    EXPECT_EQ(inProcess([&] {
                  quelm::setDatabasePatience(std::chrono::milliseconds(50));
                  const std::string line = problem([&] { saveTo(book, "uBernard", "1"); });
                  return mentions(line, "another program is saving to it") ? 0 : 1;
              }),
              0);
}

TEST_F(RecordStoreTest, TwoThatMakeTheSamePhonebookGetTheOneThatIsMadeFirst)
{
    const std::string late = folder / "late.xdb";
    EXPECT_TRUE(
        RecordStore::createUnlessThere(late, RecordStore::Readers::owner, {{"uAnne", "1"}, {"gA", "2"}}));
    EXPECT_FALSE(RecordStore::createUnlessThere(late, RecordStore::Readers::owner));
    EXPECT_EQ(listed(RecordStore(late, Access::read)), (Names{"uAnne=1", "gA=2"}));
}
