// What the tests of the print path share: a folder of their own, a fax session to write, and Ghostscript.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "tests/driver/jobs/job_support.h"

#include "base/error.h"
#include "base/process.h"
#include "base/texts.h"
#include "driver/jobs/output.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <stdexcept>

namespace quelm::tests {
namespace {

namespace fs = std::filesystem;

std::string trimmed(const std::string& text)
{
    const auto isBlank = [](char byte) {
        return byte == ' ' || byte == '\n' || byte == '\f' || byte == '\r';
    };
    const auto begin = std::find_if_not(text.begin(), text.end(), isBlank);
    const auto end = std::find_if_not(text.rbegin(), text.rend(), isBlank).base();
    return begin < end ? std::string(begin, end) : std::string();
}

} // namespace

JobTest::JobTest()
{
    const char* before = std::getenv("TMPDIR");
    temporaryFolderBefore_ = before != nullptr ? before : "";
    folder_ = (fs::temp_directory_path() / "quelm-jobs-XXXXXX").string();
    if (::mkdtemp(folder_.data()) == nullptr)
        throw std::runtime_error("no temporary folder");
    ::setenv("TMPDIR", folder_.c_str(), 1);
}

JobTest::~JobTest()
{
    if (temporaryFolderBefore_.empty())
        ::unsetenv("TMPDIR");
    else
        ::setenv("TMPDIR", temporaryFolderBefore_.c_str(), 1);
    std::error_code ignored;
    fs::remove_all(folder_, ignored);
}

std::string JobTest::file(const std::string& name, std::string_view content) const
{
    std::ofstream(path(name), std::ios::binary) << content;
    return path(name);
}

void JobTest::emptyUnnamedFiles() const
{
    for (const auto& entry : fs::directory_iterator("/proc/self/fd")) {
        std::error_code gone; // the iterator's own descriptor is
        const std::string file = fs::read_symlink(entry, gone).string();
        if (file.starts_with(folder_ + "/") && file.ends_with(" (deleted)"))
            fs::resize_file(entry, 0);
    }
}

std::vector<std::string> JobTest::namesInFolder() const
{
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder_))
        names.push_back(entry.path().filename().string());
    std::ranges::sort(names);
    return names;
}

std::string contentOf(const std::string& path)
{
    std::ifstream stream(path, std::ios::binary);
    if (!stream)
        return "(no file)";
    return {std::istreambuf_iterator<char>(stream), {}};
}

std::string bytesOfEveryValue(std::size_t size)
{
    std::mt19937 random{9100};
    std::string bytes(size, '\0');
    for (char& byte : bytes)
        byte = static_cast<char>(random());
    return bytes;
}

std::string errorLine(const std::function<void()>& action)
{
    try {
        action();
    } catch (const Error& error) {
        return error.what();
    }
    return {};
}

std::string certainLine(const std::function<void()>& action)
{
    return errorLine([&action] {
        try {
            action();
        } catch (const DeliveryInDoubt& doubt) {
            throw Error("in doubt: " + std::string(doubt.what()));
        }
    });
}

std::string doubtLine(const std::function<void()>& action)
{
    try {
        action();
    } catch (const DeliveryInDoubt& doubt) {
        return doubt.what();
    } catch (const Error& error) {
        return "for certain: " + std::string(error.what());
    }
    return {};
}

void FailingSink::write(std::string_view bytes)
{
    if (bytes.size() > room_)
        throw Error("the paper ran out");
    room_ -= bytes.size();
}

void FakeFaxSession::setPdl(Pdl pdl)
{
    calls.emplace_back(pdl == Pdl::dsc ? "setPdl dsc" : "setPdl pjl");
    pdl_ = pdl;
}

bool FakeFaxSession::coverPageChosen()
{
    calls.emplace_back("coverPageChosen");
    return cover;
}

bool FakeFaxSession::checkInfo()
{
    calls.emplace_back("checkInfo");
    return hasRecipients;
}

