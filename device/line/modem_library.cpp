// Prepares the modem library once for all threads.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/line/modem_library.h"

#include "device/tiff/tiff_handle.h"

#include <mutex>

namespace quelm::device {

void prepareModemLibrary()
{
    static std::once_flag once;
    std::call_once(once, [] {
        span_set_message_handler(nullptr);
        span_set_error_handler(nullptr);
        silenceTiffLibrary();
        // The first receiver of tones fills a table that all share.
        dtmf_rx_free(dtmf_rx_init(nullptr, nullptr, nullptr));
        dtmf_tx_free(dtmf_tx_init(nullptr));
    });
}

} // namespace quelm::device
