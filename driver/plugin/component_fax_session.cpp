// Finds and calls the member functions of the component's fax job.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/plugin/component_fax_session.h"

#include "base/error.h"
#include "base/translation.h"
#include "driver/plugin/call_guard.h"
#include "driver/plugin/component_library.h"
#include "host/fax_session.h"

#include <string>

namespace quelm {

namespace {

template <class Function>
Function member(const ComponentLibrary& library, const char* linkerName)
{
    void* found = library.symbol(linkerName);
    if (found == nullptr) {
        throw Error(localized("%s is not a fax component: it lacks the function %s of the fax job",
                              library.path(), linkerName));
    }
    return reinterpret_cast<Function>(found);
}

/// The job, of which every member function may be asked. Null before the component has made it.
void* job() { return pFaxSession; }

} // namespace

// Tarvik40Fax::setFaxParameter(char*, void*), getFaxParameter(char*, void*), CheckFaxInfo(),
// serializeFaxJob(AbstractPDLWriter*), serializeFaxCoverSheet(AbstractPDLWriter*).
ComponentFaxSession::ComponentFaxSession(const ComponentLibrary& library, CallGuard& callGuard)
    : guard_(callGuard),
      setFaxParameter_(member<Parameter>(library, "_ZN11Tarvik40Fax15setFaxParameterEPcPv")),
      getFaxParameter_(member<Parameter>(library, "_ZN11Tarvik40Fax15getFaxParameterEPcPv")),
      checkFaxInfo_(member<Check>(library, "_ZN11Tarvik40Fax12CheckFaxInfoEv")),
      serializeFaxJob_(member<Serialize>(library, "_ZN11Tarvik40Fax15serializeFaxJobEP17AbstractPDLWriter")),
      serializeFaxCoverSheet_(
          member<Serialize>(library, "_ZN11Tarvik40Fax22serializeFaxCoverSheetEP17AbstractPDLWriter"))
{
    if (job() == nullptr)
        throw Error(localized("%s has made no fax job; it was not started", library.path()));
}

void ComponentFaxSession::setPdl(Pdl pdl)
{
    guard_.run("setFaxParameter", [&] {
        std::string key = "PDLMode";
        std::string mode = pdl == Pdl::pjl ? "PJL" : "DSC";
        setFaxParameter_(job(), key.data(), mode.data());
    });
}

bool ComponentFaxSession::coverPageChosen()
{
    unsigned char chosen = 0; // the component writes one byte
    guard_.run("getFaxParameter", [&] {
        std::string key = "flFaxCoverPage";
        if (!getFaxParameter_(job(), key.data(), &chosen))
            chosen = 0;
    });
    return chosen != 0;
}

bool ComponentFaxSession::checkInfo()
{
    bool complete = false;
    guard_.run("CheckFaxInfo", [&] { complete = checkFaxInfo_(job()) != 0; });
    return complete;
}

bool ComponentFaxSession::serializeJob(AbstractPDLWriter& writer)
{
    return write("serializeFaxJob", serializeFaxJob_, writer);
}

bool ComponentFaxSession::serializeCoverSheet(AbstractPDLWriter& writer)
{
    return write("serializeFaxCoverSheet", serializeFaxCoverSheet_, writer);
}

bool ComponentFaxSession::write(const char* what, Serialize function, AbstractPDLWriter& writer)
{
    bool written = false;
    guard_.run(what, [&] { written = function(job(), &writer) != 0; });
    return written;
}

} // namespace quelm
