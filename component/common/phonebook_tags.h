// The field tags of phonebook records, an exported object of the component.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef COMMON_PHONEBOOK_TAGS_H
#define COMMON_PHONEBOOK_TAGS_H

#pragma GCC visibility push(default)
extern "C" {
/// The tags as a token list, in the order by which records are read. Points at constant, NUL-terminated text.
extern const char* PBEntryTags;
}
#pragma GCC visibility pop

#endif
