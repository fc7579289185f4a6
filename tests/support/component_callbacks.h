// The component's callbacks by name, as a host finds them in the library.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef TESTS_SUPPORT_COMPONENT_CALLBACKS_H
#define TESTS_SUPPORT_COMPONENT_CALLBACKS_H

#include "tests/support/fake_host.h"

#include <map>
#include <string>

/// Every callback that a widget can fire.
const std::map<std::string, fake::WidgetCallback>& componentCallbacks();

#endif
