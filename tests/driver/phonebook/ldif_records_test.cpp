// Records of LDIF, and distinguished names.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/phonebook/ldif_records.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace quelm {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::SizeIs;

std::string problem(const std::string& lines)
{
    const auto records = readLdifRecords("dn: cn=A\n" + lines);
    return records.size() == 1 ? records[0].problem : std::to_string(records.size()) + " records";
}

TEST(LdifRecords, LinesAreUnfoldedDecodedAndCounted)
{
    const auto records =
        readLdifRecords("# made\n  up\nversion: 1\n\ndn: cn=A\n  B\r\ncn;lang-en: A\nCN:: Wm/Dqw==\n"
                        "#no\nmail: \nmail:x@y\njpegPhoto:: !\n\n\n dn: x\ndn: cn=C\n");
    ASSERT_THAT(records, SizeIs(2));
    EXPECT_EQ(records[0].line, 5U);
    EXPECT_EQ(records[0].dn, "cn=A B");
    EXPECT_THAT(records[0].texts("cn"), ElementsAre("A", "Zoë"));
    EXPECT_EQ(records[0].text("mail"), "x@y");
    EXPECT_EQ(records[0].problem, "");
}

TEST(LdifRecords, SayWhatIsWrong)
{
    EXPECT_EQ(problem("cn A\n"), "its line 2 has no \":\" behind an attribute's name");
    EXPECT_EQ(problem("cn:: Zo\n"), "its line 2 is not base64, which two colons announce");
    EXPECT_EQ(problem("cn:: /w==\n"), "its line 2 is not UTF-8; save the records as UTF-8 text");
    EXPECT_EQ(problem("mail:< file:///etc/passwd\n"),
              "its line 2 has its value in another file; write it there itself");
    EXPECT_EQ(problem("photo:< file:///etc/passwd\n"), "");
    EXPECT_EQ(problem("changetype: add\n"), "");
    EXPECT_THAT(problem("changetype: delete\n"), HasSubstr("changes what is there (delete)"));
    EXPECT_EQ(problem("cn: " + std::string(5000, 'x') + "\n"),
              "its line 2 is longer than a name, number or address; mend the record");
    EXPECT_EQ(readLdifRecords("cn: A\n").at(0).problem,
              "has no distinguished name; a record begins with dn:");
    std::string many;
    for (int i = 0; i < 30000; ++i)
        many += "member: cn=x\n";
    EXPECT_EQ(problem(many), "has more than 20000 attributes; mend the record");
}

TEST(LdifRecords, ManyFoldedLinesAreReadInOneGo)
{
    std::string lines = "description: a\n";
    for (int i = 0; i < 300000; ++i)
        lines += " x\n";
    EXPECT_EQ(problem(lines), "");
}

TEST(LdifRecords, DistinguishedNamesOfTheSameMeaningAreTheSame)
{
    EXPECT_EQ(plainDn("CN=Ann Lee, OU = People"), plainDn("cn=ann lee,ou=people"));
    EXPECT_EQ(plainDn("cn=Zo\\C3\\AB"), plainDn("cn=Zoë"));
    EXPECT_NE(plainDn("cn=a\\,ou=b"), plainDn("cn=a,ou=b"));
    EXPECT_EQ(firstValueOfDn("cn=Lee\\, Ann = x,ou=people"), "Lee, Ann = x");
    EXPECT_EQ(firstValueOfDn("nonsense"), "");
    EXPECT_EQ(firstValueOfDn("cn=a\\"), "a\\");
}

} // namespace
} // namespace quelm
