// What is exported and imported again is the same, in every format.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/phonebook/actions.h"
#include "driver/phonebook/entry_check.h"
#include "driver/phonebook/import.h"
#include "tests/driver/phonebook/phonebook_folder.h"

#include <random>

namespace quelm {
namespace {

class RoundTripTest : public test::PhonebookTest, public testing::WithParamInterface<FileFormat> {
protected:
    std::vector<Record> records(const PhonebookPlace& from) const
    {
        const RecordStore store(from.path, RecordStore::Access::read);
        return {store.records().begin(), store.records().end()};
    }

    /// Exports the phonebook and imports it into a new one, which must have the same records.
    void expectSameAfterRoundTrip()
    {
        exportFile(place, folder / "out", GetParam());
        const PhonebookPlace other{folder / "other.xdb"};
        std::filesystem::remove(other.path);
        const auto report = importFile(other, folder / "out", {});
        for (const auto& line : refusalLines(report))
            ADD_FAILURE() << line;
        const auto before = records(place);
        const auto after = records(other);
        ASSERT_EQ(after.size(), before.size());
        for (std::size_t i = 0; i < before.size(); ++i) {
            EXPECT_EQ(after[i].key, before[i].key);
            EXPECT_EQ(after[i].data, before[i].data);
        }
    }
};

INSTANTIATE_TEST_SUITE_P(EveryFormat, RoundTripTest,
                         testing::Values(FileFormat::csv, FileFormat::vcard3, FileFormat::vcard4,
                                         FileFormat::ldif));

TEST_P(RoundTripTest, AwkwardTextsStay)
{
    fill({{"Zoë O'Neil-Smith Jr.", "+1 (555) 12/3", "Acme, \"East\"; Sales \\ n \\n", "*1,2#", "a;b,\"c\"@x"},
          {"田中", "1", "=1+2", "", "é@x"},
          {"Nom\xc3\xa9", "2", "a  b", "3", ""},
          {"begin-vcard", "4", "END:VCARD BEGIN:VCARD", "", ":"}},
         {{"Team", {"田中", "Zoë O'Neil-Smith Jr."}}, {"田中", {"gone", "田中"}}});
    expectSameAfterRoundTrip();
}

TEST_P(RoundTripTest, WorkAndHomeEntriesStayApart)
{
    fill(
        {{"Ann", "1", "Acme", "", "w@x"},
         {"Ann - home", "2", "Acme", "3", ""},
         {"Bob - home", "4", "", "5", "b@x"},
         {"Cid", "6", "One", "", ""},
         {"Cid - home", "6", "Two", "7", ""},
         {"Dee - home - home", "8", "", "", ""},
         {"Eve - 2", "9", "", "", ""},
         {"Eve - home 2", "10", "", "", "e@x"},
         {"home", "11", "", "", ""}},
        {{"Homes", {"Ann - home", "Bob - home"}}, {"Work", {"Ann", "Cid - home"}}, {"Team - home", {"Ann"}}});
    expectSameAfterRoundTrip();
}

TEST_P(RoundTripTest, ManyRandomEntriesStay)
{
    const unsigned seed = 20240229;
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    const std::vector<std::string> pieces{"a", "Z",       "ë", "田", " ", "-", ".",
                                          "'", " - home", "u", ".e", "0", "’"};
    const std::vector<std::string> marks{",", ";", "\"", "\\", "\n", ":", "=", "%", "\\n", "&#10;"};
    const auto text = [&](const std::vector<std::string>& from, std::size_t most) {
        std::string made;
        for (std::size_t i = random() % most; i > 0; --i)
            made += from[random() % from.size()];
        return made;
    };
    auto anything = pieces;
    anything.insert(anything.end(), marks.begin(), marks.end());
    Phonebook phonebook(place, Phonebook::Access::create);
    std::size_t saved = 0;
    while (saved < 300) {
        PhonebookEntry entry{text(pieces, 8), std::to_string(random()), text(anything, 12), "",
                             text(marks, 3)};
        if (random() % 2 == 0)
            entry.phone = std::to_string(random());
        entry = tidied(std::move(entry));
        // Home entries of the same person stand on one card: their order is tested above.
        if (problemWith(entry) || phonebook.hasEntry(entry.name) || entry.name.ends_with(" - home"))
            continue;
        phonebook.save(entry);
        ++saved;
    }
    phonebook.commit();
    expectSameAfterRoundTrip();
}

} // namespace
} // namespace quelm
