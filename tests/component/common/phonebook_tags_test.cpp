// The field tags of phonebook records, which hosts read, too.
#include "common/phonebook_tags.h"

#include <gtest/gtest.h>

TEST(PhonebookTagsTest, NamesTheTagsInTheirOrder)
{
    EXPECT_STREQ(PBEntryTags, ",usg,nam,cmp,fxn,von,fxm,eml,blc,dtm,gen,");
}
