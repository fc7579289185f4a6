// Tests of the opening of documents.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/desktop/sending/document_loading.h"

#include "base/error.h"
#include "tests/driver/desktop/main_loop.h"
#include "tests/support/temporary_folder.h"

#include <gmock/gmock.h>
#include <sys/stat.h>

#include <optional>

namespace quelm {
namespace {

using testing::HasSubstr;
using testing::Not;

std::string contentOf(const FileHandle& file)
{
    std::string content(100000, '\0');
    content.resize(readFully(file.get(), content.data(), content.size(), 0, "the pages"));
    return content;
}

std::string troubleWith(const std::string& path)
{
    try {
        static_cast<void>(loadDocument(path, {}));
        return {};
    } catch (const Error& error) {
        return error.what();
    }
}

class DocumentLoadingTest : public testing::Test {
protected:
    TemporaryFolder folder;
};

TEST_F(DocumentLoadingTest, ThePagesAreTheDocumentAsAJobCarriesIt)
{
    const auto path = writeFile(folder / "a.prn",
                                "\x1b%-12345X@PJL ENTER LANGUAGE=POSTSCRIPT\r\n%!PS\n@PJL trick\nshowpage\n");
    const auto loaded = loadDocument(path, {});
    EXPECT_EQ(loaded.document.name(), "a.prn");
    EXPECT_THAT(contentOf(loaded.pages), HasSubstr("%PJL trick\nshowpage\n"));
    EXPECT_THAT(contentOf(loaded.pages), Not(HasSubstr("OID_ATT")));
}

TEST_F(DocumentLoadingTest, ADocumentThatNoJobCanCarryIsRefusedAtOnce)
{
    EXPECT_NE(troubleWith(writeFile(folder / "a.ps", "%!PS\n(\x1b%-12345X) show showpage\n")), "");
}

TEST_F(DocumentLoadingTest, PostScriptThatFailsIsRefused)
{
    EXPECT_THAT(troubleWith(writeFile(folder / "a.ps", "%!PS\nshowpage nonsense\n")),
                HasSubstr("a.ps: page 2 cannot be faxed: "));
}

TEST_F(DocumentLoadingTest, WhatIsNoDocumentIsRefused)
{
    EXPECT_THAT(troubleWith(folder / "missing.ps"), HasSubstr("no such document"));
    EXPECT_THAT(troubleWith(writeFile(folder / "a.txt", "text")), HasSubstr("neither PostScript nor PDF"));
    EXPECT_NE(troubleWith(folder.path()), "");
}

TEST_F(DocumentLoadingTest, AFifoWithoutAWriterIsNotWaitedFor)
{
    const std::string fifo = folder / "fifo";
    ASSERT_EQ(mkfifo(fifo.c_str(), 0600), 0);
    EXPECT_THAT(troubleWith(fifo), HasSubstr("is no file"));
}

TEST_F(DocumentLoadingTest, ARequestedStopEndsTheOpening)
{
    std::stop_source stop;
    stop.request_stop();
    const auto path = writeFile(folder / "a.ps", "%!PS\nshowpage\n");
    EXPECT_THROW(static_cast<void>(loadDocument(path, stop.get_token())), Error);
}

TEST_F(DocumentLoadingTest, ARequestedStopEndsTheConversionOfAPdf)
{
    std::stop_source stop;
    stop.request_stop();
    // Ghostscript mends what it can of such a file, which takes it a while.
    const auto path = writeFile(folder / "a.pdf", "%PDF-1.4\n" + std::string(5'000'000, '\n'));
    try {
        static_cast<void>(loadDocument(path, stop.get_token()));
        FAIL();
    } catch (const Error& error) {
        EXPECT_THAT(error.what(), HasSubstr("was stopped"));
    }
}

TEST_F(DocumentLoadingTest, TheEndComesThroughTheMainLoop)
{
    std::optional<LoadingResult> result;
    DocumentLoading loading([&](const LoadingResult& told) { result = told; });
    loading.start(writeFile(folder / "a.ps", "%!PS\nshowpage\n"));
    EXPECT_TRUE(loading.running());
    ASSERT_TRUE(loopUntil([&] { return result.has_value(); }));
    ASSERT_TRUE(result->document);
    EXPECT_EQ(result->document->document.name(), "a.ps");

    result.reset();
    loading.start(folder / "missing.ps");
    ASSERT_TRUE(loopUntil([&] { return result.has_value(); }));
    EXPECT_FALSE(result->document);
    EXPECT_NE(result->trouble, "");
}

TEST_F(DocumentLoadingTest, OnlyTheDocumentOpenedLastIsTold)
{
    std::vector<std::string> names;
    DocumentLoading loading(
        [&](const LoadingResult& told) { names.push_back(told.document->document.name()); });
    loading.start(writeFile(folder / "a.ps", "%!PS\nshowpage\n"));
    loading.start(writeFile(folder / "b.ps", "%!PS\nshowpage\n"));
    ASSERT_TRUE(loopUntil([&] { return !loading.running(); }));
    loopUntilIdle();
    EXPECT_EQ(names, std::vector<std::string>{"b.ps"});
}

} // namespace
} // namespace quelm
