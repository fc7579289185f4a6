// Finds and calls the member functions of the component's fax job.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/plugin/component_fax_session.h"

#include "base/error.h"
#include "base/translation.h"
#include "component/model/fax_job.h"
#include "driver/plugin/call_guard.h"
#include "driver/plugin/component_library.h"
#include "host/component.h"
#include "host/fax_session.h"

#include <array>
#include <string>
#include <utility>

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
Tarvik40Fax* job() { return pFaxSession; }

constexpr std::array<std::pair<const char*, std::string JobRecipient::*>, 6> recipientFields{{
    {"RecipientName", &JobRecipient::name},
    {"RecipientFaxNumber", &JobRecipient::number},
    {"RecipientOrganization", &JobRecipient::organization},
    {"RecipientPhone", &JobRecipient::phone},
    {"RecipientEmail", &JobRecipient::email},
    {"RecipientMailbox", &JobRecipient::mailbox},
}};

} // namespace

// Tarvik40Fax::setFaxParameter(char*, void*), getFaxParameter(char*, void*), CheckFaxInfo(),
// serializeFaxJob(AbstractPDLWriter*), serializeFaxCoverSheet(AbstractPDLWriter*),
// getRecipientListCount(int), getFaxRecipientN(int, int); Tarvik40FaxRecipient::getRecipientType(),
// getRecipientData(const char*).
ComponentFaxSession::ComponentFaxSession(const ComponentLibrary& library, CallGuard& callGuard)
    : library_(library), guard_(callGuard),
      setFaxParameter_(member<Parameter>(library, "_ZN11Tarvik40Fax15setFaxParameterEPcPv")),
      getFaxParameter_(member<Parameter>(library, "_ZN11Tarvik40Fax15getFaxParameterEPcPv")),
      checkFaxInfo_(member<Check>(library, "_ZN11Tarvik40Fax12CheckFaxInfoEv")),
      serializeFaxJob_(member<Serialize>(library, "_ZN11Tarvik40Fax15serializeFaxJobEP17AbstractPDLWriter")),
      serializeFaxCoverSheet_(
          member<Serialize>(library, "_ZN11Tarvik40Fax22serializeFaxCoverSheetEP17AbstractPDLWriter")),
      getRecipientListCount_(member<Count>(library, "_ZN11Tarvik40Fax21getRecipientListCountEi")),
      getFaxRecipientN_(member<Find>(library, "_ZN11Tarvik40Fax16getFaxRecipientNEii")),
      getRecipientType_(member<Type>(library, "_ZN20Tarvik40FaxRecipient16getRecipientTypeEv")),
      getRecipientData_(member<Data>(library, "_ZN20Tarvik40FaxRecipient16getRecipientDataEPKc"))
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
    // The component appends to what the text holds, and shows it for several recipients even when they are
    // not to be named.
    job()->coverRecipientText.clear();
    return write("serializeFaxCoverSheet", serializeFaxCoverSheet_, writer);
}

std::size_t ComponentFaxSession::count(RecipientList list)
{
    int size = 0;
    guard_.run("getRecipientListCount",
               [&] { size = getRecipientListCount_(job(), static_cast<int>(list)); });
    return size > 0 ? static_cast<std::size_t>(size) : 0;
}

JobRecipient ComponentFaxSession::recipient(RecipientList list, std::size_t position)
{
    JobRecipient found;
    guard_.run("getFaxRecipientN", [&] {
        Tarvik40FaxRecipient* held =
            getFaxRecipientN_(job(), static_cast<int>(position), static_cast<int>(list));
        if (held == nullptr)
            return;
        found.type = getRecipientType_(held);
        for (const auto& [key, text] : recipientFields)
            if (const char* data = getRecipientData_(held, key))
                found.*text = data;
    });
    return found;
}

JobTexts ComponentFaxSession::texts()
{
    const Tarvik40Fax& held = *job();
    return {held.dialingPrefix, held.creditCard,        held.coverNotes,         held.customText,
            held.senderName,    held.senderFaxNumber,   held.senderOrganization, held.senderPhone,
            held.senderEmail,   held.showRecipientInfo, held.showCustomText,     held.showSenderInfo};
}

CoverPageTemplate ComponentFaxSession::coverPageTemplate()
{
    return {library_.text(host::coverPageHeaderSymbol), library_.text(host::coverPageTrailerSymbol)};
}

bool ComponentFaxSession::write(const char* what, Serialize function, AbstractPDLWriter& writer)
{
    bool written = false;
    guard_.run(what, [&] { written = function(job(), &writer) != 0; });
    return written;
}

} // namespace quelm
