// Tests of finding a document in its file. What is refused, and from where it is read, is tested with
// documents. SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/documents/document_file.h"

#include "tests/driver/jobs/job_support.h"

namespace quelm::tests {
namespace {

using DocumentFileTest = JobTest;

std::string contentOf(const FileHandle& opened)
{
    return tests::contentOf("/proc/self/fd/" + std::to_string(opened.get()));
}

TEST_F(DocumentFileTest, WhatTheDocumentIsItsContentSays)
{
    EXPECT_FALSE(DocumentFile(file("a.pdf", "%!PS\nshowpage\n")).isPdf());
    EXPECT_TRUE(DocumentFile(file("a.ps", "%PDF-1.4\n")).isPdf());
    EXPECT_TRUE(DocumentFile(file("a.eps", "%!PS-Adobe-3.0 EPSF-3.0\n")).isEncapsulated());
    EXPECT_FALSE(DocumentFile(file("b.eps", "%!PS-Adobe-3.0\n%EPSF-3.0\n")).isEncapsulated());
}

TEST_F(DocumentFileTest, ItsFileHoldsTheDocumentFromTheStart)
{
    EXPECT_EQ(contentOf(DocumentFile(file("a.pdf", "%PDF-1.4\nx")).copy()), "%PDF-1.4\nx");
    DocumentFile wrapped(file("a.prn", "\x1b%-12345X@PJL JOB\r\n@PJL ENTER LANGUAGE=PDF\r\n%PDF-1.4\nx"));
    EXPECT_EQ(contentOf(wrapped.copy()), "%PDF-1.4\nx");
}

} // namespace
} // namespace quelm::tests
