// Moves the lines along which widgets begin until no two widgets overlap.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_DESKTOP_DIALOGS_UNTANGLING_H
#define DRIVER_DESKTOP_DIALOGS_UNTANGLING_H

#include "driver/desktop/dialogs/placement_item.h"

#include <map>
#include <vector>

namespace quelm {

/// Where widgets begin along one axis, and how far each such line has moved. A line moves at least as far
/// as those before it.
class GuideLines {
public:
    void add(int position) { shifts_.emplace(position, 0); }

    /// Where the line of `position`, which was added, has come to lie.
    int moved(int position) const { return position + shifts_.at(position); }

    /// Where something that reached up to `edge`, before the lines moved, ends now.
    int movedEnd(int edge) const;

    /// Moves the line of `position` at least to `target`, and those behind it by at least as much.
    void moveTo(int position, int target);

private:
    std::map<int, int> shifts_;
};

/// One axis of a widget.
struct PlacementExtent {
    int begin = 0;
    int asked = 0; // 0: whatever it needs
    int needed = 0;
    bool stretches = false;
};

/// The widgets of a container, apart from one another.
class Untangling {
public:
    explicit Untangling(const std::vector<PlacementItem>& items);

    struct Box {
        PlacementExtent x;
        PlacementExtent y;
    };

    const std::vector<Box>& boxes() const { return allBoxes_; }
    /// Where the widgets stand, those that stretch reaching as far among the others as they asked to.
    const std::vector<PlacedRectangle>& places() const { return finalPlaces_; }
    const GuideLines& columns() const { return columnLines_; }
    const GuideLines& rows() const { return rowLines_; }

private:
    PlacedRectangle place(const Box& box) const;
    void stretch();
    [[nodiscard]] bool separateOne();
    bool tooClose(const Box& one, const Box& other) const;
    void separate(const Box& one, const Box& other);
    bool meantSideBySide(const Box& one, const Box& other) const;

    std::vector<Box> allBoxes_;
    std::vector<PlacedRectangle> finalPlaces_;
    GuideLines columnLines_;
    GuideLines rowLines_;
};

} // namespace quelm

#endif
