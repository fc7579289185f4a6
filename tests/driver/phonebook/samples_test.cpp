// Files as other programs write them, and exactly what comes out of each.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/phonebook/import.h"
#include "tests/driver/phonebook/phonebook_folder.h"
#include "tests/support/build_paths.h"

namespace quelm {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;

class SamplesTest : public test::PhonebookTest {
protected:
    /// Imports a sample; returns what the phonebook holds then, as our own CSV without its first line.
    std::string imported(const std::string& sample, bool rename = false)
    {
        ImportOptions options;
        options.settling.rename = rename;
        report = importFile(place, samples + sample, options);
        for (const auto& line : refusalLines(report))
            ADD_FAILURE() << line;
        summary = importSummary(report);
        const auto text = exportText(place, FileFormat::csv).done;
        return text.substr(text.find('\n') + 1);
    }

    const std::string samples = build_paths::inProject("tests/driver/phonebook/samples/");
    ImportReport report;
    std::string summary;
};

TEST_F(SamplesTest, EnglishOutlook)
{
    EXPECT_EQ(imported("outlook-english.csv"),
              "Anne Miller,+1 (555) 010-1234,\"Acme, Inc.\",+1 (555) 010-1000,anne@acme.example,entry,\n"
              "Anne Miller - home,+1 555 010 9999,\"Acme, Inc.\",+1 555 010 8888,anne@acme.example,entry,\n"
              "Robert J. O'Neil,\"555-0102,12\",Bolt & Nut,555-0103,rob@bolt.example,entry,\n"
              "Zenith Print,555-0110,Zenith Print,,,entry,\n"
              "Suppliers,,,,,group,\"Anne Miller,Robert J. O'Neil\"\n"
              "Key Accounts,,,,,group,Anne Miller\n");
    EXPECT_THAT(summary,
                HasSubstr("2 groups hold the people of their categories: Suppliers, Key Accounts\n"));
    EXPECT_THAT(summary, HasSubstr("1 person without a fax number was passed over\n"));
    EXPECT_THAT(summary, HasSubstr("1 extension is dialled behind a pause"));
}

TEST_F(SamplesTest, GermanOutlook)
{
    EXPECT_EQ(
        imported("outlook-german.csv"),
        "Jürgen Groß,+49 221 12345-67,Käserei Süd GmbH & Co. KG,+49 221 12345-0,jg@kaeserei.example,entry,\n"
        "Änne Maria Öztürk - home,030 5550199,,030 5550198,,entry,\n"
        "Büro,,,,,group,Jürgen Groß\n"
        "Kunden,,,,,group,\"Jürgen Groß,Änne Maria Öztürk - home\"\n");
    EXPECT_EQ(report.charset, "windows-1252");
    EXPECT_THAT(summary, HasSubstr("read as windows-1252; say --charset when names look wrong\n"));
}

TEST_F(SamplesTest, OldGoogleWithSeveralValuesInAField)
{
    EXPECT_EQ(imported("google-old.csv"),
              "田中 太郎,+81 3-5550-1001,株式会社田中,+81 3-5550-1000,taro@tanaka.example,entry,\n"
              "田中 太郎 - 2,+81 3-5550-1002,株式会社田中,+81 3-5550-1000,taro@tanaka.example,entry,\n"
              "Zoë Brontë,+44 20 7946 0017,,+44 7700 900123,zoe@home.example,entry,\n"
              "Zoë Brontë - home,+44 20 7946 0018,,+44 7700 900123,zoe@home.example,entry,\n"
              "取引先,,,,,group,田中 太郎\n");
    EXPECT_EQ(report.withoutNumber, 1U);
    EXPECT_FALSE(report.charsetGuessed);
}

TEST_F(SamplesTest, NewGoogle)
{
    EXPECT_EQ(imported("google-new.csv"),
              "Мария Петрова,+7 495 555-01-02,ООО Ромашка,+7 495 555-01-01,maria@romashka.example,entry,\n"
              "Γιώργος Παπαδόπουλος,+30 21 0555 0101,,+30 21 0555 0102,,entry,\n"
              "Поставщики,,,,,group,Мария Петрова\n");
}

TEST_F(SamplesTest, ASpreadsheetWithSemicolons)
{
    EXPECT_EQ(imported("calc-semicolon.csv", true),
              "Groß Jürgen,0221 1234567,Käserei,0221 12345,jg@kaeserei.example,entry,\n"
              "Łukasz Żółć,+48 22 555 01 01,,,,entry,\n"
              "דוד כהן,+972 3 555 0101,,,,entry,\n");
    EXPECT_THAT(summary, HasSubstr("calc-semicolon.csv:3: \"Groß, Jürgen\" becomes \"Groß Jürgen\"\n"));
}

TEST_F(SamplesTest, ASpreadsheetInUtf16WithTabs)
{
    EXPECT_EQ(imported("calc-utf16.csv"), "王小明,+86 10 5550 1001,北京公司,,,entry,\n"
                                          "李伟,+86 10 5550 1002,,,,entry,\n");
    EXPECT_EQ(report.charset, "UTF-16LE");
    EXPECT_FALSE(report.charsetGuessed);
}

TEST_F(SamplesTest, GermanThunderbird)
{
    EXPECT_EQ(imported("thunderbird-german.csv"),
              "Ann Lee,555-0122,Lee & Söhne,555-0120,ann@lee.example,entry,\n");
}

TEST_F(SamplesTest, AnAddressBookInLdif)
{
    EXPECT_EQ(imported("thunderbird.ldif"), "Ann Lee,555-0122,Lee & Söhne,555-0120,ann@lee.example,entry,\n"
                                            "Zoë Brontë,+44 20 7946 0017,,,zoe@home.example,entry,\n"
                                            "Friends,,,,,group,\"Ann Lee,Zoë Brontë\"\n");
    EXPECT_EQ(report.withoutNumber, 1U);
}

TEST_F(SamplesTest, ADirectoryInLdif)
{
    EXPECT_EQ(imported("directory.ldif"),
              "Grace Miller,+1 555 0130,Example,+1 555 0132,grace@example.com,entry,\n"
              "Grace Miller - 2,+1 555 0131,Example,+1 555 0132,grace@example.com,entry,\n"
              "Fax Team,,,,,group,Grace Miller\n");
}

TEST_F(SamplesTest, CardsOfPhones)
{
    EXPECT_EQ(imported("phone-21.vcf"),
              "Jörg Müller,\"+493055501,41\",Müller & Söhne,+493055501,jm@mueller.example,entry,\n"
              "花子 鈴木 - home,0355500142,,,,entry,\n"
              "René Lefèvre,+33155500143,,,,entry,\n");
}

TEST_F(SamplesTest, CardsInTheCharsetThatTheyName)
{
    EXPECT_EQ(imported("phone-shift-jis.vcf"), "田中 太郎,0355500150,,,,entry,\n");
    EXPECT_EQ(report.charset, "SHIFT_JIS");
    EXPECT_FALSE(report.charsetGuessed);
}

TEST_F(SamplesTest, CardsWithLabelsOfTheirOwn)
{
    EXPECT_EQ(imported("labels-30.vcf"),
              "João Silva,+351 21 555 0160,Padaria Silva,+351 91 555 0162,joao@silva.example,entry,\n"
              "João Silva - 2,+351 21 555 0161,Padaria Silva,+351 91 555 0162,joao@silva.example,entry,\n"
              "Mei Ng,+65 6555 0164,,,,entry,\n"
              "Mei Ng - 2,+65 6555 0165,,,,entry,\n"
              "Mei Ng - home,+65 6555 0163,,,,entry,\n"
              "Fornecedores,,,,,group,João Silva\n"
              "Lisboa,,,,,group,\"João Silva,Mei Ng\"\n");
}

TEST_F(SamplesTest, TelephoneUrisWithExtensions)
{
    EXPECT_EQ(imported("uri-40.vcf"), "Åsa Öberg,\"+46-8-555-0170,12\",,+46-8-555-0171,,entry,\n");
    EXPECT_EQ(report.extensions, 1U);
}

/// A file that ends anywhere, or lacks a byte, is read or refused; nothing else comes of it.
TEST_F(SamplesTest, CutAnywhereTheyAreReadOrRefused)
{
    ImportOptions options;
    options.dryRun = true;
    options.skipBad = true;
    for (const auto& file : std::filesystem::directory_iterator(samples)) {
        const auto whole = contentOf(file.path());
        std::size_t outcomes = 0;
        for (std::size_t size = 0; size < whole.size(); size += 1 + whole.size() / 25) {
            auto lacking = whole;
            lacking.erase(size, 1);
            for (const auto& text : {whole.substr(0, size), lacking}) {
                writeFile(folder / "cut", text);
                try {
                    importFile(place, folder / "cut", options);
                } catch (const Error& error) {
                    EXPECT_THAT(error.what(), HasSubstr("cut"));
                }
                ++outcomes;
            }
        }
        EXPECT_GT(outcomes, 40U) << file.path();
    }
    EXPECT_FALSE(exists());
}

} // namespace
} // namespace quelm
