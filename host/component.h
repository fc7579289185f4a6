// What a host finds in the component once it has loaded it: the names to look up, and their types.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef HOST_COMPONENT_H
#define HOST_COMPONENT_H

// Load the library with dlopen (the host exports the boundary, so link it with --export-dynamic),
// read the descriptor objects, call the entry point once when the main window exists, and from
// then on call the callbacks whose names stand in the dialog definition. Everything happens on
// the one user-interface thread. Unloading frees nothing of the component: keep it loaded.

struct _GtkWidget;
struct _GtkDialog;
class GTKObject;

namespace host {

/// Names of the descriptor objects, each a `const char*` with C linkage that points at constant,
/// NUL-terminated text.
inline constexpr const char* displayNameSymbol = "_QuelmSODisplayName";
inline constexpr const char* versionSymbol = "_QuelmSOVersion";
/// ",InitializeFaxComponent,T40LanFaxDialogOk,...,": every function that a host may call by name.
inline constexpr const char* exportListSymbol = "_QuelmSOExportList";
inline constexpr const char* phonebookTagsSymbol = "PBEntryTags";
/// The dialog definition, which the component itself hands to `ComponentDirector::parseXMLBuffer`.
inline constexpr const char* dialogDefinitionSymbol = "pLanFaxXMLData";
/// The cover page: a printf-style template with sixteen "%s", and the PostScript that follows it.
inline constexpr const char* coverPageHeaderSymbol = "pT40CoverPageHeader";
inline constexpr const char* coverPageTrailerSymbol = "pT40CoverPageTrailer";

/// Name and type of the entry point: non-zero when the component is ready.
inline constexpr const char* entryPointSymbol = "InitializeFaxComponent";
using EntryPoint = int (*)();

/// A widget callback. Callbacks that take no arguments ignore them.
using WidgetCallback = void (*)(_GtkWidget*, GTKObject*);

/// What `PopupMessageDialog` was really handed: the answer to a question, -8 for yes.
using ResponseCallback = void (*)(_GtkDialog*, int);
inline constexpr int responseYes = -8;
inline constexpr int responseNo = -9;

/// The name under which the fax job object is registered.
inline constexpr const char* faxSessionResource = "FaxSession";

} // namespace host

#endif
