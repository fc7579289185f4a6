// A small component with one window of every widget, and its broken relatives.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "component/model/fax_job.h"
#include "component/model/recipient.h"
#include "host/calls.h"
#include "host/fax_session.h"
#include "host/print_stream.h"

#include <cstring>
#include <stdexcept>
#include <string>

#define COMPONENT_EXPORT extern "C" __attribute__((visibility("default")))

// Each macro WITHOUT_... makes the library lack that one thing.

COMPONENT_EXPORT const char* const _QuelmSODisplayName = "Test Component";
#ifndef WITHOUT_VERSION
COMPONENT_EXPORT const char* const _QuelmSOVersion =
#    ifdef EMPTY_VERSION
    nullptr;
#    else
    "0.1";
#    endif
#endif
COMPONENT_EXPORT const char* const PBEntryTags = ",usg,nam,";
COMPONENT_EXPORT const char* const pT40CoverPageHeader = "header";
COMPONENT_EXPORT const char* const pT40CoverPageTrailer = "trailer";
COMPONENT_EXPORT const char* const _QuelmSOExportList =
#ifdef LIST_WITHOUT_COMMAS
    "InitializeFaxComponent";
#else
    ",InitializeFaxComponent,Fired,Throws,ThrowsNumber,Asks,AsksAgain,MakeChooser,BoxFired,"
#    ifdef CONFIRMS
    "Confirms,"
#    endif
    ;
#endif

#ifdef CONFIRMS
#    define OK_BUTTON R"(<Button Name="LanFax OK Button" AddCallback="Confirms"/>)"
#else
#    define OK_BUTTON
#endif

COMPONENT_EXPORT const char* const pLanFaxXMLData =
#ifdef BROKEN_DEFINITION
    "<XmlGuiDefinition><DialogWindow Name=\"Test Window\"></XmlGuiDefinition>";
#else
    R"(<XmlGuiDefinition Version="0.1">
  <DialogWindow Name="Test Window" Title="Test" Parent="Main Driver Window" AddCallback="Fired">
    <FixedContainer Name="Fixed">
      <Label Name="Journal" Text=""/>
      <Button Name="Button" Text="_Press" AddCallback="Fired"/>
      <Button Name="Lonely Button" Text="_Lonely" AddCallback="ProvidedByNobody"/>
      <Button Name="Silent Button" Text="_Silent"/>
      <Button Name="Throwing Button" Text="_Throw" AddCallback="Throws"/>
      <Button Name="Asking Button" Text="_Ask" AddCallback="Asks"/>
      <Button Name="Twice Asking Button" Text="_Ask" AddCallback="AsksAgain"/>
      <Button Name="Chooser Button" Text="_Choose" AddCallback="MakeChooser"/>
      <Button Name="Help Button" Text="_Help" HelpTopic="LanFax" AddCallback="ProcessPushButtonHelpInvocation"/>
      <Button Name="Insensitive Button" Text="_No" Sensitivity="false" AddCallback="Fired"/>
      <Button Name="Hidden Button" Text="_No" Visibility="false" AddCallback="Fired"/>
      <ToolbarMenu Name="Toolbar"><ToolbarItem Name="Tool" Text="Tool" AddCallback="Fired"/></ToolbarMenu>
      <FixedContainer Name="Insensitive Area" Sensitivity="false"><Button Name="Inner Button" AddCallback="Fired"/></FixedContainer>
      <FixedContainer Name="Hidden Area" Visibility="false"><Button Name="Covered Button" AddCallback="Fired"/></FixedContainer>
      <TextEntry Name="Field" SetMaximum="5" AddCallback="Fired"/>
      <TextEntry Name="Read-only Field" Editable="false"/>
      <TextEntry Name="Sender Fax Name" SetMaximum="31"/>
      <CheckBox Name="Box" Text="Box" AddCallback="BoxFired"/>
      <CheckBox Name="Twin"/><CheckBox Name="Twin"/>
      <RadioButton Name="Group" AddCallback="Fired">
        <RadioButtonItem Name="First Item" Text="First"/><RadioButtonItem Name="Second Item"/>
        <RadioButtonItem Name="Third Item" Sensitivity="false"/>
      </RadioButton>
      <ComboBoxMain Name="Combo" AddCallback="Fired">
        <ComboBoxItem Name="Standard"/><ComboBoxItem Name="Fine" Text="Very Fine"/><ComboBoxItem Name="None" Visibility="false"/>
      </ComboBoxMain>
      <ComboBoxMain Name="Empty Combo"/>
      <SpinBox Name="Hour" AdjDefaultValue="12" AdjLowerLimit="1" AdjUpperLimit="12" AdjIncrement="1" AddCallback="Fired"/>
      <NotebookSet Name="Tabs" AddCallback="Fired"><NotebookPage Name="Page A" Text="A"/><NotebookPage Name="Page B" Text="B"><Button Name="Page Button" AddCallback="Fired"/></NotebookPage></NotebookSet>
      <ListBox Name="Many" SelectionMode="Multiple" AddListColumn1="Name" AddListColumn2="Number" AddCallback="Fired"/>
      <ListBox Name="One" AddListColumn1="Name" AddCallback="Fired"/>
      <CheckBox Name="LanFax Dialing Prefix"/><TextEntry Name="LanFax Dialing Prefix Info" SetMaximum="4"/>
      )" OK_BUTTON R"(
    </FixedContainer>
  </DialogWindow>
  <DialogWindow Name="Self-closing Window" Title="Second" Visibility="false" AddCallback="ProvidedByNobody"/>
</XmlGuiDefinition>)";
#endif

