// Buttons that stand together in a row, placed as one.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_DESKTOP_DIALOGS_BUTTON_GROUPS_H
#define DRIVER_DESKTOP_DIALOGS_BUTTON_GROUPS_H

#include "driver/desktop/dialogs/placement_item.h"

#include <cstddef>
#include <vector>

namespace quelm {

/// One item, or neighbouring buttons in one row: these keep their distances, whatever their texts need.
struct PlacementUnit {
    PlacementItem item;
    std::vector<std::size_t> members; // indices of the items, from left to right
};

/// The units of `items`, in the order of their first members.
std::vector<PlacementUnit> unitsOf(const std::vector<PlacementItem>& items);

/// Where the members of a unit stand when the unit has `place`: for buttons side by side from its left.
std::vector<PlacedRectangle> placesInUnit(const PlacementUnit& unit, const std::vector<PlacementItem>& items,
                                          const PlacedRectangle& place);

} // namespace quelm

#endif
