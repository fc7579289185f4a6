// The phonebook file choosers and the phonebook program.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "phonebook/phonebook_files.h"

#include "common/messages.h"
#include "common/widget_names.h"
#include "host/calls.h"
#include "phonebook/phonebook_state.h"

#include <cstdlib>
#include <vector>

GTKObject* personalPBFileDialog = nullptr;
GTKObject* sharedPBFileDialog = nullptr;

namespace {

/// What differs between the personal and the shared phonebook.
struct PhonebookFile {
    const char* chooserName;
    const char* startPattern; ///< behind the executable location
    const char* nameField;
    GTKObject*& chooser;
    std::string*& path;
    QuelmLegacyDatabase*& database;
    bool anyPathReplacesAnEmptyOne;
    void (*ok)();
    void (*cancel)();
};

const PhonebookFile personal{"PersonalPBSelectFileDialog",
                             "/db/phonebook/user/*.xdb",
                             widget_names::lanFaxPersonalPbName,
                             personalPBFileDialog,
                             personalPBPath,
                             personalPBDatabase,
                             true,
                             PersonalSelectFileDialogOk,
                             PersonalSelectFileDialogCancel};

const PhonebookFile shared{"SharedPBSelectFileDialog",
                           "/db/phonebook/*.xdb",
                           widget_names::lanFaxSharedPbName,
                           sharedPBFileDialog,
                           sharedPBPath,
                           sharedPBDatabase,
                           false,
                           SharedSelectFileDialogOk,
                           SharedSelectFileDialogCancel};

std::string executableLocation() { return pDriverGlobals->getExecutableLocation(); }

/// The title in plain text; the English one stands as it is.
std::string chooserTitle()
{
    constexpr const char* english = forTranslation("Load...");
    const char* title = translated(english);
    return title == english ? english : host::plainText(title);
}

void makeChooser(const PhonebookFile& file, GTKObject* parent)
{
    file.chooser = new GTKObject; // kept until the process ends
    GTKObject& chooser = *file.chooser;
    const std::string start = executableLocation() + file.startPattern;
    chooser.createObject(parent, host::in("FileSelection"), host::in(chooserTitle()), true);
    chooser.setObjectName(host::in(file.chooserName));
    chooser.addGTKObjectToList(host::in(file.chooserName));
    chooser.setWidgetProperty(host::in("FileSelButtonCBFunc"), host::in("ok_button"), file.ok);
    chooser.setWidgetProperty(host::in("FileSelButtonCBFunc"), host::in("cancel_button"), file.cancel);
    chooser.setSignalHandler(file.cancel, host::in("delete_event"));
    chooser.setWidgetProperty(host::in("Value"), host::in(start));
}

void invokeChooser(const PhonebookFile& file)
{
    GTKObject* parent = host::widget(widget_names::lanFaxWindow);
    if (parent == nullptr)
        return;
    if (file.chooser == nullptr)
        makeChooser(file, parent);
    file.chooser->setWidgetProperty(host::in("Visibility"), true);
}

/// Leaves a database object to the end of the process, where a search for leaks finds it in use.
void keep(QuelmLegacyDatabase* database)
{
    static auto* const kept = new std::vector<QuelmLegacyDatabase*>;
    kept->push_back(database);
}

void takeChosenFile(const PhonebookFile& file)
{
    host::TextBuffer chosen;
    host::readText(file.chooserName, chosen);
    host::setTextValue(file.nameField, chosen.c_str());
    if (file.path == nullptr)
        file.path = new std::string;
    if (*file.path != chosen.c_str() || (file.anyPathReplacesAnEmptyOne && file.path->empty())) {
        *file.path = chosen.c_str();
        if (file.database != nullptr) {
            file.database->closeDatabase();
            keep(file.database); // the current phonebook may still be it
            file.database = nullptr;
        }
    }
    host::hide(file.chooserName);
}

void cancelChooser(const PhonebookFile& file)
{
    if (file.chooser != nullptr)
        file.chooser->setWidgetProperty(host::in("Visibility"), false);
}

/// The path goes into the command as it is, without quotes: the program takes all that follows "-FP ".
void openInPhonebookProgram(const PhonebookFile& file)
{
    const std::string command =
        executableLocation() + "/fennodial -FP " + (file.path != nullptr ? *file.path : "");
    // Waits until the program ends; what became of it is the user's own affair.
    [[maybe_unused]] const int status =
        std::system(command.c_str()); // NOLINT(cert-env33-c,concurrency-mt-unsafe)
}

} // namespace

void InvokePersonalSelectFileDialog() { invokeChooser(personal); }
void InvokeSharedSelectFileDialog() { invokeChooser(shared); }
void PersonalSelectFileDialogOk() { takeChosenFile(personal); }
void SharedSelectFileDialogOk() { takeChosenFile(shared); }
void PersonalSelectFileDialogCancel() { cancelChooser(personal); }
void SharedSelectFileDialogCancel() { cancelChooser(shared); }
void OpenPersonalPB() { openInPhonebookProgram(personal); }
void OpenSharedPB() { openInPhonebookProgram(shared); }
