// A number put into a translated sentence, as the C library's sprintf puts it there.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef COMMON_NUMBER_FORMAT_H
#define COMMON_NUMBER_FORMAT_H

#include <string>

/// What `sprintf` makes of `format` with `number` as its one argument: "%d", "%3i", "%1$d" and "%%" are
/// understood, with all flags, widths and precisions. Translations come from outside, so a format that
/// asks for anything but this one integer ("%s", "%d of %d", a single "%"), or for more blanks than a
/// message has room for, is no format: the text is returned as it stands.
[[nodiscard]] std::string withNumber(const std::string& format, int number);

#endif