bool FakeFaxSession::serializeJob(AbstractPDLWriter& writer)
{
    calls.emplace_back("serializeJob");
    if (!writesAttributes)
        return false;
    const std::string prefix = pdl_ == Pdl::dsc ? "%%" : "@PJL COMMENT ";
    writer.writeString(prefix + "OID_ATT_FAX_COVER_SHEET TRUE;\r\n");
    writer.writeString(prefix + "OID_ATT_JOB_TYPE OID_VAL_JOB_TYPE_FAX_SEND;\n");
    writer.writeString(prefix + "OID_ATT_FAX_CONFIRMATION_SHEET TRUE;\r\n" + prefix +
                       "OID_ATT_FAX_RESOLUTION 0;\r\n" + prefix +
                       "OID_ATT_FAX_TYPE OID_VAL_FAX_TYPE_G3_14400;\r\n");
    writer.writeText((prefix + "OID_ATT_FAX_DESTINATION_PHONE \"9,5551234\";\r\n" + prefix +
                      "OID_ATT_FAX_MAILBOX \"" + mailbox + "\";\r\n")
                         .c_str());
    if (pdl_ == Pdl::dsc)
        writer.writeString("%%QLMbegin\r\n");
    if (!creditCard.empty())
        writer.writeString(prefix + "OID_ATT_CREDIT_CARD \"" + creditCard + "\";\r\n");
    if (pdl_ == Pdl::dsc)
        writer.writeString("%%QLMend\r\n");
    return true;
}

std::string FakeFaxSession::attributeLines(Pdl pdl)
{
    if (pdl == Pdl::dsc)
        return "%%OID_ATT_FAX_COVER_SHEET TRUE;\r\n"
               "%%OID_ATT_JOB_TYPE OID_VAL_JOB_TYPE_FAX_SEND;\n"
               "%%OID_ATT_FAX_CONFIRMATION_SHEET TRUE;\r\n"
               "%%OID_ATT_FAX_RESOLUTION 0;\r\n"
               "%%OID_ATT_FAX_TYPE OID_VAL_FAX_TYPE_G3_14400;\r\n"
               "%%OID_ATT_FAX_DESTINATION_PHONE \"9,5551234\";\r\n"
               "%%OID_ATT_FAX_MAILBOX \"12\";\r\n"
               "%%QLMbegin\r\n"
               "%%OID_ATT_CREDIT_CARD \"4929\";\r\n"
               "%%QLMend\r\n";
    return "@PJL COMMENT OID_ATT_FAX_COVER_SHEET TRUE;\r\n"
           "@PJL COMMENT OID_ATT_JOB_TYPE OID_VAL_JOB_TYPE_FAX_SEND;\n"
           "@PJL COMMENT OID_ATT_FAX_CONFIRMATION_SHEET TRUE;\r\n"
           "@PJL COMMENT OID_ATT_FAX_RESOLUTION 0;\r\n"
           "@PJL COMMENT OID_ATT_FAX_TYPE OID_VAL_FAX_TYPE_G3_14400;\r\n"
           "@PJL COMMENT OID_ATT_FAX_DESTINATION_PHONE \"9,5551234\";\r\n"
           "@PJL COMMENT OID_ATT_FAX_MAILBOX \"12\";\r\n"
           "@PJL COMMENT OID_ATT_CREDIT_CARD \"4929\";\r\n";
}

namespace {

constexpr const char* coverHeader = "\n%%!PS-Adobe-3.0\n%%%%Page: FaxCover 1\n%%%%BeginPageSetup\n"
                                    "     8 dict begin\n"
                                    "     /QLMFaxCoverSheetParameters <<\n"
                                    "       /RecipientName    (%s)\n"
                                    "       /RecipientCompany (%s)\n"
                                    "       /RecipientPhone   (%s)\n"
                                    "       /RecipientFax     (%s)\n"
                                    "       /RecipientEmail   (%s)\n"
                                    "       /SenderName       (%s)\n"
                                    "       /SenderCompany    (%s)\n"
                                    "       /SenderPhone      (%s)\n"
                                    "       /SenderFax        (%s)\n"
                                    "       /SenderEmail      (%s)\n"
                                    "       /CoverNote        [%s]\n"
                                    "       /Year             %s\n"
                                    "       /Month            %s\n"
                                    "       /MonthDay         %s\n"
                                    "       /Hour             %s\n"
                                    "       /Minute           %s\n"
                                    "     >> def\n";
constexpr const char* coverTrailer = "/pgsave save def\n"
                                     "%%EndPageSetup\n"
                                     "/Helvetica 24 selectfont 77 700 moveto (Fax Cover Sheet) show\n"
                                     "showpage\n"
                                     "pgsave restore\n"
                                     "end\n"
                                     "%%PageTrailer\n%% End Fax Cover Sheet Template\n";

} // namespace

