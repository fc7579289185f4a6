/* What a release of libiconv asks of the system it is compiled for: GNU/Linux with glibc 2.34 or newer. */
/* SPDX-License-Identifier: LGPL-2.1-or-later */
#define ENABLE_EXTRA 0
#define HAVE_MBRTOWC 1
#define HAVE_MBSINIT 1
#define HAVE_WCHAR_T 1
#define HAVE_WCRTOMB 1
#define ICONV_CONST const
#define WORDS_LITTLEENDIAN (__BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__)
