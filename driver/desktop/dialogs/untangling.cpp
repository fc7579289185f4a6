// Finds widgets that overlap and moves the one further right or further down.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/desktop/dialogs/untangling.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <iterator>

namespace quelm {

namespace {

constexpr int gapWhenPushed = 4;
constexpr int leastGapOfText = 4;   // texts closer than this read as one
constexpr int lineHeight = 16;      // what a definition counts on for a text without a height
constexpr int furthest = 1'000'000; // positions beyond are on no screen

bool overlap(int firstBegin, int firstSize, int secondBegin, int secondSize)
{
    return firstBegin < secondBegin + secondSize && secondBegin < firstBegin + firstSize;
}

int sizeOf(const PlacementExtent& extent) { return std::max(extent.asked, extent.needed); }

/// How far one of two must move to clear the other.
int pushToClear(int oneBegin, int oneSize, int otherBegin, int otherSize)
{
    return oneBegin < otherBegin ? oneBegin + oneSize - otherBegin : otherBegin + otherSize - oneBegin;
}

/// The size that the definition counted on.
int plannedSize(const PlacementExtent& extent, int ofText)
{
    return extent.asked > 0 ? extent.asked : std::clamp(extent.needed, 1, ofText);
}

} // namespace

int GuideLines::movedEnd(int edge) const
{
    const auto next = shifts_.lower_bound(edge);
    return edge + (next == shifts_.begin() ? 0 : std::prev(next)->second);
}

void GuideLines::moveTo(int position, int target)
{
    const int shift = target - position;
    for (auto line = shifts_.find(position); line != shifts_.end(); ++line)
        line->second = std::max(line->second, shift);
}

Untangling::Untangling(const std::vector<PlacementItem>& items)
{
    const auto within = [](int value) { return std::clamp(value, 0, furthest); };
    for (const PlacementItem& item : items) {
        Box box{
            {within(item.asked.x), within(item.asked.width), within(item.needed.width), item.widens},
            {within(item.asked.y), within(item.asked.height), within(item.needed.height), item.heightens}};
        // Lines tell widgets apart by where they begin.
        while (std::any_of(allBoxes_.begin(), allBoxes_.end(), [&box](const Box& other) {
            return other.x.begin == box.x.begin && other.y.begin == box.y.begin;
        }))
            ++box.x.begin;
        allBoxes_.push_back(box);
        columnLines_.add(box.x.begin);
        rowLines_.add(box.y.begin);
    }
    // A line only ever moves on, and never past what it was pushed by, so this ends by itself; the bound
    // keeps a window from freezing should that ever be wrong.
    const std::size_t most = 16 * (allBoxes_.size() + 1) * (allBoxes_.size() + 1);
    for (std::size_t round = 0; round < most && separateOne(); ++round) {
    }
    stretch();
}

PlacedRectangle Untangling::place(const Box& box) const
{
    return {columnLines_.moved(box.x.begin), rowLines_.moved(box.y.begin), sizeOf(box.x), sizeOf(box.y)};
}

/// Growing comes last, and ends at the next neighbour: it must not push what it follows.
void Untangling::stretch()
{
    for (const Box& box : allBoxes_)
        finalPlaces_.push_back(place(box));
    for (std::size_t index = 0; index < allBoxes_.size(); ++index) {
        PlacedRectangle& own = finalPlaces_[index];
        const auto grow = [&](const PlacementExtent& extent, const GuideLines& lines,
                              int PlacedRectangle::*begin, int PlacedRectangle::*size,
                              int PlacedRectangle::*crossBegin, int PlacedRectangle::*crossSize) {
            if (!extent.stretches || extent.asked == 0)
                return;
            int end = lines.movedEnd(extent.begin + extent.asked);
            for (const PlacedRectangle& other : finalPlaces_)
                if (other.*begin >= own.*begin + own.*size &&
                    overlap(own.*crossBegin, own.*crossSize, other.*crossBegin, other.*crossSize))
                    end = std::min(end, other.*begin);
            own.*size = std::max(own.*size, end - own.*begin);
        };
        grow(allBoxes_[index].x, columnLines_, &PlacedRectangle::x, &PlacedRectangle::width,
             &PlacedRectangle::y, &PlacedRectangle::height);
        grow(allBoxes_[index].y, rowLines_, &PlacedRectangle::y, &PlacedRectangle::height,
             &PlacedRectangle::x, &PlacedRectangle::width);
    }
}

bool Untangling::separateOne()
{
    for (std::size_t later = 1; later < allBoxes_.size(); ++later) {
        for (std::size_t earlier = 0; earlier < later; ++earlier) {
            if (tooClose(allBoxes_[earlier], allBoxes_[later])) {
                separate(allBoxes_[earlier], allBoxes_[later]);
                return true;
            }
        }
    }
    return false;
}

bool Untangling::tooClose(const Box& one, const Box& other) const
{
    const bool inOrder = one.x.begin <= other.x.begin;
    const Box& first = inOrder ? one : other;
    const Box& second = inOrder ? other : one;
    const PlacedRectangle left = place(first);
    const PlacedRectangle right = place(second);
    const int gap = first.x.asked == 0 && first.x.begin < second.x.begin ? leastGapOfText : 0;
    return overlap(left.x, left.width + gap, right.x, right.width) &&
           overlap(left.y, left.height, right.y, right.height);
}

void Untangling::separate(const Box& one, const Box& other)
{
    if (meantSideBySide(one, other)) {
        const bool inOrder = one.x.begin < other.x.begin;
        const PlacedRectangle left = place(inOrder ? one : other);
        columnLines_.moveTo((inOrder ? other : one).x.begin, left.x + left.width + gapWhenPushed);
    } else {
        const bool inOrder = one.y.begin < other.y.begin;
        const PlacedRectangle upper = place(inOrder ? one : other);
        rowLines_.moveTo((inOrder ? other : one).y.begin, upper.y + upper.height);
    }
}

/// Side by side rather than one below the other.
bool Untangling::meantSideBySide(const Box& one, const Box& other) const
{
    if (one.x.begin == other.x.begin || one.y.begin == other.y.begin)
        return one.y.begin == other.y.begin;
    const bool shareRow =
        overlap(one.y.begin, plannedSize(one.y, lineHeight), other.y.begin, plannedSize(other.y, lineHeight));
    const bool shareColumn =
        overlap(one.x.begin, plannedSize(one.x, 1), other.x.begin, plannedSize(other.x, 1));
    if (shareRow != shareColumn)
        return shareRow;
    if (shareRow)
        return std::abs(one.x.begin - other.x.begin) > std::abs(one.y.begin - other.y.begin);
    const PlacedRectangle first = place(one);
    const PlacedRectangle second = place(other);
    return pushToClear(first.x, first.width, second.x, second.width) <
           pushToClear(first.y, first.height, second.y, second.height);
}

} // namespace quelm
