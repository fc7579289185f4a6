// The fax job of a loaded component, reached by the linker names of its member functions.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_PLUGIN_COMPONENT_FAX_SESSION_H
#define DRIVER_PLUGIN_COMPONENT_FAX_SESSION_H

#include "driver/plugin/fax_session.h"

class Tarvik40Fax;
class Tarvik40FaxRecipient;

namespace quelm {

class CallGuard;
class ComponentLibrary;

/// Calls the member functions of the component's `Tarvik40Fax` on the object that it stored in
/// `pFaxSession`. The driver is not linked to that class; it relies on the binary interface that both are
/// compiled for (Itanium C++ ABI), in which a member function is an ordinary function whose first argument
/// is the object, and on the layout of the object's data, which the component's header keeps for hosts.
///
/// The component appends the recipients' names to those of the cover page before: the session empties
/// that text ahead of each page, so that no job names somebody of another one.
class ComponentFaxSession : public FaxSession {
public:
    /// Both outlive the session. Throws quelm::Error when the library lacks one of the functions.
    ComponentFaxSession(const ComponentLibrary& library, CallGuard& callGuard);

    void setPdl(Pdl pdl) override;
    bool coverPageChosen() override;
    bool checkInfo() override;
    bool serializeJob(AbstractPDLWriter& writer) override;
    bool serializeCoverSheet(AbstractPDLWriter& writer) override;
    std::size_t count(RecipientList list) override;
    JobRecipient recipient(RecipientList list, std::size_t position) override;
    JobTexts texts() override;
    CoverPageTemplate coverPageTemplate() override;

private:
    using Parameter = bool (*)(Tarvik40Fax* job, char* key, void* value);
    using Check = int (*)(Tarvik40Fax* job);
    using Serialize = int (*)(Tarvik40Fax* job, AbstractPDLWriter* writer);
    using Count = int (*)(Tarvik40Fax* job, int list);
    using Find = Tarvik40FaxRecipient* (*)(Tarvik40Fax* job, int position, int list);
    using Type = int (*)(Tarvik40FaxRecipient* recipient);
    using Data = const char* (*)(Tarvik40FaxRecipient* recipient, const char* key);

    bool write(const char* what, Serialize function, AbstractPDLWriter& writer);

    const ComponentLibrary& library_;
    CallGuard& guard_;
    Parameter setFaxParameter_;
    Parameter getFaxParameter_;
    Check checkFaxInfo_;
    Serialize serializeFaxJob_;
    Serialize serializeFaxCoverSheet_;
    Count getRecipientListCount_;
    Find getFaxRecipientN_;
    Type getRecipientType_;
    Data getRecipientData_;
};

} // namespace quelm

#endif
