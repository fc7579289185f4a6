// Which widgets can be operated, depending on which options are chosen.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_WIDGETS_BINDINGS_H
#define DRIVER_WIDGETS_BINDINGS_H

#include "driver/widgets/widget_tree.h"

namespace quelm {

/// Keeps the sensitivity of widgets in step with the options that they belong to (the notes of the
/// cover sheet with the choice of a cover sheet, and so on). An observer of the tree: whenever an
/// option changes, by whoever's hand, what depends on it follows. A sensitivity that the component
/// sets itself stands until then.
class Bindings : public WidgetObserver {
public:
    explicit Bindings(WidgetTree& widgetTree);
    ~Bindings() override;

    /// Puts everything in step: at the start, and when features were put back.
    void applyAll();

    void changed(Widget& widget, WidgetChange what) override;

private:
    WidgetTree& tree_;
};

} // namespace quelm

#endif
