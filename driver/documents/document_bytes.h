// A document's bytes, wherever they are.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_DOCUMENTS_DOCUMENT_BYTES_H
#define DRIVER_DOCUMENTS_DOCUMENT_BYTES_H

#include <cstddef>
#include <cstdint>
#include <string>

namespace quelm {

/// What is read piece by piece and in any order.
class DocumentBytes {
public:
    virtual ~DocumentBytes() = default;

    /// The document as the user named it.
    virtual const std::string& path() const = 0;

    /// How many bytes there are.
    virtual std::uint64_t size() const = 0;

    /// Copies at most `size` bytes from `offset` on; fewer only at the end. Throws quelm::Error when they
    /// cannot be read, or the document became shorter meanwhile.
    virtual std::size_t read(std::uint64_t offset, char* bytes, std::size_t size) const = 0;

protected:
    DocumentBytes() = default;
    DocumentBytes(const DocumentBytes&) = default;
    DocumentBytes(DocumentBytes&&) = default;
    DocumentBytes& operator=(const DocumentBytes&) = default;
    DocumentBytes& operator=(DocumentBytes&&) = default;
};

} // namespace quelm

#endif
