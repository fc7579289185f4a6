// Handles for the vCard library, which close themselves.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_CONTACTS_EVCARD_H
#define DRIVER_CONTACTS_EVCARD_H

#include <memory>
#include <string>

// The library's headers mention what GLib has given up.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"
#include <libebook-contacts/libebook-contacts.h>
#pragma GCC diagnostic pop

namespace quelm {

struct ObjectReleaser {
    void operator()(gpointer object) const { g_object_unref(object); }
};
using VcardHandle = std::unique_ptr<EVCard, ObjectReleaser>;

/// Takes over a text that GLib allocated.
inline std::string takeText(char* text)
{
    std::string copy = text == nullptr ? "" : text;
    g_free(text);
    return copy;
}

} // namespace quelm

#endif
