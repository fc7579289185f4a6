// Owners of what Pango, Cairo and fontconfig hand out.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_DRAWINGS_HANDLES_H
#define DRIVER_DRAWINGS_HANDLES_H

#include "base/released_by.h"

#include <cairo.h>
#include <fontconfig/fontconfig.h>
#include <pango/pango.h>

#include <memory>

namespace quelm {

using AttributesHandle = std::unique_ptr<PangoAttrList, ReleasedBy<pango_attr_list_unref>>;
using CairoHandle = std::unique_ptr<cairo_t, ReleasedBy<cairo_destroy>>;
using CairoPathHandle = std::unique_ptr<cairo_path_t, ReleasedBy<cairo_path_destroy>>;
using ContextHandle = std::unique_ptr<PangoContext, ReleasedBy<g_object_unref>>;
using FontConfigurationHandle = std::unique_ptr<FcConfig, ReleasedBy<FcConfigDestroy>>;
using FontDescriptionHandle = std::unique_ptr<PangoFontDescription, ReleasedBy<pango_font_description_free>>;
using FontHandle = std::unique_ptr<PangoFont, ReleasedBy<g_object_unref>>;
using FontOptionsHandle = std::unique_ptr<cairo_font_options_t, ReleasedBy<cairo_font_options_destroy>>;
using LayoutHandle = std::unique_ptr<PangoLayout, ReleasedBy<g_object_unref>>;
using ScaledFontHandle = std::unique_ptr<cairo_scaled_font_t, ReleasedBy<cairo_scaled_font_destroy>>;
using SurfaceHandle = std::unique_ptr<cairo_surface_t, ReleasedBy<cairo_surface_destroy>>;

} // namespace quelm

#endif
