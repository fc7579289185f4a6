// Cards as they are written.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/phonebook/contacts.h"
#include "tests/driver/phonebook/phonebook_folder.h"

#include <glib.h>

#include <sstream>

namespace quelm {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

/// The lines of a text, whose identifiers, which are made from names, stand as "ID".
std::vector<std::string> lines(const std::string& text)
{
    std::vector<std::string> all;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
        EXPECT_TRUE(line.ends_with('\r'));
        line.pop_back();
        if (const auto id = line.find("urn:uuid:"); id != std::string::npos)
            line = line.substr(0, id) + "ID";
        all.push_back(line);
    }
    return all;
}

const PhonebookEntry ann{"Ann Lee", "1", "Acme, Inc.", "2", "a@b"};
const PhonebookEntry annHome{"Ann Lee - home", "3", "Acme, Inc.", "4", ""};

TEST(WriteVcards, PutsWorkAndHomeOnOneCard)
{
    EXPECT_THAT(lines(writeVcards({ann, annHome}, VcardVersion::v4)),
                ElementsAre("BEGIN:VCARD", "VERSION:4.0", "FN:Ann Lee", "N:Lee;Ann;;;", "UID:ID",
                            "ORG:Acme\\, Inc.", "TEL;TYPE=work,fax:1", "TEL;TYPE=work,voice:2",
                            "EMAIL;TYPE=work:a@b", "TEL;TYPE=home,fax:3", "TEL;TYPE=home,voice:4",
                            "END:VCARD"));
    EXPECT_THAT(lines(writeVcards({annHome, ann}, VcardVersion::v3)).at(1), "VERSION:3.0");
    EXPECT_THAT(lines(writeVcards({annHome, ann}, VcardVersion::v3)).size(), 12U);
}

TEST(WriteVcards, AHomeEntryOfItsOwnHasACardOfItsOwn)
{
    EXPECT_THAT(lines(writeVcards({annHome}, VcardVersion::v3)),
                ElementsAre("BEGIN:VCARD", "VERSION:3.0", "FN:Ann Lee", "N:Lee;Ann;;;", "UID:ID",
                            "ORG:Acme\\, Inc.", "TEL;TYPE=home,fax:3", "TEL;TYPE=home,voice:4", "END:VCARD"));
    auto elsewhere = annHome;
    elsewhere.organization = "Other";
    EXPECT_THAT(lines(writeVcards({ann, elsewhere}, VcardVersion::v3)).size(), 19U);
}

TEST(WriteVcards, AGroupPointsAtItsCardsAndNamesItsMembers)
{
    const std::vector<std::variant<PhonebookEntry, PhonebookGroup>> contents{
        ann, annHome, PhonebookGroup{"Team", {"Ann Lee - home", "Ann Lee", "Gone"}}};
    const auto recent = lines(writeVcards(contents, VcardVersion::v4));
    EXPECT_THAT(std::vector(recent.begin() + 12, recent.end()),
                ElementsAre("BEGIN:VCARD", "VERSION:4.0", "FN:Team", "N:Team;;;;", "UID:ID", "KIND:group",
                            "MEMBER:ID", "X-QUELM-MEMBER:Ann Lee - home", "X-QUELM-MEMBER:Ann Lee",
                            "X-QUELM-MEMBER:Gone", "END:VCARD"));
    const auto old = lines(writeVcards(contents, VcardVersion::v3));
    EXPECT_EQ(old.at(17), "X-ADDRESSBOOKSERVER-KIND:group");
    EXPECT_EQ(old.at(18), "X-ADDRESSBOOKSERVER-MEMBER:ID");
}

TEST(WriteVcards, IdentifiersLastAndDiffer)
{
    const auto id = [](const std::string& name) {
        const auto text = writeVcards({PhonebookEntry{name, "1", "", "", ""}}, VcardVersion::v4);
        return text.substr(text.find("urn:uuid:"), 45);
    };
    EXPECT_EQ(id("Ann"), id("Ann"));
    EXPECT_NE(id("Ann"), id("Bob"));
    EXPECT_THAT(id("Ann"),
                testing::MatchesRegex("urn:uuid:[0-9a-f]+-[0-9a-f]+-5[0-9a-f]+-[89ab][0-9a-f]+-[0-9a-f]+"));
    const auto text = writeVcards({ann, PhonebookGroup{"Team", {"Ann Lee"}}}, VcardVersion::v4);
    EXPECT_THAT(text, HasSubstr("MEMBER:" + text.substr(text.find("urn:uuid:"), 45)));
}

TEST(WriteVcards, LongLinesAreFoldedBetweenCharacters)
{
    std::string organization;
    for (int i = 0; i < 59; ++i)
        organization += "\xc3\xab";
    const auto text = writeVcards({PhonebookEntry{"Ann", "1", organization, "", ""}}, VcardVersion::v3);
    for (const auto& line : lines(text)) {
        EXPECT_LE(line.size(), 75U);
        EXPECT_TRUE(g_utf8_validate(line.data(), static_cast<gssize>(line.size()), nullptr)) << line;
    }
    EXPECT_THAT(text, HasSubstr("\r\n \xc3\xab"));
}

TEST(WriteVcards, NothingMakesNoCards) { EXPECT_EQ(writeVcards({}, VcardVersion::v4), ""); }

} // namespace
} // namespace quelm
