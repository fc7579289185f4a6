/* What libintl's sources ask of the system they are compiled for: GNU/Linux with glibc 2.34 or newer. */
/* SPDX-License-Identifier: LGPL-2.1-or-later */
#ifndef _FILE_OFFSET_BITS
#    define _FILE_OFFSET_BITS 64
#endif
#ifndef _GNU_SOURCE
#    define _GNU_SOURCE 1
#endif

#define ENABLE_NLS 1

/* Catalogues are converted with the libiconv that is built beside libintl. */
#define HAVE_ICONV 1
#define ICONV_CONST const

#define HAVE_ALLOCA_H 1
#define HAVE_ARGZ_H 1
#define HAVE_INTTYPES_H 1
#define HAVE_LIMITS_H 1
#define HAVE_STDINT_H_WITH_UINTMAX 1
#define HAVE_SYS_PARAM_H 1
#define HAVE_UNISTD_H 1

#define HAVE_ARGZ_COUNT 1
#define HAVE_ARGZ_NEXT 1
#define HAVE_ARGZ_STRINGIFY 1
#define HAVE_BUILTIN_EXPECT 1
#define HAVE_DECL_FEOF_UNLOCKED 1
#define HAVE_DECL_FGETS_UNLOCKED 1
#define HAVE_DECL_GETC_UNLOCKED 1
#define HAVE_GETCWD 1
#define HAVE_GETEGID 1
#define HAVE_GETEUID 1
#define HAVE_GETGID 1
#define HAVE_GETUID 1
#define HAVE_LANGINFO_CODESET 1
#define HAVE_LC_MESSAGES 1
#define HAVE_MEMPCPY 1
#define HAVE_MMAP 1
#define HAVE_MUNMAP 1
#define HAVE_SETLOCALE 1
#define HAVE_STPCPY 1
#define HAVE_STRCASECMP 1
#define HAVE_STRDUP 1
#define HAVE_STRTOUL 1
#define HAVE_TSEARCH 1
#define HAVE_USELOCALE 1
#define HAVE_WORKING_O_NOFOLLOW 1

/* Locks come from the C library itself, so that no thread library is needed beside it. */
#define USE_POSIX_THREADS 1
#define HAVE_PTHREAD_MUTEX_RECURSIVE 1
#define HAVE_PTHREAD_RWLOCK 1

/* libintl names its locks as the C library does, of which its sources are a part as well. */
#define __libc_lock_define gl_lock_define
#define __libc_lock_define_initialized gl_lock_define_initialized
#define __libc_lock_init gl_lock_init
#define __libc_lock_lock gl_lock_lock
#define __libc_lock_unlock gl_lock_unlock
#define __libc_lock_define_initialized_recursive gl_recursive_lock_define_initialized
#define __libc_lock_lock_recursive gl_recursive_lock_lock
#define __libc_lock_unlock_recursive gl_recursive_lock_unlock

/* The plural form expression of a catalogue may divide by zero, which these processors answer
   with a signal that libintl then expects. */
#if defined __i386__ || defined __x86_64__
#    define INTDIV0_RAISES_SIGFPE 1
#else
#    define INTDIV0_RAISES_SIGFPE 0
#endif

/* Only the names without prefix leave the library (see component/frame/exports.map). */
#define HAVE_VISIBILITY 1
#define LIBINTL_DLL_EXPORTED

#define _GL_ATTRIBUTE_PURE __attribute__((__pure__))
