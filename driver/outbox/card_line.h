// The line of a print stream that carries the number of a credit card.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_OUTBOX_CARD_LINE_H
#define DRIVER_OUTBOX_CARD_LINE_H

#include "driver/documents/sink.h"
#include "driver/plugin/fax_session.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace quelm {

/// A card's line as it stands in a stream of that form, its line end included. Throws quelm::Error for a
/// number that a device would not take for one.
[[nodiscard]] std::string cardLine(Pdl pdl, std::string_view number);

/// Passes a print stream on to another sink, but for the line of a credit card. The line is looked for in the
/// job's own header alone: what stands in the document is the document's.
class CardLineCut final : public JobSink {
public:
    /// `kept` gets all the rest, and `card` the line; both outlive this.
    CardLineCut(JobSink& kept, JobSink& card) : kept_(kept), card_(card) {}

    void write(std::string_view bytes) override;

    /// Passes on what was held back; behind the last byte.
    void finish();

    /// Where in the stream the line stood; nothing when there was none.
    [[nodiscard]] std::optional<std::uint64_t> position() const { return position_; }

    /// The line's bytes; 0 when there was none.
    [[nodiscard]] std::uint64_t lineSize() const { return lineSize_; }

    /// How many bytes the stream has, with the line.
    [[nodiscard]] std::uint64_t size() const { return size_; }

private:
    void takeLine();
    void pass(std::string_view bytes);

    JobSink& kept_;
    JobSink& card_;
    std::string line_;       ///< of the header, as far as it is there
    bool isFirst_ = true;    ///< the stream's first line
    bool inHeader_ = true;   ///< lines are still looked at
    bool isPassing_ = false; ///< the rest of a line too long to be a card's goes on as it comes
    std::uint64_t size_ = 0;
    std::uint64_t lineSize_ = 0;
    std::optional<std::uint64_t> position_;
};

} // namespace quelm

#endif
