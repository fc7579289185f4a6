// Where the bytes of a print job go.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_DOCUMENTS_SINK_H
#define DRIVER_DOCUMENTS_SINK_H

#include <string_view>

namespace quelm {

/// Receives a print job piece by piece, in order. The bytes are the caller's and valid during the
/// call only.
class JobSink {
public:
    virtual ~JobSink() = default;

    /// Takes all of `bytes`, or throws quelm::Error; after that the job is lost.
    virtual void write(std::string_view bytes) = 0;
};

} // namespace quelm

#endif
