// The library exports what hosts look up, as the kind that they expect, and nothing else.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "tests/library/elf_file.h"
#include "tests/support/build_paths.h"
#include "tests/support/entry_points.h"

#include <gtest/gtest.h>

#include <iterator>
#include <map>
#include <set>
#include <string>

namespace {

const std::set<std::string> descriptorObjects = {
    "_QuelmSODisplayName", "_QuelmSOVersion",     "_QuelmSOExportList",   "PBEntryTags",
    "pLanFaxXMLData",      "pT40CoverPageHeader", "pT40CoverPageTrailer",
};

/// Beside those of the export list.
const std::set<std::string> otherFunctions = {
    // Callable by hosts without standing in the export list.
    "T40UpdateCoverSheetSenderInfoSummary",
    "T40RemoveAllFaxRecipients",
    "T40RemoveSingleFaxRecipientTest",
    "T40RemoveSingleFaxRecipient",
    "T40RemoveMultipleFaxRecipientsTest",
    "T40RemoveMultipleFaxRecipients",
    "SaveFaxCoverSheetSetupDialogOption",
    // Message catalogues.
    "gettext",
    "dgettext",
    "dcgettext",
    "ngettext",
    "textdomain",
    "bindtextdomain",
    "bind_textdomain_codeset",
    // Character sets.
    "libiconv_open",
    "libiconv",
    "libiconv_close",
    "iconv_canonicalize",
};

/// The declarations of the member functions, std::string spelled short.
const std::set<std::string> memberFunctions = {
    "Tarvik40Fax::Tarvik40Fax()",
    "Tarvik40Fax::getFaxParameter(char*, void*)",
    "Tarvik40Fax::setFaxParameter(char*, void*)",
    "Tarvik40Fax::addFaxRecipient(Tarvik40FaxRecipient*, bool)",
    "Tarvik40Fax::getCurrentFaxRecipient(int)",
    "Tarvik40Fax::getFaxRecipientN(int, int)",
    "Tarvik40Fax::getRecipientListCount(int)",
    "Tarvik40Fax::removeFaxRecipient(Tarvik40FaxRecipient*, bool)",
    "Tarvik40Fax::removeFaxRecipientN(int, bool)",
    "Tarvik40Fax::isFaxRecipientAlreadyInList(std::string&)",
    "Tarvik40Fax::removeAllFaxRecipients(int)",
    "Tarvik40Fax::clearAllFaxRecipients(int)",
    "Tarvik40Fax::updatePBEntryList(int)",
    "Tarvik40Fax::appendTmpFaxRecipientList()",
    "Tarvik40Fax::assembleGroupMemberListData(std::string&)",
    "Tarvik40Fax::setGroupRecipientList(bool)",
    "Tarvik40Fax::serializeFaxJob(AbstractPDLWriter*)",
    "Tarvik40Fax::serializeFaxOptions(AbstractPDLWriter*)",
    "Tarvik40Fax::serializeRecipients(AbstractPDLWriter*)",
    "Tarvik40Fax::serializeSendAfterOption(AbstractPDLWriter*, std::string&)",
    "Tarvik40Fax::CheckFaxInfo()",
    "Tarvik40Fax::serializeFaxCoverSheet(AbstractPDLWriter*)",
    "Tarvik40Fax::getCoverSheetRecipientNameText(std::string*)",
    "Tarvik40Fax::invokeRecipientInfoUI(Tarvik40FaxRecipient*)",
    "Tarvik40Fax::invokeGroupInfoUI(Tarvik40FaxRecipient*)",

    "Tarvik40FaxRecipientList::Tarvik40FaxRecipientList()",
    "Tarvik40FaxRecipientList::~Tarvik40FaxRecipientList()",
    "Tarvik40FaxRecipientList::addFaxRecipient(Tarvik40FaxRecipient*)",
    "Tarvik40FaxRecipientList::getFaxRecipientN(int)",
    "Tarvik40FaxRecipientList::removeFaxRecipient(Tarvik40FaxRecipient*)",
    "Tarvik40FaxRecipientList::removeAllFaxRecipients()",
    "Tarvik40FaxRecipientList::clearAllFaxRecipients()",
    "Tarvik40FaxRecipientList::walkFaxRecipientList(bool)",
    "Tarvik40FaxRecipientList::appendRecipientList(Tarvik40FaxRecipientList*)",
    "Tarvik40FaxRecipientList::getFaxRecipientByKey(std::string&)",
    "Tarvik40FaxRecipientList::recipientListSize()",
    "Tarvik40FaxRecipientList::getListObject[abi:cxx11]()",

    "Tarvik40FaxRecipient::Tarvik40FaxRecipient()",
    "Tarvik40FaxRecipient::~Tarvik40FaxRecipient()",
    "Tarvik40FaxRecipient::setRecipientType(int)",
    "Tarvik40FaxRecipient::getRecipientType()",
    "Tarvik40FaxRecipient::getRecipientData(char const*)",
    "Tarvik40FaxRecipient::setRecipientData(char const*, char const*)",
    "Tarvik40FaxRecipient::setRecipientData(char const*, std::string&)",
    "Tarvik40FaxRecipient::cleanseFaxNumber()",
    "Tarvik40FaxRecipient::assembleXMLRecipientData(std::string*)",
    "Tarvik40FaxRecipient::assembleFaxRcptPDLString(char*, char*)",
    "Tarvik40FaxRecipient::serializeRecipientToDatabase(QuelmLegacyDatabase*)",
    "Tarvik40FaxRecipient::serializeUserToDatabase(QuelmLegacyDatabase*)",
    "Tarvik40FaxRecipient::serializeGroupToDatabase(QuelmLegacyDatabase*)",
};

std::string declaration(const std::string& mangledName)
{
    static const std::string longForm =
        "std::__cxx11::basic_string<char, std::char_traits<char>, std::allocator<char> >";
    std::string text = demangled(mangledName);
    for (auto at = text.find(longForm); at != std::string::npos; at = text.find(longForm))
        text.replace(at, longForm.size(), "std::string");
    return text;
}

class LibraryExports : public testing::Test {
protected:
    /// The declarations of the exported C++ or C functions.
    std::set<std::string> exported(const std::string& type, bool cplusplus) const
    {
        std::set<std::string> result;
        for (const DynamicSymbol& symbol : symbols)
            if (symbol.type == type && (symbol.name.rfind("_Z", 0) == 0) == cplusplus)
                result.insert(declaration(symbol.name));
        return result;
    }

