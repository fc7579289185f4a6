// What the tests of the outbox share: an outbox of their own, and jobs to put into it.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef TESTS_DRIVER_OUTBOX_OUTBOX_SUPPORT_H
#define TESTS_DRIVER_OUTBOX_OUTBOX_SUPPORT_H

#include "driver/outbox/outbox.h"
#include "driver/outbox/outbox_steps.h"
#include "tests/driver/jobs/cups_support.h"

#include <ctime>
#include <optional>
#include <string>
#include <vector>

namespace quelm::tests {

/// A moment on a fixed clock, to which the clock of all is set.
inline constexpr std::time_t noon = 1'700'000'000;

/// What a job of the outbox is; `target` may be left out where nothing is sent.
OutboxDraft draftFor(const JobTarget& target, std::time_t due = noon);

/// A print stream in the form of the component's, with the number of a credit card in its header, and the
/// same texts in its document.
std::string streamWithCard(Pdl pdl, const std::string& number);

/// The whole of a device's address.
NetworkAddress deviceAt(int port);

/// The paths of all that is below a folder, relative to it, sorted; but for what SQLite leaves beside its
/// file when a process is killed, and removes itself.
std::vector<std::string> allBelow(const std::string& folder);

/// While it lives, temporary files are made in memory, where that can be: a job is made durable many times,
/// and a disk would be waited for each time.
class TemporaryFilesInMemory {
public:
    TemporaryFilesInMemory();
    ~TemporaryFilesInMemory();
    TemporaryFilesInMemory(const TemporaryFilesInMemory&) = delete;
    TemporaryFilesInMemory& operator=(const TemporaryFilesInMemory&) = delete;

private:
    std::optional<std::string> before_;
};

class OutboxTest : private TemporaryFilesInMemory, public CupsTest {
protected:
    OutboxTest();
    ~OutboxTest() override;

    /// Opens the outbox, as another program would.
    Outbox open(int keepDays = 30) const { return Outbox({outboxFolder, keepDays}); }

    /// Puts a job in; its number.
    static int put(Outbox& outbox, const OutboxDraft& draft, const std::string& stream = "the job",
                   const Document* document = nullptr);

    /// Asks for a job in an outbox opened anew.
    OutboxJob jobOf(int number, int keepDays = 30) const { return open(keepDays).job(number); }

    /// True when a file of the outbox holds this text.
    bool keeps(const std::string& text) const;

    std::string outboxFolder = path("state/outbox");
};

} // namespace quelm::tests

#endif
