// Takes Pango's warnings of one thread.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/drawings/pango_kept_quiet.h"

#include <glib.h>

#include <algorithm>
#include <mutex>
#include <string_view>

namespace quelm {
namespace {

thread_local int quietObjects = 0; // of this thread

/// True for a message of Pango's.
bool isOfPango(const GLogField* fields, gsize count)
{
    return std::any_of(fields, fields + count, [](const GLogField& field) {
        return std::string_view(field.key) == "GLIB_DOMAIN" &&
               std::string_view(static_cast<const char*>(field.value)) == "Pango";
    });
}

GLogWriterOutput write(GLogLevelFlags level, const GLogField* fields, gsize count, gpointer)
{
    if (quietObjects > 0 && isOfPango(fields, count))
        return G_LOG_WRITER_HANDLED;
    return g_log_writer_default(level, fields, count, nullptr);
}

} // namespace

PangoKeptQuiet::PangoKeptQuiet()
{
    // GLib lets a process choose its writer once.
    static std::once_flag chosen;
    std::call_once(chosen, [] { g_log_set_writer_func(write, nullptr, nullptr); });
    ++quietObjects;
}

PangoKeptQuiet::~PangoKeptQuiet() { --quietObjects; }

} // namespace quelm
