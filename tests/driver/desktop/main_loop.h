// Lets the default main loop run until something has happened.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef TESTS_DRIVER_DESKTOP_MAIN_LOOP_H
#define TESTS_DRIVER_DESKTOP_MAIN_LOOP_H

#include <glib.h>

/// Runs the loop until `condition` holds. False when that took more than a minute.
template <typename Condition>
bool loopUntil(Condition condition)
{
    bool late = false;
    const guint timer = g_timeout_add_seconds(
        60,
        [](gpointer flag) -> gboolean {
            *static_cast<bool*>(flag) = true;
            return G_SOURCE_CONTINUE;
        },
        &late);
    bool holds = condition();
    while (!late && !holds) {
        g_main_context_iteration(nullptr, TRUE);
        holds = condition();
    }
    g_source_remove(timer);
    return holds;
}

/// Lets everything happen that is due now.
inline void loopUntilIdle()
{
    while (g_main_context_iteration(nullptr, FALSE) != FALSE) {
    }
}

#endif
