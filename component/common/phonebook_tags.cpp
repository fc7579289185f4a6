// The field tags of phonebook records.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "common/phonebook_tags.h"

const char* PBEntryTags = ",usg,nam,cmp,fxn,von,fxm,eml,blc,dtm,gen,";
