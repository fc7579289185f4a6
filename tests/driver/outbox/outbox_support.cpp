// What the tests of the outbox share: an outbox of their own, and jobs to put into it.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "tests/driver/outbox/outbox_support.h"

#include "base/clock.h"

#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>

namespace quelm::tests {

namespace fs = std::filesystem;

OutboxDraft draftFor(const JobTarget& target, std::time_t due)
{
    OutboxDraft draft;
    draft.target = target;
    draft.title = "letter.ps";
    draft.user = "ann";
    draft.recipients = {{1, "Ann", "555-1234", "Acme", "", "ann@example.com", "12"}};
    draft.options = {{"LanFax Resolution", "1"}, {"LanFax Notes", "Two\nlines"}};
    draft.due = due;
    return draft;
}

std::string streamWithCard(Pdl pdl, const std::string& number)
{
    const std::string document = "%%Page: 1 1\n%%OID_ATT_CREDIT_CARD \"555\";\r\n"
                                 "@PJL COMMENT OID_ATT_CREDIT_CARD \"555\";\r\nshowpage\n%%EOF\n";
    if (pdl == Pdl::dsc)
        return "%!PS-Adobe-3.0\n%%Title: A letter\n%%OID_ATT_FAX_COVER_SHEET FALSE;\r\n%%QLMbegin\r\n"
               "%%OID_ATT_CREDIT_CARD \"" +
               number + "\";\r\n%%QLMend\r\n%%EndComments\n" + document;
    return "\x1B%-12345X@PJL JOB NAME=\"A letter\"\r\n@PJL COMMENT OID_ATT_FAX_COVER_SHEET FALSE;\r\n"
           "@PJL COMMENT OID_ATT_CREDIT_CARD \"" +
           number + "\";\r\n@PJL ENTER LANGUAGE=POSTSCRIPT\r\n%!PS-Adobe-3.0\n%%EndComments\n" + document;
}

NetworkAddress deviceAt(int port) { return {"127.0.0.1", static_cast<std::uint16_t>(port)}; }

std::vector<std::string> allBelow(const std::string& folder)
{
    std::vector<std::string> paths;
    for (const auto& entry : fs::recursive_directory_iterator(folder))
        if (entry.path().filename() != "log.db-journal")
            paths.push_back(entry.path().lexically_relative(folder).string());
    std::ranges::sort(paths);
    return paths;
}

TemporaryFilesInMemory::TemporaryFilesInMemory()
{
    if (const char* before = std::getenv("TMPDIR"))
        before_ = before;
    constexpr const char* inMemory = "/dev/shm";
    if (::access(inMemory, W_OK | X_OK) == 0)
        ::setenv("TMPDIR", inMemory, 1);
}

TemporaryFilesInMemory::~TemporaryFilesInMemory()
{
    if (before_)
        ::setenv("TMPDIR", before_->c_str(), 1);
    else
        ::unsetenv("TMPDIR");
}

OutboxTest::OutboxTest()
{
    const std::time_t now = noon;
    std::tm moment{};
    ::localtime_r(&now, &moment);
    fixClock(moment);
}

OutboxTest::~OutboxTest()
{
    setOutboxStepHook({});
    releaseClock();
}

int OutboxTest::put(Outbox& outbox, const OutboxDraft& draft, const std::string& stream,
                    const Document* document)
{
    const auto entry = outbox.newEntry();
    entry->sink().write(stream);
    return entry->commit(draft, document);
}

bool OutboxTest::keeps(const std::string& text) const
{
    for (const auto& entry : fs::recursive_directory_iterator(outboxFolder))
        if (entry.is_regular_file() && contentOf(entry.path().string()).find(text) != std::string::npos)
            return true;
    return false;
}

} // namespace quelm::tests
