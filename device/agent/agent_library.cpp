// The least that net-snmp's agent needs, its objects, and who may ask for them.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/agent/agent_library.h"

#include "base/error.h"
#include "base/snmp/quiet_library.h"
#include "base/translation.h"

#include <net-snmp/net-snmp-config.h>
// The library's headers need one another in this order.
#include <net-snmp/net-snmp-includes.h>
// clang-format off
#include <net-snmp/agent/net-snmp-agent-includes.h>
#include <net-snmp/agent/agent_callbacks.h>
// clang-format on

#include <string_view>

namespace quelm::device {

namespace {

constexpr const char* programName = "quelm-device";

/// Set while no listener is open, read by the listeners' thread.
const AgentAnswers* current = nullptr;

/// Whether a request is answered at all: one of the versions that bear a community, with ours.
int checkAccess(int /*major*/, int /*minor*/, void* question, void* /*ours*/) noexcept
{
    auto* access = static_cast<view_parameters*>(question);
    const netsnmp_pdu& pdu = *access->pdu;
    const bool bearsCommunity = pdu.version == SNMP_VERSION_1 || pdu.version == SNMP_VERSION_2c;
    const std::string_view community(reinterpret_cast<const char*>(pdu.community),
                                     pdu.community == nullptr ? 0 : pdu.community_len);
    const bool allowed = bearsCommunity && current != nullptr && community == current->community;
    access->errorcode = allowed ? VACM_SUCCESS : VACM_NOSECNAME;
    return SNMPERR_SUCCESS;
}

std::vector<oid> libraryName(const ObjectName& name) { return {name.begin(), name.end()}; }

struct Encoding {
    netsnmp_variable_list* variable;

    int set(u_char type, const void* bytes, std::size_t size) const
    {
        return snmp_set_var_typed_value(variable, type, bytes, size);
    }
    int operator()(const std::string& text) const { return set(ASN_OCTET_STR, text.data(), text.size()); }
    int operator()(AgentInteger number) const
    {
        return snmp_set_var_typed_integer(variable, ASN_INTEGER, number.value);
    }
    int operator()(AgentTicks ticks) const
    {
        return snmp_set_var_typed_integer(variable, ASN_TIMETICKS, static_cast<long>(ticks.value.count()));
    }
    int operator()(const ObjectName& name) const
    {
        const std::vector<oid> numbers = libraryName(name);
        return set(ASN_OBJECT_ID, numbers.data(), numbers.size() * sizeof(oid));
    }
};

/// Answers for one object; which is in the registration. The library has turned a question for the next
/// object into one for this.
int answer(netsnmp_mib_handler* /*handler*/, netsnmp_handler_registration* registration,
           netsnmp_agent_request_info* given, netsnmp_request_info* requests) noexcept
{
    for (netsnmp_request_info* request = requests; request != nullptr; request = request->next) {
        if (request->processed != 0)
            continue;
        try {
            const ObjectName name(registration->rootoid, registration->rootoid + registration->rootoid_len);
            if (current != nullptr && std::visit(Encoding{request->requestvb}, current->value(name)) == 0)
                continue;
        } catch (...) {
            // No memory, say. The one who asks is told of an error and may ask again.
        }
        netsnmp_set_request_error(given, request, SNMP_ERR_GENERR);
    }
    return SNMP_ERR_NOERROR;
}

void registerObject(const ObjectName& name)
{
    const std::vector<oid> numbers = libraryName(name);
    netsnmp_handler_registration* registration = netsnmp_create_handler_registration(
        programName, answer, numbers.data(), numbers.size(), HANDLER_CAN_RONLY);
    if (registration == nullptr || netsnmp_register_read_only_instance(registration) != MIB_REGISTERED_OK)
        throw Error(localized("the SNMP library could not be started; there is not enough memory"));
}

void startOnce()
{
    keepSnmpLibraryQuiet(programName);
    for (const int setting : {NETSNMP_DS_AGENT_DISABLE_PERL, NETSNMP_DS_AGENT_NO_CONNECTION_WARNINGS})
        netsnmp_ds_set_boolean(NETSNMP_DS_APPLICATION_ID, setting, 1);
    // A first session's making starts what all of the library needs.
    netsnmp_session first;
    snmp_sess_init(&first);
    if (init_agent(programName) != 0)
        throw Error(localized("the SNMP library could not be started; there is not enough memory"));
    // The library's own table of who may see what is filled by configuration files, and without them nobody
    // may see anything. The last one who is asked decides.
    for (const int question :
         {SNMPD_CALLBACK_ACM_CHECK, SNMPD_CALLBACK_ACM_CHECK_INITIAL, SNMPD_CALLBACK_ACM_CHECK_SUBTREE})
        netsnmp_register_callback(SNMP_CALLBACK_APPLICATION, question, checkAccess, nullptr,
                                  NETSNMP_CALLBACK_LOWEST_PRIORITY);
    for (const ObjectName& name : agentObjects())
        registerObject(name);
}

} // namespace

void startAgentLibrary()
{
    static const bool started = [] {
        startOnce();
        return true;
    }();
    static_cast<void>(started);
}

void setAgentAnswers(const AgentAnswers* answers) { current = answers; }

} // namespace quelm::device