std::string FakeFaxSession::coverPage(const std::string& name, const std::string& note)
{
    std::array<char, 4096> header{};
    std::snprintf(header.data(), header.size(), coverHeader, name.c_str(), "Acme", "", "555-1234", "", "", "",
                  "", "", "", note.c_str(), "2024", "03", "05", "14", "07");
    return std::string(header.data()) + coverTrailer;
}

std::size_t FakeFaxSession::count(RecipientList list)
{
    return list == RecipientList::job ? recipientCount : 0;
}

JobRecipient FakeFaxSession::recipient(RecipientList, std::size_t)
{
    return {1, "Ann", "555-1234", "Acme", "", "", mailbox};
}

JobTexts FakeFaxSession::texts()
{
    JobTexts texts;
    texts.dialingPrefix = "9";
    texts.creditCard = creditCard;
    return texts;
}

CoverPageTemplate FakeFaxSession::coverPageTemplate() { return {coverHeader, coverTrailer}; }

bool FakeFaxSession::serializeCoverSheet(AbstractPDLWriter& writer)
{
    calls.emplace_back("serializeCoverSheet");
    beforeCoverPage();
    if (!writesCoverPage)
        return false;
    const std::string page = coverPage(coverName, coverNote) + behindCoverPage;
    const auto trailer = page.find("/pgsave");
    return writer.writeText(page.substr(0, trailer).c_str()) &&
           writer.writeText(page.substr(trailer).c_str());
}

JobFacts someFacts()
{
    JobFacts facts;
    facts.title = "A letter";
    facts.creator = "quelm-driver";
    facts.now.tm_year = 124;
    facts.now.tm_mon = 2;
    facts.now.tm_mday = 5;
    facts.now.tm_hour = 14;
    facts.now.tm_min = 7;
    return facts;
}

std::string writtenJob(FakeFaxSession& session, const Document& document, Pdl pdl, const JobFacts& facts)
{
    StringSink sink;
    writeFaxJob(session, document, pdl, sink, facts);
    return sink.text;
}

std::string postScriptPages(const std::vector<std::string>& texts)
{
    std::string program = "%!PS-Adobe-3.0\n";
    for (const std::string& text : texts)
        program += "/Helvetica 12 selectfont 72 700 moveto (" + text + ") show showpage\n";
    return program;
}

Rendering render(const std::string& path)
{
    ProcessRequest request;
    request.arguments = {"gs",
                         "-q",
                         "-dSAFER",
                         "-dBATCH",
                         "-dNOPAUSE",
                         "-sDEVICE=txtwrite",
                         "-sOutputFile=" + path + ".page%d",
                         path};
    const ProcessResult result = runProcess(request);

    Rendering rendering;
    rendering.exitStatus = result.exitStatus;
    rendering.messages = result.output + result.errors;
    for (int page = 1; fs::exists(path + ".page" + std::to_string(page)); ++page) {
        const std::string name = path + ".page" + std::to_string(page);
        rendering.pages.push_back(trimmed(contentOf(name)));
        fs::remove(name);
    }
    return rendering;
}

void runGhostscript(const std::vector<std::string>& arguments)
{
    ProcessRequest request;
    request.arguments = {"gs", "-q", "-dSAFER", "-dBATCH", "-dNOPAUSE"};
    request.arguments.insert(request.arguments.end(), arguments.begin(), arguments.end());
    const ProcessResult result = runProcess(request);
    if (result.exitStatus != 0)
        throw std::runtime_error("gs failed: " + result.output + result.errors);
}

} // namespace quelm::tests
