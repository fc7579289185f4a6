// Shares out spare room among the widgets of a container once they are apart.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/desktop/dialogs/placement.h"

#include "driver/desktop/dialogs/button_groups.h"
#include "driver/desktop/dialogs/untangling.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace quelm {

namespace {

constexpr int widestMargin = 8; // kept to the container's edge
constexpr int gapOfButtons = 8;

/// A piece of one axis.
struct Span {
    int begin = 0;
    int end = 0;
};

/// One axis of a widget that is apart from the others.
struct AxisItem {
    Span span;
    int plannedEnd = 0; // where it ends when it needs no more than it asked for
    int needed = 0;
    int margin = 0; // to keep to the container's end
    bool stretches = false;
    bool isPlaced = true;    // buttons are once their anchor is known
    double shareAtBegin = 0; // how much of the spare room, 0 to 1, its ends move by
    double shareAtEnd = 0;
};

/// How much of the spare room has been given out at a position: as large a part as that of the stretching
/// pixels that lie before it.
class Sharing {
public:
    explicit Sharing(const std::vector<AxisItem>& items)
    {
        for (const AxisItem& item : items)
            if (item.stretches && item.plannedEnd > item.span.begin)
                spans_.push_back({item.span.begin, item.plannedEnd});
        std::sort(spans_.begin(), spans_.end(),
                  [](const Span& one, const Span& other) { return one.begin < other.begin; });
        int end = 0;
        for (Span& span : spans_) {
            // What stands below each other stretches together.
            merged_.push_back({std::max(span.begin, end), std::max(span.end, end)});
            end = merged_.back().end;
        }
    }

    bool isEmpty() const { return spans_.empty(); }

    double before(int position) const
    {
        int total = 0;
        int passed = 0;
        for (const Span& span : merged_) {
            total += span.end - span.begin;
            passed += std::clamp(position, span.begin, span.end) - span.begin;
        }
        return total == 0 ? 0 : static_cast<double>(passed) / total;
    }

