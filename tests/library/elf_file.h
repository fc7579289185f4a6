// What a shared library shows to the dynamic linker, read with readelf.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef TESTS_LIBRARY_ELF_FILE_H
#define TESTS_LIBRARY_ELF_FILE_H

#include <string>
#include <vector>

/// One line of a library's dynamic symbol table.
struct DynamicSymbol {
    std::string name;    ///< as the linker sees it (mangled), without its version
    std::string version; ///< "GLIBC_2.34", empty when the symbol has none
    std::string type;    ///< "FUNC", "OBJECT", "NOTYPE", ...
    std::string binding; ///< "GLOBAL", "WEAK", "UNIQUE", "LOCAL"
    bool defined;        ///< false: imported
    long long size;      ///< in bytes
};

/// One entry of a library's dynamic section: "NEEDED" with "libc.so.6", "SONAME" with the name, "FLAGS"
/// with "TEXTREL", ...
struct DynamicEntry {
    std::string tag;
    std::string value;
};

/// A library file, of 64 or 32 bits. Every reader throws std::runtime_error, with what readelf said, when
/// the file cannot be read or its table is empty.
class ElfFile {
public:
    explicit ElfFile(std::string path);

    std::vector<DynamicSymbol> dynamicSymbols() const;
    std::vector<DynamicEntry> dynamicEntries() const;

    /// The names that relocations refer to: what the dynamic linker looks up in all loaded libraries.
    std::vector<std::string> relocatedNames() const;

    /// The flags of the stack's program header: "RW", or "RWE" for an executable stack.
    std::string stackFlags() const;

    /// Whether the dynamic linker closes the tables that it fills to writing (RELRO).
    bool closesItsTables() const;

private:
    std::vector<std::string> readelf(const std::string& option) const;

    std::string path_;
};

/// The C++ declaration behind a mangled name, or the name itself when it is a C one.
std::string demangled(const std::string& name);

#endif
