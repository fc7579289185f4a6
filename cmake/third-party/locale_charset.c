/* The locale's character set for libiconv, which asks for it when a host names none: "" or "char". */
/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include <langinfo.h>

const char* libiconv_locale_charset(void);

/* Never empty, which libiconv relies on. */
const char* libiconv_locale_charset(void)
{
    const char* name = nl_langinfo(CODESET);
    return name[0] != '\0' ? name : "ASCII";
}