    const std::vector<DynamicSymbol> symbols = [] {
        std::vector<DynamicSymbol> defined;
        for (DynamicSymbol& symbol : ElfFile(build_paths::componentLibrary()).dynamicSymbols())
            if (symbol.defined)
                defined.push_back(std::move(symbol));
        return defined;
    }();
};

TEST_F(LibraryExports, AreTheDescriptorObjectsAsData)
{
    EXPECT_EQ(exported("OBJECT", false), descriptorObjects);
    EXPECT_EQ(exported("OBJECT", true), std::set<std::string>{});
}

TEST_F(LibraryExports, AreDescriptorObjectsOfAPointersSize)
{
    for (const DynamicSymbol& symbol : symbols) {
        const bool isObject = symbol.type == "OBJECT";
        EXPECT_TRUE(!isObject || symbol.size == static_cast<long long>(sizeof(char*))) << symbol.name;
    }
}

TEST_F(LibraryExports, AreTheCallbacksAndLibraryFunctionsWithCLinkage)
{
    std::set<std::string> functions = otherFunctions;
    functions.insert(std::begin(entryPoints), std::end(entryPoints));
    EXPECT_EQ(exported("FUNC", false), functions);
}

TEST_F(LibraryExports, AreTheMemberFunctionsOfTheFaxJobAndItsRecipients)
{
    EXPECT_EQ(exported("FUNC", true), memberFunctions);
}

TEST_F(LibraryExports, HoldNothingOfAnotherKind)
{
    for (const DynamicSymbol& symbol : symbols) {
        EXPECT_TRUE(symbol.type == "FUNC" || symbol.type == "OBJECT") << symbol.name << " is " << symbol.type;
        EXPECT_EQ(symbol.binding, "GLOBAL") << symbol.name;
        EXPECT_EQ(symbol.version, "") << symbol.name;
    }
}

TEST_F(LibraryExports, HoldEachConstructorOnceAsCompleteAndOnceAsBaseObject)
{
    std::map<std::string, int> constructors;
    for (const DynamicSymbol& symbol : symbols)
        if (symbol.name.find("C1Ev") != std::string::npos || symbol.name.find("C2Ev") != std::string::npos)
            ++constructors[declaration(symbol.name)];
    const std::map<std::string, int> expected = {
        {"Tarvik40Fax::Tarvik40Fax()", 2},
        {"Tarvik40FaxRecipient::Tarvik40FaxRecipient()", 2},
        {"Tarvik40FaxRecipientList::Tarvik40FaxRecipientList()", 2},
    };
    EXPECT_EQ(constructors, expected);
}

} // namespace
