// The field tags of phonebook records.
#include "common/phonebook_tags.h"

const char* PBEntryTags = ",usg,nam,cmp,fxn,von,fxm,eml,blc,dtm,gen,";
