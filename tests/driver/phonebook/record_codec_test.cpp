// Records, byte for byte, and what is made of odd ones.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/phonebook/record_codec.h"

#include "tests/driver/phonebook/phonebook_folder.h"

namespace quelm {
namespace {

RecordContent decoded(const std::string& data, const std::string& key = "uAnne")
{
    return decodeRecord({key, data});
}

const std::string anneData = ".susg\r\n0\r\n.eusg\r\n.snam\r\nAnne\r\n.enam\r\n.sfxn\r\n5551234\r\n.efxn\r\n";
const PhonebookEntry anne{"Anne", "5551234", "", "", ""};

TEST(RecordCodec, WritesAnEntryAsTheComponentDoes)
{
    const auto record = encodeRecord(anne);
    EXPECT_EQ(record.key, "uAnne");
    EXPECT_EQ(record.data, anneData);
    EXPECT_EQ(encodeRecord(PhonebookEntry{"A", "1", "o", "2", "m"}).data,
              ".susg\r\n0\r\n.eusg\r\n.snam\r\nA\r\n.enam\r\n.sfxn\r\n1\r\n.efxn\r\n"
              ".scmp\r\no\r\n.ecmp\r\n.svon\r\n2\r\n.evon\r\n.seml\r\nm\r\n.eeml\r\n");
}

TEST(RecordCodec, WritesAGroupAsTheComponentDoes)
{
    const auto record = encodeRecord(PhonebookGroup{"Team", {"Anne", "Bernard"}});
    EXPECT_EQ(record.key, "gTeam");
    EXPECT_EQ(record.data, ".sgen\r\n,uAnne,uBernard\r\n.egen\r\n");
}

TEST(RecordCodec, ReadsWhatItWrites)
{
    const PhonebookEntry entry{"Zoë", "+1", "a, \"b\"\nc", "2", "m"};
    EXPECT_EQ(decodeRecord(encodeRecord(entry)), RecordContent(entry));
    const PhonebookGroup group{"Team", {"Anne", "Ursula u", "Bernard"}};
    EXPECT_EQ(decodeRecord(encodeRecord(group)), RecordContent(group));
}

TEST(RecordCodec, TakesFieldsInAnyOrderAndPassesOverOthers)
{
    EXPECT_EQ(
        decoded("x.sxyz\r\nfoo\r\n.exyz\r\n.sfxn\r\n5551234\r\n.efxn\r\n.sdtm\r\n1\r\n.edtm\r\n.sfxm\r\n7\r\n"
                ".efxm\r\n.sblc\r\nb\r\n.eblc\r\n.snam\r\n  Anne \t\r\n.enam\r\n.susg\r\n1\r\n.eusg\r\n"),
        RecordContent(anne));
}

TEST(RecordCodec, TheLaterOfTwoFieldsCounts)
{
    EXPECT_EQ(decoded(".snam\r\nBob\r\n.enam\r\n" + anneData), RecordContent(anne));
    EXPECT_EQ(decoded(".sgen\r\n,uBob\r\n.egen\r\n" + anneData), RecordContent(anne));
    EXPECT_EQ(decoded(anneData + ".sgen\r\n,uBob\r\n.egen\r\n", "gTeam"),
              RecordContent(PhonebookGroup{"Team", {"Bob"}}));
}

TEST(RecordCodec, ReadsMembersAsTheComponentDoesMixedListsIncluded)
{
    const auto members = [](const std::string& list) {
        return decoded(".sgen\r\n" + list + "\r\n.egen\r\n", "gT");
    };
    const auto group = [](std::vector<std::string> names) {
        return RecordContent(PhonebookGroup{"T", std::move(names)});
    };
    EXPECT_EQ(members(",>A,>B,"), group({"A", "B"}));
    EXPECT_EQ(members(">A,>B"), group({"A", "B"}));
    EXPECT_EQ(members("uA,>B"), group({"B"}));
    EXPECT_EQ(members(",uAnn u,uB"), group({"Ann u", "B"}));
    EXPECT_EQ(members("nothing"), group({}));
}

TEST(RecordCodec, TellsWhyARecordCannotBeRead)
{
    EXPECT_EQ(decoded(".snam\r\nAnne\r\n"),
              RecordContent(UnreadableRecord{"its field \"name\" has no end", true}));
    EXPECT_EQ(decoded(".snam\r\n\r\n.enam\r\n"),
              RecordContent(UnreadableRecord{"its field \"name\" is blank", true}));
    EXPECT_EQ(decoded(".sgen\r\n\r\n.egen\r\n"),
              RecordContent(UnreadableRecord{"its field \"member\" is blank", true}));
    const RecordContent neither = UnreadableRecord{"it is neither an entry nor a group"};
    EXPECT_EQ(decoded(""), neither);
    EXPECT_EQ(decoded("anything"), neither);
    EXPECT_EQ(decoded(".snam\r\nAnne\r\n.enam\r\n"), neither);
}

TEST(RecordCodec, SurvivesTextsThatEndAnywhere)
{
    const auto whole = anneData + ".sgen\r\n,uBob\r\n.egen\r\n.s.e.s.s.e.e.sab.eab";
    for (std::size_t size = 0; size < whole.size(); ++size)
        for (std::size_t from = 0; from <= size; ++from)
            decoded(whole.substr(from, size - from));
    EXPECT_EQ(decoded(anneData, ""), RecordContent(anne));
    EXPECT_EQ(decoded(".sgen\r\n,uBob\r\n.egen\r\n", ""), RecordContent(PhonebookGroup{"", {"Bob"}}));
}

} // namespace
} // namespace quelm
