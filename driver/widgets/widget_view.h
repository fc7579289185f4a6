// Describes widgets as a user sees them.
#ifndef DRIVER_WIDGETS_WIDGET_VIEW_H
#define DRIVER_WIDGETS_WIDGET_VIEW_H

#include "driver/core/driver.h"
#include "driver/widgets/widget.h"

namespace quelm {

WidgetView viewOf(const Widget& widget);

/// The cells of a list, row by row.
std::vector<std::vector<std::string>> rowsOf(const Widget& list);

} // namespace quelm

#endif