    bool beginsAt(int position) const
    {
        return std::any_of(spans_.begin(), spans_.end(),
                           [position](const Span& span) { return span.begin == position; });
    }

private:
    std::vector<Span> spans_;
    std::vector<Span> merged_;
};

int shareOf(int spare, double share) { return static_cast<int>(std::lround(spare * share)); }

/// Where a row of buttons belongs.
enum class Anchor { left, middle, right };

Anchor anchorOf(const Span& buttons, const Sharing& sharing, int end)
{
    const int middle = (buttons.begin + buttons.end) / 2;
    if (sharing.beginsAt(buttons.begin) || middle < end / 3)
        return Anchor::left;
    return middle > end * 2 / 3 ? Anchor::right : Anchor::middle;
}

double shareOfButtons(Anchor anchor, const Span& buttons, const Sharing& sharing)
{
    switch (anchor) {
    case Anchor::left:
        return sharing.before(buttons.begin);
    case Anchor::right:
        return sharing.isEmpty() ? 1 : sharing.before(buttons.end);
    default:
        return 0.5;
    }
}

/// Buttons that need more than they asked for grow away from what they are anchored at, as far as nothing
/// stands to their left.
int beginOfButtons(Anchor anchor, const Span& now, int plannedEnd, int leftLimit)
{
    const int size = now.end - now.begin;
    if (anchor == Anchor::left)
        return now.begin;
    const int wanted = anchor == Anchor::right ? plannedEnd - size : (now.begin + plannedEnd - size) / 2;
    return std::max(wanted, std::min(leftLimit, now.begin));
}

/// What stands left and right of a row of buttons.
struct Neighbours {
    int leftEnd = 0; // with a gap; 0 when nothing stands there
    bool right = false;
};

Neighbours neighboursOf(std::size_t unit, const std::vector<PlacedRectangle>& places)
{
    Neighbours found;
    const PlacedRectangle& own = places[unit];
    for (const PlacedRectangle& other : places) {
        if (other.y < own.y + own.height && own.y < other.y + other.height) {
            if (other.x + other.width <= own.x)
                found.leftEnd = std::max(found.leftEnd, other.x + other.width + gapOfButtons);
            found.right = found.right || other.x >= own.x + own.width;
        }
    }
    return found;
}

/// What moves along with more than this part of the spare room hardly gets away from the edge by it.
constexpr double mostOfTheRoom = 0.6;

/// Where the container must end for what moves along with its edge, or stretches with it.
int endForMovers(const std::vector<AxisItem>& items, int end)
{
    for (const AxisItem& item : items) {
        if (item.stretches)
            end = std::max(end, item.plannedEnd + item.margin);
        if (item.isPlaced && item.shareAtBegin > mostOfTheRoom)
            end = std::max(end, item.span.end + item.margin);
    }
    return end;
}

/// How much spare room it takes for everything else to end within the container.
int neededSpare(const std::vector<AxisItem>& items, int end)
{
    int spare = 0;
    for (const AxisItem& item : items) {
        const int excess = item.span.end + item.margin - end;
        if (excess > 0 && item.shareAtBegin <= mostOfTheRoom)
            spare = std::max(spare, static_cast<int>(std::ceil(excess / (1 - item.shareAtBegin))));
    }
    return spare;
}

Span spreadSpan(const AxisItem& item, int spare)
{
    const int begin = item.span.begin + shareOf(spare, item.shareAtBegin);
    const int size = item.span.end - item.span.begin;
    if (!item.stretches)
        return {begin, begin + size};
    return {begin, std::max(begin + item.needed, item.plannedEnd + shareOf(spare, item.shareAtEnd))};
}

/// One axis of everything in a container.
std::vector<AxisItem> axisItems(const std::vector<Span>& spans,
                                const std::vector<const PlacementExtent*>& extents, const GuideLines& lines,
                                int askedEnd)
{
    std::vector<AxisItem> items;
    for (std::size_t index = 0; index < spans.size(); ++index) {
        const PlacementExtent& extent = *extents[index];
        AxisItem item;
        item.span = spans[index];
        item.needed = extent.needed;
        item.stretches = extent.stretches;
        item.plannedEnd = item.span.end;
        if (extent.asked > 0)
            item.plannedEnd = std::min(item.span.end, lines.movedEnd(extent.begin + extent.asked));
        const int askedMargin = extent.asked > 0 ? askedEnd - extent.begin - extent.asked : widestMargin;
        item.margin = askedEnd > 0 ? std::clamp(askedMargin, 0, widestMargin) : 0;
        items.push_back(item);
    }
    return items;
}

void takeShares(std::vector<AxisItem>& items, const Sharing& sharing)
{
    for (AxisItem& item : items) {
        item.shareAtBegin = sharing.before(item.span.begin);
        item.shareAtEnd = item.stretches ? sharing.before(item.plannedEnd) : item.shareAtBegin;
    }
}

/// Lays out the units of a container that are apart from each other.
class Layout {
public:
    Layout(const std::vector<PlacementItem>& allItems, const std::vector<PlacementUnit>& allUnits,
           const Untangling& untangledUnits)
        : items_(allItems), units_(allUnits), untangled_(untangledUnits), places_(untangled_.places())
    {
        for (std::size_t unit = 0; unit < units_.size(); ++unit) {
            columns_.push_back({places_[unit].x, places_[unit].x + places_[unit].width});
            rows_.push_back({places_[unit].y, places_[unit].y + places_[unit].height});
            across_.push_back(&untangled_.boxes()[unit].x);
            down_.push_back(&untangled_.boxes()[unit].y);
        }
    }

