// The cells of list rows, as both kinds of host read them.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef COMMON_LIST_CELLS_H
#define COMMON_LIST_CELLS_H

#include "host/calls.h"

#include <string>

/// A cell with this text: the text's own characters, or `pEmptyString` for an empty one. Hosts tell an empty
/// cell by that very pointer, and some take a null one for the end of the row.
[[nodiscard]] inline const char* listCell(const std::string& text)
{
    return text.empty() ? pEmptyString : text.c_str();
}

#endif
