// The dialog definition: every window of the component, as the text that the host builds them from.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef FRAME_DIALOG_DEFINITION_H
#define FRAME_DIALOG_DEFINITION_H

#include <cstddef>

/// Size of the text in bytes, terminator not counted. Hosts rely on it.
inline constexpr std::size_t dialogDefinitionSize = 29520;

/// One XML document on one line, root element `XmlGuiDefinition`, ASCII, NUL-terminated. It holds no
/// comments and no declaration; elements are separated by blanks only, and a ">" may stand unescaped in
/// an attribute value. Constant for the life of the library. The build makes it from dialogs.xml.
extern const char dialogDefinitionText[dialogDefinitionSize + 1];

#endif
