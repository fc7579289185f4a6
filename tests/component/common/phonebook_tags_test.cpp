// The field tags of phonebook records, which hosts read, too.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "common/phonebook_tags.h"

#include <gtest/gtest.h>

TEST(PhonebookTagsTest, NamesTheTagsInTheirOrder)
{
    EXPECT_STREQ(PBEntryTags, ",usg,nam,cmp,fxn,von,fxm,eml,blc,dtm,gen,");
}
