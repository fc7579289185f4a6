// Opening, making and changing a phonebook.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/phonebook/phonebook.h"

#include "base/error.h"
#include "tests/driver/phonebook/phonebook_folder.h"

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>

namespace quelm {
namespace {

using test::failureLine;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

const PhonebookEntry ann{"Ann", "1", "", "", ""};
const PhonebookEntry bob{"Bob", "2", "", "", ""};
const PhonebookGroup team{"Team", {"Ann"}};

class PhonebookFileTest : public test::PhonebookTest {};

TEST_F(PhonebookFileTest, KeepsEntriesAndGroupsInOrder)
{
    fill({bob, ann}, {team});
    EXPECT_THAT(contents(), ElementsAre(RecordContent(bob), RecordContent(ann), RecordContent(team)));
}

TEST_F(PhonebookFileTest, SavingAgainReplacesInPlaceAndSaysSo)
{
    fill({ann, bob});
    Phonebook phonebook(place, Phonebook::Access::write);
    const PhonebookEntry moved{"Ann", "9", "", "", ""};
    EXPECT_TRUE(phonebook.save(moved));
    EXPECT_FALSE(phonebook.save(PhonebookGroup{"Ann", {"Bob"}}));
    phonebook.commit();
    EXPECT_THAT(contents(), ElementsAre(RecordContent(moved), RecordContent(bob),
                                        RecordContent(PhonebookGroup{"Ann", {"Bob"}})));
}

TEST_F(PhonebookFileTest, TellsEntriesFromGroupsOfTheSameName)
{
    fill({ann}, {team});
    const Phonebook phonebook(place, Phonebook::Access::read);
    EXPECT_TRUE(phonebook.hasEntry("Ann"));
    EXPECT_FALSE(phonebook.hasGroup("Ann"));
    EXPECT_TRUE(phonebook.hasGroup("Team"));
    EXPECT_FALSE(phonebook.hasEntry("Team"));
}

TEST_F(PhonebookFileTest, WithoutACommitNothingChanges)
{
    fill({ann});
    const auto before = contentOf(place.path);
    {
        Phonebook phonebook(place, Phonebook::Access::write);
        phonebook.save(bob);
        EXPECT_TRUE(phonebook.remove("uAnn"));
        EXPECT_FALSE(phonebook.remove("uAnn"));
    }
    EXPECT_EQ(contentOf(place.path), before);
}

TEST_F(PhonebookFileTest, OnlyCreateMakesAFile)
{
    for (const auto access : {Phonebook::Access::read, Phonebook::Access::write})
        EXPECT_THAT(failureLine([&] { const Phonebook phonebook(place, access); }),
                    HasSubstr("no such file"));
    EXPECT_THAT(folder.names(), IsEmpty());
    fill({});
    EXPECT_THAT(contents(), IsEmpty());
}

TEST_F(PhonebookFileTest, APersonalPhonebookThatIsNotThereIsEmptyAndStaysAway)
{
    place = personalPhonebook(folder.path().string(), "ann");
    EXPECT_EQ(place.path, folder / "db/phonebook/user/ann.xdb");
    Phonebook phonebook(place, Phonebook::Access::write);
    EXPECT_THAT(phonebook.items(), IsEmpty());
    EXPECT_FALSE(phonebook.hasEntry("Ann"));
    EXPECT_FALSE(phonebook.remove("uAnn"));
    phonebook.commit();
    EXPECT_THAT(folder.names(), IsEmpty());
}

TEST_F(PhonebookFileTest, APersonalPhonebookIsMadeWithItsFolders)
{
    place = personalPhonebook(folder.path().string(), "ann");
    const auto mask = umask(0);
    fill({ann});
    umask(mask);
    EXPECT_THAT(contents(), ElementsAre(RecordContent(ann)));
    const auto permissions = std::filesystem::status(folder / "db/phonebook/user").permissions();
    EXPECT_EQ(permissions, std::filesystem::perms::all);
}

TEST_F(PhonebookFileTest, TwoThatAddToAPhonebookThatIsNotThereBothAreInIt)
{
    constexpr int rounds = 8;
    for (int round = 0; round < rounds; ++round) {
        for (const bool personal : {false, true}) {
            const auto name = std::to_string(round) + (personal ? "p" : "s");
            place = personal ? personalPhonebook(folder / name, "ann")
                             : PhonebookPlace{folder / (name + ".xdb"), false};
            if (personal)
                std::filesystem::create_directory(folder / name);
            // Both begin when the pipe is closed.
            std::array<int, 2> gate{};
            ASSERT_EQ(pipe(gate.data()), 0);
            std::vector<pid_t> children;
            for (const auto& entry : {ann, bob}) {
                const pid_t child = fork();
                if (child == 0) {
                    close(gate[1]);
                    char nothing = 0;
                    [[maybe_unused]] const auto end = read(gate[0], &nothing, 1);
                    try {
                        addEntry(place, entry, false);
                    } catch (const Error&) {
                        _exit(1);
                    }
                    _exit(0);
                }
                children.push_back(child);
            }
            close(gate[0]);
            close(gate[1]);
            for (const pid_t child : children) {
                int status = -1;
                waitpid(child, &status, 0);
                EXPECT_EQ(status, 0);
            }
            EXPECT_THAT(contents(), testing::UnorderedElementsAre(RecordContent(ann), RecordContent(bob)));
        }
    }
}

TEST_F(PhonebookFileTest, APersonalPhonebookIsForItsUserAloneAndAnotherOneForAll)
{
    const auto mode = [this] { return std::filesystem::status(place.path).permissions(); };
    fill({ann});
    EXPECT_EQ(mode(), std::filesystem::perms(0644));
    place = personalPhonebook(folder.path().string(), "ann");
    fill({ann});
    EXPECT_EQ(mode(), std::filesystem::perms(0600));
    std::filesystem::permissions(place.path, std::filesystem::perms(0644));
    EXPECT_THAT(contents(), ElementsAre(RecordContent(ann)));
    EXPECT_EQ(mode(), std::filesystem::perms(0600)) << "closed by whoever only reads it, too";
}

TEST_F(PhonebookFileTest, APersonalPhonebookIsNoLinkAndNobodyElses)
{
    fill({ann});
    const auto shared = place;
    place = personalPhonebook(folder.path().string(), "ann");
    std::filesystem::create_directories(folder / "db/phonebook/user");
    std::filesystem::create_symlink(shared.path, place.path);
    for (const auto access : {Phonebook::Access::read, Phonebook::Access::write, Phonebook::Access::create})
        EXPECT_THAT(failureLine([&] { const Phonebook phonebook(place, access); }),
                    HasSubstr("it is a link"));
}

TEST_F(PhonebookFileTest, AFileThatIsNoPhonebookIsRefusedAndLeftAlone)
{
    writeFile(place.path, "name,number\n");
    EXPECT_THAT(failureLine([&] { fill({ann}); }), HasSubstr("no phonebook"));
    EXPECT_EQ(contentOf(place.path), "name,number\n");
}

} // namespace
} // namespace quelm
