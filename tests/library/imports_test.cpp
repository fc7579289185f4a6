// The library needs the host boundary and the C and C++ libraries, and nothing else.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "tests/library/elf_file.h"
#include "tests/support/build_paths.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

namespace {

const std::set<std::string> boundary = {
    // Variables.
    "pDriverDirector",
    "pDriverGlobals",
    "pFaxSession",
    "pBiDi",
    "pEmptyString",
    // Functions.
    "GetWidgetByName",
    "GetWidgetPropertyByName",
    "SetWidgetPropertyByName",
    "PopupMessageDialog",
    "CloseCurrentPopupDialog",
    "ParsePangoMarkupString",
    "GetFeatureOptValue",
    "SetFeaturesWithDefaultValue",
    "SaveFeaturesWithCurrentValue",
    "RestoreFeaturesWithCurrentValue",
    "GetCurrentTimeWithFormat",
    "ValidateName",
    "ValidatePhoneNumber",
    "SaveString",
    "GetTokenNum",
    "itoa",
    // Classes, by member.
    "ComponentDirector::parseXMLBuffer",
    "ComponentDirector::registerResource",
    "GlobalDriverInfo::getExecutableLocation",
    "GlobalDriverInfo::getCurrentUserName",
    "GlobalDriverInfo::translateMessage",
    "GTKObject::GTKObject",
    "GTKObject::~GTKObject",
    "GTKObject::createObject",
    "GTKObject::clearListItems",
    "GTKObject::setObjectName",
    "GTKObject::getObjectName",
    "GTKObject::addGTKObjectToList",
    "GTKObject::setWidgetProperty",
    "GTKObject::getWidgetProperty",
    "GTKObject::setSignalHandler",
    "GTKObject::setListFreezeState",
    "GTKObject::getListItemData",
    "GTKObject::getListSelectionCount",
    "GTKObject::sortIntegerGList",
    "FileObject::doesPathExist",
    "FileObject::createDirectory",
    "QuelmLegacyDatabase::QuelmLegacyDatabase",
    "QuelmLegacyDatabase::~QuelmLegacyDatabase",
    "QuelmLegacyDatabase::openDatabase",
    "QuelmLegacyDatabase::createDatabase",
    "QuelmLegacyDatabase::reopenDatabase",
    "QuelmLegacyDatabase::closeDatabase",
    "QuelmLegacyDatabase::saveRecord",
    "QuelmLegacyDatabase::serializeDatabase",
    "QuelmLegacyDatabase::getNumberOfRecords",
    "QuelmLegacyDatabaseIterator::QuelmLegacyDatabaseIterator",
    "QuelmLegacyDatabaseIterator::~QuelmLegacyDatabaseIterator",
    "QuelmLegacyDatabaseIterator::getNextRecord",
    "QuelmLegacyDatabaseIterator::getRecordN",
    "QuelmLegacyDatabaseIterator::getRecordByKey",
    "LDAPSession::LDAPSession",
    "LDAPSession::~LDAPSession",
    "LDAPSession::setServerIP",
    "LDAPSession::setBaseServerPath",
    "LDAPSession::openSession",
    "LDAPSession::bindAnonymousSession",
    "LDAPSession::appendAttribute",
    "LDAPSession::requestSearch",
    "LDAPSession::getNextEntry",
    "LDAPSession::getLastResponseItemCount",
    "LDAPSession::getLastResponseCode",
    "LDAPEntry::LDAPEntry",
    "LDAPEntry::~LDAPEntry",
    "LDAPEntry::fetchValueByAttribute",
    "LDAPEntry::clearAttributeValue",
    "BaseBiDiSession::getRecipientData",
    "BaseBiDiSession::fetchSingleOIDResponse",
};

/// What start-up code looks for without a version.
bool belongsToTheToolchain(const DynamicSymbol& symbol)
{
    return symbol.binding == "WEAK" && (symbol.name.rfind("_ITM_", 0) == 0 ||
                                        symbol.name == "__gmon_start__" || symbol.name == "__cxa_finalize");
}

std::string withoutParameters(const std::string& declaration)
{
    return declaration.substr(0, declaration.find('('));
}

/// The imports that no versioned library provides: what the host is asked for.
std::set<std::string> askedOfTheHost()
{
    std::set<std::string> names;
    for (const DynamicSymbol& symbol : ElfFile(build_paths::componentLibrary()).dynamicSymbols())
        if (!symbol.defined && symbol.version.empty() && !belongsToTheToolchain(symbol))
            names.insert(withoutParameters(demangled(symbol.name)));
    return names;
}

std::set<std::string> entries(const std::string& tag)
{
    std::set<std::string> values;
    for (const DynamicEntry& entry : ElfFile(build_paths::componentLibrary()).dynamicEntries())
        if (entry.tag == tag)
            values.insert(entry.value);
    return values;
}

TEST(LibraryImports, AreAskedOfTheBoundaryOnly)
{
    const std::set<std::string> names = askedOfTheHost();
    for (const std::string& name : names)
        EXPECT_TRUE(boundary.count(name)) << name << " is no part of the host boundary";
    EXPECT_TRUE(names.count("pFaxSession"));
    EXPECT_TRUE(names.count("ComponentDirector::parseXMLBuffer"));
    EXPECT_TRUE(names.count("GetWidgetByName"));
}

TEST(LibraryImports, ComeWithVersionsFromTheCAndCxxLibraries)
{
    for (const DynamicSymbol& symbol : ElfFile(build_paths::componentLibrary()).dynamicSymbols())
        if (!symbol.defined && !symbol.version.empty()) {
            const std::string provider = symbol.version.substr(0, symbol.version.find('_'));
            const std::set<std::string> known = {"GLIBC", "GLIBCXX", "CXXABI", "GCC"};
            EXPECT_TRUE(known.count(provider)) << symbol.name << "@" << symbol.version;
        }
}

TEST(LibraryImports, HoldNoCatalogueOrCharacterSetFunctionOfTheCLibrary)
{
    // The library brings its own; a call that left it would find the host's.
    const std::set<std::string> own = {"gettext",      "dgettext",       "dcgettext",
                                       "ngettext",     "dngettext",      "dcngettext",
                                       "textdomain",   "bindtextdomain", "bind_textdomain_codeset",
                                       "iconv_open",   "iconv",          "iconv_close",
                                       "libiconv_open"};
    for (const DynamicSymbol& symbol : ElfFile(build_paths::componentLibrary()).dynamicSymbols())
        EXPECT_TRUE(symbol.defined || !own.contains(symbol.name)) << symbol.name;
}

TEST(LibraryFile, NeedsTheCAndCxxLibrariesOnly)
{
    std::set<std::string> allowed = {"libc.so.6", "libm.so.6", "libstdc++.so.6", "libgcc_s.so.1"};
    const std::set<std::string> needed = entries("NEEDED");
    EXPECT_TRUE(needed.count("libc.so.6"));
    for (const std::string& name : needed)
        EXPECT_TRUE(allowed.count(name)) << name;
}

TEST(LibraryFile, BearsItsFileNameAsItsName)
{
    EXPECT_EQ(entries("SONAME"), std::set<std::string>{"libBramblecorLanFax.so"});
    const std::string path = build_paths::componentLibrary();
    EXPECT_EQ(path.substr(path.rfind('/') + 1), "libBramblecorLanFax.so");
}

TEST(LibraryFile, HasNoRunPathOfTheBuildMachine)
{
    EXPECT_EQ(entries("RPATH"), std::set<std::string>{});
    EXPECT_EQ(entries("RUNPATH"), std::set<std::string>{});
}

TEST(LibraryFile, HasNoTextRelocations)
{
    EXPECT_EQ(entries("TEXTREL"), std::set<std::string>{});
    for (const std::string& flags : entries("FLAGS"))
        EXPECT_EQ(flags.find("TEXTREL"), std::string::npos) << flags;
}

TEST(LibraryFile, AsksForNoExecutableStack)
{
    EXPECT_EQ(ElfFile(build_paths::componentLibrary()).stackFlags(), "RW");
}

TEST(LibraryFile, CallsItsOwnFunctionsWithoutLookingThemUp)
{
    // A host may define functions of the same names; they must not come in between.
    std::set<std::string> own;
    for (const DynamicSymbol& symbol : ElfFile(build_paths::componentLibrary()).dynamicSymbols())
        if (symbol.defined && symbol.type == "FUNC")
            own.insert(symbol.name);
    ASSERT_TRUE(own.count("gettext"));
    const auto names = ElfFile(build_paths::componentLibrary()).relocatedNames();
    ASSERT_FALSE(names.empty());
    for (const std::string& name : names)
        EXPECT_FALSE(own.count(name)) << name;
}

} // namespace
