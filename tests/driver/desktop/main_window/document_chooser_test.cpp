// Tests of choosing the document in a dialog.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/desktop/main_window/document_chooser.h"

#include "tests/driver/desktop/main_window/main_window_fixture.h"

#include <gmock/gmock.h>

namespace quelm {
namespace {

using testing::HasSubstr;

class DocumentChooserTest : public MainWindowTest {
protected:
    /// Opens the dialog by the main window's button, and waits until it shows `place`; "": any folder.
    void openChooser(const std::string& place = "")
    {
        press("Main Open Button");
        ASSERT_TRUE(loopUntil([] { return onScreen("Main Document Chooser") != nullptr; }));
        ASSERT_TRUE(loopUntil([&] { return place.empty() || shownFolder() == place; }));
    }

    static GtkFileChooser* chooser() { return GTK_FILE_CHOOSER(onScreen("Main Document Chooser")); }

    static std::string owned(gchar* text)
    {
        const std::unique_ptr<gchar, decltype(&g_free)> freed(text, g_free);
        return text == nullptr ? "" : text;
    }
    static std::string shownFolder() { return owned(gtk_file_chooser_get_current_folder(chooser())); }

    static void choose(const std::string& path)
    {
        ASSERT_NE(gtk_file_chooser_set_filename(chooser(), path.c_str()), FALSE);
        ASSERT_TRUE(loopUntil([&] { return owned(gtk_file_chooser_get_filename(chooser())) == path; }));
    }

    static void close(int response)
    {
        gtk_dialog_response(GTK_DIALOG(chooser()), response);
        ASSERT_TRUE(loopUntil([] { return onScreen("Main Document Chooser") == nullptr; }));
    }

    /// Whether the filter that is chosen first offers a file of that name.
    static bool offers(const std::string& name)
    {
        GtkFileFilterInfo info{};
        info.contains = GTK_FILE_FILTER_DISPLAY_NAME;
        info.display_name = name.c_str();
        return gtk_file_filter_filter(gtk_file_chooser_get_filter(chooser()), &info) != FALSE;
    }
};

TEST_F(DocumentChooserTest, TheChosenDocumentIsOpened)
{
    const auto path = writeFile(folder / "my letter.ps", contentOf(sampleLetter()));
    openChooser();
    choose(path);
    close(GTK_RESPONSE_ACCEPT);
    EXPECT_TRUE(loopUntil([] { return isUsable("Main Send Button"); }));
    EXPECT_THAT(window->get_title().raw(), HasSubstr("my letter.ps"));
}

TEST_F(DocumentChooserTest, CancelledNothingIsOpened)
{
    openChooser();
    choose(sampleLetter());
    close(GTK_RESPONSE_CANCEL);
    loopUntilIdle();
    EXPECT_THAT(window->get_title().raw(), testing::Not(HasSubstr("letter.ps")));
}

TEST_F(DocumentChooserTest, ItBeginsWhereADocumentWasOpenedLast)
{
    std::filesystem::create_directory(folder / "letters");
    openDocument(writeFile(folder / "letters/one.ps", contentOf(sampleLetter())));
    openChooser(folder / "letters");
    close(GTK_RESPONSE_CANCEL);
}

TEST_F(DocumentChooserTest, DocumentsAreOfferedFirst)
{
    openChooser();
    for (const auto* name : {"a.ps", "A.PS", "b.eps", "c.pdf", "d.prn"})
        EXPECT_TRUE(offers(name)) << name;
    EXPECT_FALSE(offers("e.txt"));
    close(GTK_RESPONSE_CANCEL);
}

} // namespace
} // namespace quelm
