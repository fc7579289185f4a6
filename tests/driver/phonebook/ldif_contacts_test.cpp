// People and groups in LDIF.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/phonebook/contacts.h"
#include "tests/driver/phonebook/phonebook_folder.h"

namespace quelm {
namespace {

using test::settled;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

using Content = std::variant<PhonebookEntry, PhonebookGroup>;

TEST(Ldif, WritesRecordsThatDirectoriesTake)
{
    EXPECT_EQ(writeLdif({PhonebookEntry{"Zoë Lee", "+1 555", "a, b", "", "z@x"},
                         PhonebookGroup{"Team", {"Zoë Lee", "Gone"}}}),
              "version: 1\n"
              "\ndn:: Y249Wm/DqyBMZWUsb3U9cGVvcGxl\nobjectClass: top\nobjectClass: person\n"
              "objectClass: organizationalPerson\nobjectClass: inetOrgPerson\ncn:: Wm/DqyBMZWU=\nsn: Lee\n"
              "facsimileTelephoneNumber: +1 555\no: a, b\nmail: z@x\n"
              "\ndn: cn=Team,ou=groups\nobjectClass: top\nobjectClass: groupOfNames\ncn: Team\n"
              "member:: Y249Wm/DqyBMZWUsb3U9cGVvcGxl\nmember: cn=Gone,ou=people\n");
}

TEST(Ldif, NamesThatDifferInTheirCapitalsStayApart)
{
    const std::vector<Content> contents{PhonebookEntry{"Ann", "1", "", "", ""},
                                        PhonebookEntry{"ann", "2", "", "", ""},
                                        PhonebookGroup{"Team", {"ann"}}};
    const auto all = settled(readLdif(writeLdif(contents)));
    EXPECT_THAT(all.refused, IsEmpty());
    ASSERT_THAT(all.contacts, SizeIs(3));
    EXPECT_EQ(all.contacts[2].content, contents[2]);
}

TEST(Ldif, AGroupWithAMemberThatIsRefusedIsRefused)
{
    const auto all = settled(
        readLdif("dn: cn=A\ncn: A\ncn:: !\n\ndn: cn=T\nobjectClass: groupOfNames\ncn: T\nmember: cn=A\n"));
    EXPECT_THAT(all.contacts, IsEmpty());
    ASSERT_THAT(all.refused, SizeIs(2));
    EXPECT_EQ(all.refused[1].reason, "its member on line 1 is refused");
}

TEST(Ldif, IsKnownByItsFirstLine)
{
    for (const auto* text : {"dn: cn=a", "\n# x\nVERSION: 1\n", "dn:: Y249"})
        EXPECT_TRUE(isLdifText(text)) << text;
    for (const auto* text : {"", "# only\n", "name,number\n", "cn: a\ndn: b\n"})
        EXPECT_FALSE(isLdifText(text)) << text;
}

} // namespace
} // namespace quelm
