// The phonebook that a user had at the former place.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/store/former_phonebook.h"

#include "tests/driver/store/record_store_fixture.h"
#include "tests/support/two_users.h"

#include <sys/resource.h>
#include <sys/stat.h>

namespace {

using quelm::takeOverPhonebook;

class FormerPhonebook : public RecordStoreTest {
protected:
    FormerPhonebook()
    {
        save("uZoe", "1");
        save("gTeam", "2");
        save("uAnne", "3");
        std::filesystem::create_directory(folder / "own");
    }

    std::string present = folder / "own/anne.xdb";
};

TEST_F(FormerPhonebook, IsCopiedWholeForTheUserAloneAndStays)
{
    const std::string before = contentOf(book);
    takeOverPhonebook(book, present);
    EXPECT_EQ(listed(RecordStore(present, Access::readWrite)), (Names{"uZoe=1", "gTeam=2", "uAnne=3"}));
    EXPECT_EQ(std::filesystem::status(present).permissions(), std::filesystem::perms(0600));
    EXPECT_EQ(contentOf(book), before);
}

TEST_F(FormerPhonebook, IsTakenOverOnceAlsoWhenTheUserRemovesTheNewOne)
{
    takeOverPhonebook(book, present);
    std::filesystem::remove(present);
    takeOverPhonebook(book, present);
    EXPECT_FALSE(std::filesystem::exists(present));
}

TEST_F(FormerPhonebook, ReplacesNoPhonebookThatIsThere)
{
    RecordStore::create(present);
    takeOverPhonebook(book, present);
    EXPECT_EQ(listed(RecordStore(present, Access::read)), Names{});
    std::filesystem::remove(present);
    takeOverPhonebook(book, present);
    EXPECT_FALSE(std::filesystem::exists(present));
}

TEST_F(FormerPhonebook, ThatIsNotThereIsLookedForAgain)
{
    takeOverPhonebook(folder / "none.xdb", present);
    takeOverPhonebook("", present);
    EXPECT_TRUE(std::filesystem::is_empty(folder / "own"));
    takeOverPhonebook(book, present);
    EXPECT_TRUE(std::filesystem::exists(present));
}

TEST_F(FormerPhonebook, ThatIsDamagedEndsWithOneSentenceAndIsTriedAgain)
{
    const std::string whole = contentOf(book);
    writeFile(book, whole.substr(0, whole.size() - 1));
    const std::string line = problem([&] { takeOverPhonebook(book, present); });
    EXPECT_EQ(
        line,
        "your former phonebook cannot be taken over: the phonebook \"" + book +
            "\" cannot be opened: it is damaged; restore it from a copy or choose another file; to begin "
            "with an empty one, move " +
            book + " away");
    EXPECT_TRUE(std::filesystem::is_empty(folder / "own"));
    writeFile(book, whole);
    takeOverPhonebook(book, present);
    EXPECT_TRUE(std::filesystem::exists(present));
}

TEST_F(FormerPhonebook, OnAFullDiskIsCopiedNotAtAll)
{
    EXPECT_EQ(inProcess([&] {
                  const rlimit none{4096, 4096};
                  setrlimit(RLIMIT_FSIZE, &none);
                  return mentions(problem([&] { takeOverPhonebook(book, present); }), "cannot be taken over")
                             ? 0
                             : 1;
              }),
              0);
    EXPECT_TRUE(std::filesystem::is_empty(folder / "own"));
}

TEST_F(FormerPhonebook, ThatIsALinkAFifoOrAFolderIsIgnored)
{
    const std::string odd = folder / "odd.xdb";
    std::filesystem::create_symlink(book, odd);
    takeOverPhonebook(odd, present);
    std::filesystem::remove(odd);
    ASSERT_EQ(mkfifo(odd.c_str(), 0666), 0);
    takeOverPhonebook(odd, present);
    std::filesystem::remove(odd);
    std::filesystem::create_directory(odd);
    takeOverPhonebook(odd, present);
    std::filesystem::create_hard_link(book, folder / "second.xdb");
    takeOverPhonebook(folder / "second.xdb", present);
    EXPECT_TRUE(std::filesystem::is_empty(folder / "own"));
}

class ForgedFormerPhonebook : public TwoUsers {};

TEST_F(ForgedFormerPhonebook, OfAnotherUserIsIgnored)
{
    const std::string book = openFolder(folder / "open") + "/victim.xdb";
    ASSERT_EQ(asUser(attacker,
                     [&] {
                         RecordStore::create(book, RecordStore::Readers::everybody);
                         return 0;
                     }),
              0);
    std::filesystem::create_directory(folder / "own");
    giveTo(folder / "own", victim);
    EXPECT_EQ(asUser(victim,
                     [&] {
                         takeOverPhonebook(book, folder / "own/victim.xdb");
                         return std::filesystem::is_empty(folder / "own") ? 0 : 1;
                     }),
              0);
}

} // namespace
