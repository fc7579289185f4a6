// Finds rows of buttons and lays them out.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/desktop/dialogs/button_groups.h"

#include <algorithm>

namespace quelm {

namespace {

constexpr int widestGap = 20; // buttons further apart do not belong together

int widthOf(const PlacementItem& item) { return std::max(item.asked.width, item.needed.width); }

int gapBetween(const PlacementItem& left, const PlacementItem& right)
{
    return right.asked.x - left.asked.x - left.asked.width;
}

PlacementUnit groupFrom(const std::vector<PlacementItem>& items, const std::vector<std::size_t>& buttons)
{
    PlacementUnit unit{items[buttons.front()], buttons};
    const PlacementItem& last = items[buttons.back()];
    unit.item.asked.width = last.asked.x + last.asked.width - unit.item.asked.x;
    unit.item.needed.width = 0;
    for (std::size_t position = 0; position < buttons.size(); ++position) {
        const PlacementItem& button = items[buttons[position]];
        unit.item.needed.width +=
            widthOf(button) + (position == 0 ? 0 : gapBetween(items[buttons[position - 1]], button));
        unit.item.asked.height = std::max(unit.item.asked.height, button.asked.height);
        unit.item.needed.height = std::max(unit.item.needed.height, button.needed.height);
    }
    return unit;
}

} // namespace

std::vector<PlacementUnit> unitsOf(const std::vector<PlacementItem>& items)
{
    std::vector<PlacementUnit> units;
    std::vector<bool> taken(items.size());
    for (std::size_t index = 0; index < items.size(); ++index) {
        if (taken[index])
            continue;
        std::vector<std::size_t> row;
        for (std::size_t other = index; other < items.size(); ++other)
            if (other == index || (items[index].isButton && items[other].isButton && !taken[other] &&
                                   items[other].asked.y == items[index].asked.y))
                row.push_back(other);
        std::stable_sort(row.begin(), row.end(), [&items](std::size_t one, std::size_t other) {
            return items[one].asked.x < items[other].asked.x;
        });
        // The part of the row without a wide gap or an overlap that holds this button.
        const auto breaks = [&items](std::size_t left, std::size_t right) {
            const int gap = gapBetween(items[left], items[right]);
            return gap < 0 || gap > widestGap;
        };
        auto begin = std::find(row.begin(), row.end(), index);
        auto end = begin + 1;
        while (begin != row.begin() && !breaks(*(begin - 1), *begin))
            --begin;
        while (end != row.end() && !breaks(*(end - 1), *end))
            ++end;
        const std::vector<std::size_t> group(begin, end);
        for (const std::size_t member : group)
            taken[member] = true;
        units.push_back(group.size() == 1 ? PlacementUnit{items[index], group} : groupFrom(items, group));
    }
    return units;
}

std::vector<PlacedRectangle> placesInUnit(const PlacementUnit& unit, const std::vector<PlacementItem>& items,
                                          const PlacedRectangle& place)
{
    if (unit.members.size() == 1)
        return {place};
    std::vector<PlacedRectangle> places;
    int x = place.x;
    for (std::size_t position = 0; position < unit.members.size(); ++position) {
        const PlacementItem& button = items[unit.members[position]];
        if (position > 0)
            x += gapBetween(items[unit.members[position - 1]], button);
        places.push_back({x, place.y, widthOf(button), std::max(button.asked.height, button.needed.height)});
        x += widthOf(button);
    }
    return places;
}

} // namespace quelm
