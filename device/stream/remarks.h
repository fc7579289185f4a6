// Collects what is to be said about a job, of which there is an end.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DEVICE_STREAM_REMARKS_H
#define DEVICE_STREAM_REMARKS_H

#include "device/stream/received_job.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace quelm::device {

/// The first remarks, and how many there are.
class Remarks {
public:
    static constexpr std::size_t most = 100;

    /// About a line, or with 0 about the job as a whole. The digits of a card do not stand in it.
    void add(std::uint64_t line, const std::string& text);

    /// All, in the order of their lines, those about the whole behind them. When there are more than `most`,
    /// the last says how many are left out.
    [[nodiscard]] std::vector<Remark> take();
    /// How many are left out.
    [[nodiscard]] std::size_t leftOut() const { return leftOut_; }

private:
    std::vector<Remark> remarks_;
    std::size_t leftOut_ = 0;
};

} // namespace quelm::device

#endif
