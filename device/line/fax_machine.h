// One fax machine on a telephone line: the modem library's T.30 over modem audio.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DEVICE_LINE_FAX_MACHINE_H
#define DEVICE_LINE_FAX_MACHINE_H

#include "device/line/samples.h"

#include <memory>
#include <optional>
#include <string>

namespace quelm::device {

struct FaxMachineSettings {
    bool calls = false; ///< it is the one that calls, and sends; otherwise it answers, and receives
    std::string file;   ///< the TIFF file that it sends, or writes: at most 255 bytes
    std::string identity;
    std::string subAddress; ///< of one that calls
    int fastest = 14400;
    bool errorCorrection = true;
    std::optional<int> paperForPages; ///< of one that answers: it takes no page behind so many
};

/// What a machine reports.
struct FaxMachineState {
    int pages = 0; ///< sent and acknowledged, or received
    int bitRate = 0;
    bool errorCorrection = false;
    int repeatedFrames = 0; ///< by error correction
};

/// Speaks and listens in turn, 20 ms at a time.
class FaxMachine {
public:
    explicit FaxMachine(const FaxMachineSettings& settings);
    ~FaxMachine();
    FaxMachine(const FaxMachine&) = delete;
    FaxMachine& operator=(const FaxMachine&) = delete;

    /// What it says next; silence when that is nothing.
    void speak(Samples& samples);
    void listen(Samples samples);
    /// The line is gone: what was under way ends, and the file is closed.
    void hangUp();

    /// True once it has put the receiver down.
    [[nodiscard]] bool hasEnded() const;
    /// The library's completion code: T30_ERR_OK for a call that ended in order.
    [[nodiscard]] int code() const;
    [[nodiscard]] FaxMachineState state() const;
    /// True once both have agreed on how pages are sent.
    [[nodiscard]] bool hasAgreed() const;
    /// Rows of the received pages that could not be read.
    [[nodiscard]] int damagedRows() const;
    /// True once it has no paper for a page. With error correction it goes on saying that it is not ready,
    /// until the caller gives up; without, whoever owns the line has to hang up.
    [[nodiscard]] bool isOutOfPaper() const;
    /// What the other machine said of itself.
    [[nodiscard]] std::string otherIdentity() const;
    [[nodiscard]] std::string otherSubAddress() const;

private:
    struct State;
    std::unique_ptr<State> state_;
};

} // namespace quelm::device

#endif
