// Takes URIs of files apart.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/desktop/main_window/file_uri.h"

#include <glib.h>

#include <memory>

namespace quelm {

std::string fileOfThisComputer(const std::string& uri)
{
    gchar* host = nullptr;
    gchar* path = g_filename_from_uri(uri.c_str(), &host, nullptr);
    const std::unique_ptr<gchar, void (*)(gpointer)> ownedHost(host, g_free);
    const std::unique_ptr<gchar, void (*)(gpointer)> ownedPath(path, g_free);
    const bool here = host == nullptr || g_ascii_strcasecmp(host, "localhost") == 0 ||
                      g_ascii_strcasecmp(host, g_get_host_name()) == 0;
    return path != nullptr && here ? path : std::string();
}

} // namespace quelm