namespace {

/// What a host told the job: "PDLMode=DSC;".
std::string parameters;

/// Appends to the label "Journal" what was called, and by which widget.
void journal(const std::string& entry)
{
    host::TextBuffer before;
    GetWidgetPropertyByName(host::in("Journal"), host::in("WidgetText"), before.text, nullptr, nullptr,
                            nullptr);
    host::setWidgetText("Journal", (std::string(before.text) + entry + ";").c_str());
}

void answered(_GtkDialog* dialog, int response)
{
    journal("answer " + std::to_string(response) + (dialog == nullptr ? " without dialog" : ""));
    CloseCurrentPopupDialog();
}

void answeredWithQuestion(_GtkDialog* /*dialog*/, int /*response*/)
{
    CloseCurrentPopupDialog();
    host::askQuestion(reinterpret_cast<void (*)(_GtkWidget*, void*)>(reinterpret_cast<void (*)()>(answered)),
                      "Second?");
}

using Response = void (*)(_GtkDialog*, int);

void ask(Response response, const char* text)
{
    host::askQuestion(reinterpret_cast<void (*)(_GtkWidget*, void*)>(reinterpret_cast<void (*)()>(response)),
                      text);
}

} // namespace

COMPONENT_EXPORT void Fired(_GtkWidget* /*widget*/, GTKObject* object)
{
    journal(object == nullptr ? "called" : object->getObjectName());
}

COMPONENT_EXPORT void BoxFired(_GtkWidget* /*widget*/, GTKObject* object)
{
    journal(object->getObjectName());
}

COMPONENT_EXPORT void Throws() { throw std::runtime_error("out of ideas"); }

#ifndef WITHOUT_LISTED_FUNCTION
COMPONENT_EXPORT void ThrowsNumber() { throw 7; }
#endif

COMPONENT_EXPORT void Asks() { ask(answered, "First?"); }

#ifdef CONFIRMS
/// Fails or asks while a box is ticked.
COMPONENT_EXPORT void Confirms()
{
    bool ticked = false;
    if (host::readTicked("Box", ticked) && ticked)
        throw std::runtime_error("no room");
    if (host::readTicked("LanFax Dialing Prefix", ticked) && ticked)
        ask(answered, "Really?");
}
#endif

COMPONENT_EXPORT void AsksAgain() { ask(answeredWithQuestion, "First?"); }

