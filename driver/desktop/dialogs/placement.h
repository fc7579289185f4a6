// Finds room for widgets whose definition gives positions for one font and one language.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_DESKTOP_DIALOGS_PLACEMENT_H
#define DRIVER_DESKTOP_DIALOGS_PLACEMENT_H

#include "driver/desktop/dialogs/placement_item.h"

#include <vector>

namespace quelm {

struct Placement {
    std::vector<PlacedRectangle> places; ///< one per item, in the items' order
    PlacedSize size;                     ///< what the container needs for them, at least what was asked
};

/// Places `items`, in document order, in a container of the size `asked` (0: as large as they need).
///
/// Every item gets its asked position and size as long as it needs no more. Where two would overlap,
/// the one further right or further down gives way. Whatever begins further right (or down) than that
/// moves along by at least as much, so columns and rows stay aligned; what widens reaches as far as it
/// did before among its neighbours. No two places overlap.
///
/// `available` larger than what was asked is shared out to what widens or heightens; buttons follow
/// the edge or the list that they stand at.
Placement placeWidgets(const std::vector<PlacementItem>& items, PlacedSize asked, PlacedSize available = {});

} // namespace quelm

#endif
