// The fax job of a loaded component, reached by the linker names of its member functions.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_PLUGIN_COMPONENT_FAX_SESSION_H
#define DRIVER_PLUGIN_COMPONENT_FAX_SESSION_H

#include "driver/plugin/fax_session.h"

namespace quelm {

class CallGuard;
class ComponentLibrary;

/// Calls the member functions of the component's `Tarvik40Fax` on the object that it stored in
/// `pFaxSession`. The driver has no declaration of that class; it relies on the binary interface
/// that both are compiled for (Itanium C++ ABI), in which a member function is an ordinary function
/// whose first argument is the object.
class ComponentFaxSession : public FaxSession {
public:
    /// Both outlive the session. Throws quelm::Error when the library lacks one of the functions.
    ComponentFaxSession(const ComponentLibrary& library, CallGuard& callGuard);

    void setPdl(Pdl pdl) override;
    bool coverPageChosen() override;
    bool checkInfo() override;
    bool serializeJob(AbstractPDLWriter& writer) override;
    bool serializeCoverSheet(AbstractPDLWriter& writer) override;

private:
    using Parameter = bool (*)(void* job, char* key, void* value);
    using Check = int (*)(void* job);
    using Serialize = int (*)(void* job, AbstractPDLWriter* writer);

    bool write(const char* what, Serialize function, AbstractPDLWriter& writer);

    CallGuard& guard_;
    Parameter setFaxParameter_;
    Parameter getFaxParameter_;
    Check checkFaxInfo_;
    Serialize serializeFaxJob_;
    Serialize serializeFaxCoverSheet_;
};

} // namespace quelm

#endif