COMPONENT_EXPORT void MakeChooser()
{
    static GTKObject* chooser = nullptr;
    if (chooser == nullptr) {
        chooser = new GTKObject;
        chooser->createObject(host::widget("Test Window"), host::in("FileSelection"), host::in("Load..."),
                              true);
        chooser->setObjectName(host::in("Chooser"));
        chooser->addGTKObjectToList(host::in("Chooser"));
        chooser->setWidgetProperty(host::in("FileSelButtonCBFunc"), host::in("ok_button"), [] {
            host::TextBuffer path;
            host::readText("Chooser", path);
            journal(std::string("ok ") + path.text);
            host::hide("Chooser");
        });
        chooser->setWidgetProperty(host::in("FileSelButtonCBFunc"), host::in("cancel_button"),
                                   [] { journal("cancel"); });
        chooser->setSignalHandler(
            [] {
                journal("closed");
                host::hide("Chooser");
            },
            host::in("delete_event"));
        chooser->setWidgetProperty(host::in("Value"), host::in("/phonebooks/*.xdb"));
    }
    chooser->setWidgetProperty(host::in("Visibility"), true);
}

#ifndef WITHOUT_ENTRY_POINT
COMPONENT_EXPORT int InitializeFaxComponent()
{
    if (!pDriverDirector->parseXMLBuffer(host::in(pLanFaxXMLData)))
        return 0;
#    ifdef START_FAILS
    return 0;
#    endif
#    ifdef START_MISSES_WIDGET
    if (host::widget("Fax PB List") == nullptr)
        return 0;
#    endif
#    ifdef START_THROWS
    throw std::runtime_error("cannot begin");
#    endif
#    ifdef IMPORTS_UNKNOWN
    extern void notOfAnyHost();
    notOfAnyHost();
#    endif
    static Tarvik40Fax job;
    job.coverRecipientText = "Zoe of an earlier job";
    job.dialingPrefix = "9";
    job.senderEmail = "ann@example.org";
    pFaxSession = &job;
    pDriverDirector->registerResource(host::in("FaxSession"), &job);
    GTKObject factory;
    for (const char* name : {"Ann", "Bob", "Cid"}) {
        const char* row[] = {name, "1", nullptr};
        host::addListRow(factory, host::widget("Many"), row);
        host::addListRow(factory, host::widget("One"), row);
    }
    host::show("Test Window");
    return 1;
}
#endif

// Of the fax job, what the driver calls.

Tarvik40FaxRecipientList::Tarvik40FaxRecipientList() : cursor(0), lastPositionNumber(-1) {}
Tarvik40FaxRecipientList::~Tarvik40FaxRecipientList() = default;
Tarvik40FaxRecipient::Tarvik40FaxRecipient() = default;
Tarvik40FaxRecipient::~Tarvik40FaxRecipient() = default;
Tarvik40Fax::Tarvik40Fax() = default;

bool Tarvik40Fax::setFaxParameter(char* key, void* value)
{
    parameters += std::string(key) + "=" + static_cast<char*>(value) + ";";
    return true;
}

bool Tarvik40Fax::getFaxParameter(char* key, void* out)
{
    *static_cast<bool*>(out) = std::strcmp(key, "flFaxCoverPage") == 0;
    return true;
}

#ifndef WITHOUT_JOB_FUNCTION
int Tarvik40Fax::CheckFaxInfo() { return 1; }
#endif

int Tarvik40Fax::serializeFaxJob(AbstractPDLWriter* writer)
{
    return writer->writeText(("job " + parameters).c_str()) ? 1 : 0;
}

int Tarvik40Fax::serializeFaxCoverSheet(AbstractPDLWriter* writer)
{
    writer->writeString("cover of [" + coverRecipientText + "]");
    coverRecipientText += "Ann";
    throw std::runtime_error("no paper");
}

/// Two recipients, and in place of the picks one who cannot be had.
int Tarvik40Fax::getRecipientListCount(int list)
{
    return list == RECIPIENT_LIST ? 2 : list == CUR_RECIPIENT_LIST ? 1 : 0;
}

Tarvik40FaxRecipient* Tarvik40Fax::getFaxRecipientN(int n, int list)
{
    static Tarvik40FaxRecipient ann;
    if (list == CUR_RECIPIENT_LIST)
        throw std::runtime_error("nobody there");
    return n == 0 ? &ann : nullptr;
}

int Tarvik40FaxRecipient::getRecipientType() { return SINGLE_RECIPIENT; }

const char* Tarvik40FaxRecipient::getRecipientData(const char* key)
{
    return std::strcmp(key, "RecipientPhone") == 0 ? nullptr : key;
}
