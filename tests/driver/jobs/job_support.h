// What the tests of the print path share: a folder of their own, a fax session to write, and Ghostscript.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef TESTS_DRIVER_JOBS_JOB_SUPPORT_H
#define TESTS_DRIVER_JOBS_JOB_SUPPORT_H

#include "driver/documents/document.h"
#include "driver/documents/sink.h"
#include "driver/jobs/job_writer.h"
#include "driver/plugin/fax_session.h"

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace quelm::tests {

/// A test with an empty folder, where temporary files go too; it is removed afterwards.
class JobTest : public testing::Test {
protected:
    JobTest();
    ~JobTest() override;

    const std::string& folder() const { return folder_; }
    std::string path(const std::string& name) const { return folder_ + "/" + name; }

    /// Writes a file in the folder and returns its path.
    std::string file(const std::string& name, std::string_view content) const;

    /// Takes all bytes out of the nameless files that this process has open in the folder.
    void emptyUnnamedFiles() const;

    /// The names in the folder, sorted.
    std::vector<std::string> namesInFolder() const;

private:
    std::string folder_;
    std::string temporaryFolderBefore_;
};

std::string contentOf(const std::string& path);

/// While it lives, no file of this process, or of those that it starts, may become larger.
class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t size)
    {
        ::getrlimit(RLIMIT_FSIZE, &before_);
        const rlimit limit{size, before_.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit() { ::setrlimit(RLIMIT_FSIZE, &before_); }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;

private:
    rlimit before_ = {};
};

/// Bytes of every value, the same in each run.
std::string bytesOfEveryValue(std::size_t size);

/// The line of the quelm::Error that `action` throws; empty when it throws none.
std::string errorLine(const std::function<void()>& action);

/// The same for an error behind which the destination has nothing of the job: the line of a `DeliveryInDoubt`
/// begins with "in doubt: ".
std::string certainLine(const std::function<void()>& action);

/// The line of the `DeliveryInDoubt` that `action` throws; that of another error begins with "for certain: ".
std::string doubtLine(const std::function<void()>& action);

/// Collects a job in memory.
class StringSink final : public JobSink {
public:
    void write(std::string_view bytes) override { text += bytes; }
    std::string text;
};

/// Takes some bytes and then fails.
class FailingSink final : public JobSink {
public:
    explicit FailingSink(std::size_t room) : room_(room) {}
    void write(std::string_view bytes) override;

private:
    std::size_t room_;
};

/// A fax session that writes what the component writes for one recipient and a credit card.
class FakeFaxSession final : public FaxSession {
public:
    void setPdl(Pdl pdl) override;
    bool coverPageChosen() override;
    bool checkInfo() override;
    bool serializeJob(AbstractPDLWriter& writer) override;
    bool serializeCoverSheet(AbstractPDLWriter& writer) override;
    std::size_t count(RecipientList list) override;
    JobRecipient recipient(RecipientList list, std::size_t position) override;
    JobTexts texts() override;
    CoverPageTemplate coverPageTemplate() override;

    /// All attribute lines of this mode.
    static std::string attributeLines(Pdl pdl);
    /// The cover page, with "Fax Cover Sheet" on it and this recipient and note.
    static std::string coverPage(const std::string& name = "Ann",
                                 const std::string& note = " (Please call back) ");

    bool hasRecipients = true;
    bool writesAttributes = true;
    bool writesCoverPage = true;
    bool cover = false;
    std::string mailbox = "12";
    std::string creditCard = "4929";
    std::string coverName = "Ann";
    std::string coverNote = " (Please call back) ";
    std::string behindCoverPage;    ///< what the component writes too much
    std::size_t recipientCount = 1; ///< how many the job claims to have; one is written
    std::function<void()> beforeCoverPage = [] {};
    std::vector<std::string> calls;

private:
    Pdl pdl_ = Pdl::dsc;
};

/// 2024-03-05 14:07, by "quelm-driver", titled "A letter".
JobFacts someFacts();

/// The job of `session` with `document` as one text.
std::string writtenJob(FakeFaxSession& session, const Document& document, Pdl pdl,
                       const JobFacts& facts = someFacts());

/// PostScript with one page for each text.
std::string postScriptPages(const std::vector<std::string>& texts);

/// What Ghostscript made of a job.
struct Rendering {
    int exitStatus = 0;
    std::string messages;           ///< everything that it had to say
    std::vector<std::string> pages; ///< the text on each page, without blanks at either end
};

/// Gives Ghostscript a file and reads the text on its pages.
Rendering render(const std::string& path);

/// Runs Ghostscript, which must succeed.
void runGhostscript(const std::vector<std::string>& arguments);

} // namespace quelm::tests

#endif
