// A widget that wants a place in a container: what its definition asks for and what it needs.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_DESKTOP_DIALOGS_PLACEMENT_ITEM_H
#define DRIVER_DESKTOP_DIALOGS_PLACEMENT_ITEM_H

namespace quelm {

/// A place in a container; pixels from its top left corner.
struct PlacedRectangle {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
};

struct PlacedSize {
    int width = 0;
    int height = 0;
};

/// One visible widget of a container.
struct PlacementItem {
    PlacedRectangle asked; ///< by the definition; width or height 0: whatever the widget needs
    PlacedSize needed;     ///< the least with which nothing of it is cut off
    bool widens = false;   ///< takes width that is left over: a list, a text field
    bool heightens = false;
    bool isButton = false; ///< keeps to its end of the row when the container is wider than asked
};

} // namespace quelm

#endif
