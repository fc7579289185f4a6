// The telephone exchange: what stands behind which number.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DEVICE_EXCHANGE_EXCHANGE_H
#define DEVICE_EXCHANGE_EXCHANGE_H

#include "device/line/fax_call.h"

#include <filesystem>
#include <memory>
#include <string>

namespace quelm::device {

/// What was dialled, as the exchange heard it.
struct DialledKeys {
    std::string number; ///< keys, "," for a pause
    std::string
        card; ///< the keys of a credit card, which the exchange asks for behind the number; empty for none
};

/// Where a call goes.
struct Connection {
    /// The number without the digits for an outside line and without pauses: "5550104477". A folder may have
    /// this name: "*" stands there as "s", "#" as "p", and no other number has the same. Empty when there is
    /// no such number: one without a digit, or of more than 100 keys.
    std::string number;
    AnsweringParty party; ///< without `keepAs`, which whoever makes the call chooses
};

/// Answers by a file. It is the same for equal questions, whatever was asked before and from whichever
/// thread.
class Exchange {
public:
    /// Without a file a fax machine answers at every number. Otherwise throws quelm::Error that names the
    /// file, the group and the key when it cannot be read, is malformed, or says what no exchange can do.
    explicit Exchange(const std::string& file = {});
    ~Exchange();
    Exchange(Exchange&&) noexcept;
    Exchange& operator=(Exchange&&) noexcept;

    /// Whether a caller with a credit card is asked for it behind the number.
    [[nodiscard]] bool asksForCards() const;

    /// `attempt` counts the calls for this recipient of a job, from 1: a number may be busy for the first of
    /// them.
    [[nodiscard]] Connection connect(const DialledKeys& dialled, int attempt) const;

private:
    struct Plan;
    std::unique_ptr<Plan> plan_;
};

/// Writes a sample that says what such a file may hold, and changes nothing: everything in it is a comment,
/// or as it is without a file. False when there is something of that name already. Throws quelm::Error.
bool writeSampleExchange(const std::filesystem::path& file);

} // namespace quelm::device

#endif