    /// With `anchored`, buttons go where their row belongs; else they move with what surrounds them.
    Placement in(PlacedSize asked, PlacedSize available, bool anchored) const
    {
        std::vector<AxisItem> horizontal = axisItems(columns_, across_, untangled_.columns(), asked.width);
        const Sharing widths(horizontal);
        takeShares(horizontal, widths);
        int right = untangled_.columns().movedEnd(asked.width);
        right = anchored && asked.width > 0 ? anchorButtons(horizontal, widths, right)
                                            : endForMovers(horizontal, right);
        std::vector<AxisItem> vertical = axisItems(rows_, down_, untangled_.rows(), asked.height);
        takeShares(vertical, Sharing(vertical));
        const int bottom = endForMovers(vertical, untangled_.rows().movedEnd(asked.height));

        Placement result;
        result.places.resize(items_.size());
        result.size = {right + neededSpare(horizontal, right), bottom + neededSpare(vertical, bottom)};
        const int spareWidth = std::max(result.size.width, available.width) - right;
        const int spareHeight = std::max(result.size.height, available.height) - bottom;
        for (std::size_t unit = 0; unit < units_.size(); ++unit) {
            const Span column = spreadSpan(horizontal[unit], spareWidth);
            const Span row = spreadSpan(vertical[unit], spareHeight);
            const PlacedRectangle place{column.begin, row.begin, column.end - column.begin,
                                        row.end - row.begin};
            const std::vector<PlacedRectangle> members = placesInUnit(units_[unit], items_, place);
            for (std::size_t member = 0; member < members.size(); ++member)
                result.places[units_[unit].members[member]] = members[member];
        }
        return result;
    }

private:
    /// Returns where the container ends then.
    int anchorButtons(std::vector<AxisItem>& horizontal, const Sharing& widths, int end) const
    {
        for (std::size_t unit = 0; unit < units_.size(); ++unit)
            horizontal[unit].isPlaced = !units_[unit].item.isButton;
        const int endOfOthers = endForMovers(horizontal, end);
        std::vector<PlacedRectangle> now = places_;
        for (std::size_t unit = 0; unit < units_.size(); ++unit) {
            AxisItem& item = horizontal[unit];
            if (!item.isPlaced) {
                const Anchor anchor = anchorOf(item.span, widths, end);
                const Neighbours neighbours = neighboursOf(unit, now);
                const bool atTheEdge = anchor == Anchor::right && !neighbours.right;
                const int plannedEnd = item.plannedEnd + (atTheEdge ? endOfOthers - end : 0);
                const int begin = beginOfButtons(anchor, item.span, plannedEnd, neighbours.leftEnd);
                item.span = {begin, begin + item.span.end - item.span.begin};
                item.shareAtBegin = item.shareAtEnd = shareOfButtons(anchor, item.span, widths);
                item.isPlaced = true;
                now[unit].x = begin;
            }
        }
        return endForMovers(horizontal, endOfOthers);
    }

    const std::vector<PlacementItem>& items_;
    const std::vector<PlacementUnit>& units_;
    const Untangling& untangled_;
    const std::vector<PlacedRectangle>& places_;
    std::vector<Span> columns_;
    std::vector<Span> rows_;
    std::vector<const PlacementExtent*> across_;
    std::vector<const PlacementExtent*> down_;
};

bool anyOverlap(const std::vector<PlacedRectangle>& places)
{
    for (std::size_t one = 0; one < places.size(); ++one) {
        for (std::size_t other = 0; other < one; ++other) {
            const PlacedRectangle& first = places[one];
            const PlacedRectangle& second = places[other];
            if (first.x < second.x + second.width && second.x < first.x + first.width &&
                first.y < second.y + second.height && second.y < first.y + first.height)
                return true;
        }
    }
    return false;
}

} // namespace

Placement placeWidgets(const std::vector<PlacementItem>& items, PlacedSize asked, PlacedSize available)
{
    const std::vector<PlacementUnit> units = unitsOf(items);
    std::vector<PlacementItem> unitItems;
    unitItems.reserve(units.size());
    for (const PlacementUnit& unit : units)
        unitItems.push_back(unit.item);
    const Untangling untangled(unitItems);
    const Layout layout(items, units, untangled);
    Placement placement = layout.in(asked, available, true);
    if (anyOverlap(placement.places))
        placement = layout.in(asked, available, false);
    return placement;
}

} // namespace quelm
