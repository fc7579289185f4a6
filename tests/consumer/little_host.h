// What the parts of this little host share.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONSUMER_LITTLE_HOST_H
#define CONSUMER_LITTLE_HOST_H

#include <string>

/// The installation folder, without a trailing "/"; set before the component is loaded.
extern std::string installationFolder;

/// The name and address of the object that the component registered last.
extern std::string registeredName;
extern void* registeredObject;

#endif
