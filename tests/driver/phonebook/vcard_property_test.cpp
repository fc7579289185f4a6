// Lines of cards as phones write them.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/phonebook/vcard_property.h"

#include <gtest/gtest.h>

namespace quelm {
namespace {

TEST(VcardProperty, QuotedPrintableBecomesPlainText)
{
    EXPECT_EQ(plainProperty("FN;CHARSET=ISO-8859-1;ENCODING=QUOTED-PRINTABLE:Zo=EB"), "FN:Zoë");
    EXPECT_EQ(plainProperty("n;encoding=quoted-printable;charset=shift_jis:=93=63;=92=86"), "n:田;中");
    EXPECT_EQ(plainProperty("FN;QUOTED-PRINTABLE;X=1:Zo=C3=AB=3B=0D=0A=zz="), "FN;X=1:Zoë\\;\\n=zz=");
    EXPECT_EQ(plainProperty("FN;QUOTED-PRINTABLE:Zo=EB"), "FN:Zoë");
    EXPECT_EQ(plainProperty("FN;CHARSET=KLINGON;QUOTED-PRINTABLE:Zo=EB"), "FN:Zoë");
    EXPECT_EQ(plainProperty("FN;CHARSET=UTF-8;QUOTED-PRINTABLE:Zo=EB"), "FN:Zoë");
}

TEST(VcardProperty, OtherValuesLoseTheirCharsetAlone)
{
    EXPECT_EQ(plainProperty("TEL;WORK;CHARSET=ISO-8859-1;ENCODING=8BIT;TYPE=\"a;b:c\":1"),
              "TEL;WORK;TYPE=\"a;b:c\":1");
    EXPECT_EQ(plainProperty("FN;ENCODING=b;CHARSET=UTF-8:Wm8="), "FN;ENCODING=b;CHARSET=UTF-8:Wm8=");
    EXPECT_EQ(plainProperty("nonsense"), "nonsense");
}

TEST(VcardProperty, TheFirstCharsetThatIsNoUtf8Counts)
{
    EXPECT_EQ(declaredCharset("BEGIN:VCARD\nFN;CHARSET=UTF-8:a\nN;charset=Shift_JIS:b\n"), "Shift_JIS");
    EXPECT_EQ(declaredCharset("N;CHARSET=KLINGON:b\nNOTE:CHARSET=ISO-8859-1\n"), "");
}

} // namespace
} // namespace quelm
