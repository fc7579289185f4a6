// The print-stream writers that the component writes a fax job through.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/jobs/pdl_writers.h"

#include "base/error.h"
#include "base/file_io.h"

#include <utility>

namespace quelm {

bool GuardedPdlWriter::writeText(const char* text)
{
    if (text == nullptr)
        return false;
    guard(text);
    return !failure_;
}

void GuardedPdlWriter::writeString(const std::string& text) { guard(text); }

void GuardedPdlWriter::rethrowFailure() const
{
    if (failure_)
        std::rethrow_exception(failure_);
}

void GuardedPdlWriter::guard(std::string_view text) noexcept
{
    if (failure_ || text.empty())
        return;
    try {
        take(text);
        size_ += text.size();
        endsInsideLine_ = text.back() != '\n' && text.back() != '\r';
    } catch (...) {
        failure_ = std::current_exception();
    }
}

DescriptorPdlWriter::DescriptorPdlWriter(int descriptor, std::string target)
    : descriptor_(descriptor), target_(std::move(target))
{
}

void DescriptorPdlWriter::take(std::string_view text)
{
    const WriteSignalsIgnored failuresOnly;
    writeAll(descriptor_, text, target_);
}

} // namespace quelm
