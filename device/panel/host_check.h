// Which names a browser may have called the status pages by.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DEVICE_PANEL_HOST_CHECK_H
#define DEVICE_PANEL_HOST_CHECK_H

#include <string>

namespace quelm::device {

/// True when the value of a request's Host header names this computer's loopback or `bound`, the numeric
/// address at which the pages are served, with any port or none. Where they are served at all addresses
/// ("0.0.0.0", "::"), any numeric address is right.
///
/// A stranger's page can have its own name lead to 127.0.0.1 once it is shown, and would read along here as
/// if it were one of ours; its requests carry that name.
[[nodiscard]] bool isOwnHost(const std::string& host, const std::string& bound);

} // namespace quelm::device

#endif
