// Sends requests through net-snmp's single-session interface, and waits for their answers within bounds.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/snmp/library_connection.h"

#include "base/error.h"
#include "base/snmp/read_set.h"
#include "base/translation.h"
#include "driver/snmp/snmp_library.h"
#include "driver/snmp/snmp_value.h"

#include <net-snmp/library/scapi.h>
#include <net-snmp/net-snmp-config.h>
#include <net-snmp/net-snmp-includes.h>
#include <poll.h>
#include <sys/socket.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <iterator>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

namespace quelm {

namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::microseconds;
using std::chrono::milliseconds;
using Pdu = std::unique_ptr<netsnmp_pdu, decltype(&snmp_free_pdu)>;

/// The request on its way, which the library's callback fills in.
struct Request {
    std::optional<std::string_view> community; ///< that answers must bear; none with version 3
    const ObjectIdentifier* object = nullptr;  ///< null while the device's engine is learned
    bool done = false;
    SnmpReply reply;
};

/// Reports stand below 1.3.6.1.6.3.15.1.1, as NUMBER.0.
long reportNumber(const netsnmp_pdu& pdu)
{
    constexpr oid userStatistics[] = {1, 3, 6, 1, 6, 3, 15, 1, 1};
    constexpr std::size_t size = std::size(userStatistics);
    const netsnmp_variable_list* variable = pdu.variables;
    if (variable == nullptr || variable->name_length <= size ||
        !std::equal(std::begin(userStatistics), std::end(userStatistics), variable->name))
        return 0;
    return static_cast<long>(variable->name[size]);
}

SnmpReply replyOf(const netsnmp_pdu& pdu, const ObjectIdentifier* object)
{
    if (pdu.command == SNMP_MSG_REPORT)
        return {SnmpReply::Kind::report, "", reportNumber(pdu)};
    if (pdu.command != SNMP_MSG_RESPONSE || object == nullptr)
        return {SnmpReply::Kind::rubbish, "", 0};
    if (pdu.errstat == SNMP_ERR_NOSUCHNAME)
        return {SnmpReply::Kind::noObject, "", 0};
    if (pdu.errstat != SNMP_ERR_NOERROR)
        return {SnmpReply::Kind::error, snmp_errstring(static_cast<int>(pdu.errstat)), pdu.errstat};
    const netsnmp_variable_list* variable = pdu.variables;
    if (variable == nullptr ||
        !std::equal(object->begin(), object->end(), variable->name, variable->name + variable->name_length))
        return {SnmpReply::Kind::rubbish, "", 0};
    if (auto text = valueText(*variable))
        return {SnmpReply::Kind::value, *std::move(text), 0};
    return {SnmpReply::Kind::noObject, "", 0};
}

std::string_view communityOf(const netsnmp_pdu& pdu)
{
    return pdu.community != nullptr
               ? std::string_view(reinterpret_cast<const char*>(pdu.community), pdu.community_len)
               : std::string_view();
}

/// The library's word on a request. 1: the request is settled; 0: an answer to it is still to come.
int takeAnswer(int operation, netsnmp_session* /*session*/, int /*id*/, netsnmp_pdu* pdu,
               void* given) noexcept
{
    auto& request = *static_cast<Request*>(given);
    if (operation == NETSNMP_CALLBACK_OP_TIMED_OUT || operation == NETSNMP_CALLBACK_OP_SEND_FAILED)
        request.done = true; // silent, as it was from the start
    if (operation != NETSNMP_CALLBACK_OP_RECEIVED_MESSAGE || pdu == nullptr)
        return 1;
    // Somebody else's answer, whatever it says: the request stays open for the device's own.
    if (request.community && communityOf(*pdu) != *request.community)
        return 0;
    // The library has learned the device's new time from this report, and repeats the request itself.
    if (pdu->command == SNMP_MSG_REPORT && snmpv3_get_report_type(pdu) == SNMPERR_NOT_IN_TIME_WINDOW)
        return 1;
    try {
        request.reply = replyOf(*pdu, request.object);
    } catch (...) {
        request.reply.kind = SnmpReply::Kind::rubbish; // no memory for what it says
    }
    request.done = true;
    return 1;
}

int securityLevel(const SnmpUser& user)
{
    if (user.authentication.empty())
        return SNMP_SEC_LEVEL_NOAUTH;
    return user.privacy.empty() ? SNMP_SEC_LEVEL_AUTHNOPRIV : SNMP_SEC_LEVEL_AUTHPRIV;
}

/// Makes a key of a passphrase. Throws when the library cannot (a method that the system's policy
/// switched off).
void makeKey(const netsnmp_session& session, const std::string& method, const std::string& passphrase,
             u_char* key, std::size_t& size)
{
    const auto* text = reinterpret_cast<const u_char*>(passphrase.data());
    if (session.securityAuthProto == nullptr ||
        generate_Ku(session.securityAuthProto, static_cast<u_int>(session.securityAuthProtoLen), text,
                    passphrase.size(), key, &size) != SNMPERR_SUCCESS)
        throw Error(localized("the device cannot be asked with %s, which this system does not have; choose "
                              "another method",
                              method));
}

/// Fills in the user of version 3. `session` points into `user`.
void setUser(netsnmp_session& session, SnmpUser& user)
{
    session.securityModel = SNMP_SEC_MODEL_USM;
    session.securityName = user.name.data();
    session.securityNameLen = user.name.size();
    session.securityLevel = securityLevel(user);
    if (!user.authentication.empty()) {
        const int type = usm_lookup_auth_type(user.authentication.c_str());
        session.securityAuthProto = sc_get_auth_oid(type, &session.securityAuthProtoLen);
        session.securityAuthKeyLen = sizeof session.securityAuthKey;
        makeKey(session, user.authentication, user.authenticationPassphrase, session.securityAuthKey,
                session.securityAuthKeyLen);
    }
    if (!user.privacy.empty()) {
        const int type = usm_lookup_priv_type(user.privacy.c_str());
        session.securityPrivProto = sc_get_priv_oid(type, &session.securityPrivProtoLen);
        session.securityPrivKeyLen = sizeof session.securityPrivKey;
        makeKey(session, user.privacy, user.privacyPassphrase, session.securityPrivKey,
                session.securityPrivKeyLen);
    }
}

/// The device as the library reads it.
std::string peerName(const SocketAddress& device)
{
    return (device.family() == AF_INET6 ? "udp6:" : "udp:") + numericText(device);
}

} // namespace

struct LibraryConnection::Impl {
    DeviceSettings settings;
    void* handle = nullptr;
    int openError = 0; ///< an errno value when there is no session
    int socket = -1;
    Request request; ///< here, because the library may still speak of it when the session is closed
    bool engineKnown = false;
    usmUser* user = nullptr; ///< the library's entry for this session

    Impl(const DeviceSettings& given, const SocketAddress& device) : settings(given)
    {
        startSnmpLibrary();
        netsnmp_session wanted;
        snmp_sess_init(&wanted);
        std::string peer = peerName(device);
        wanted.peername = peer.data();
        switch (settings.version) {
        case SnmpVersion::v1:
        case SnmpVersion::v2c:
            wanted.version = settings.version == SnmpVersion::v1 ? SNMP_VERSION_1 : SNMP_VERSION_2c;
            wanted.community = reinterpret_cast<u_char*>(settings.community.data());
            wanted.community_len = settings.community.size();
            break;
        case SnmpVersion::v3:
            wanted.version = SNMP_VERSION_3;
            // The library would learn the engine by itself, and wait for that without our deadline.
            wanted.flags |= SNMP_FLAGS_DONT_PROBE;
            setUser(wanted, settings.user);
            break;
        }
        handle = snmp_sess_open(&wanted);
        if (handle == nullptr) { // a system without IPv6, say; another address may do
            openError = wanted.s_errno != 0 ? wanted.s_errno : EADDRNOTAVAIL;
            return;
        }
        session().flags |= SNMP_FLAGS_DONT_PROBE; // opening clears it
        engineKnown = settings.version != SnmpVersion::v3;
        socket = snmp_sess_transport(handle)->sock;
        // So that a refusal reaches us, and nobody else's answer does. What cannot be connected to
        // cannot be sent to either, and says so then.
        connect(socket, device.get(), device.size);
    }

    ~Impl()
    {
        if (user != nullptr) {
            usm_remove_user(user);
            usm_free_user(user);
        }
        if (handle != nullptr)
            snmp_sess_close(handle);
    }

    Impl(const Impl&) = delete;
    Impl& operator=(const Impl&) = delete;

    /// As given, and not as the library has it, which passes it on and takes any.
    std::optional<std::string_view> community() const
    {
        if (settings.version == SnmpVersion::v3)
            return std::nullopt;
        return settings.community;
    }

    netsnmp_session& session() const { return *snmp_sess_session(handle); }

    /// What the system noted on the socket: an answer of the network that nobody is there.
    int takeSocketError() const
    {
        int error = 0;
        socklen_t size = sizeof error;
        getsockopt(socket, SOL_SOCKET, SO_ERROR, &error, &size);
        return error;
    }

    SnmpReply ask(Pdu pdu, const ObjectIdentifier* object, Deadline deadline)
    {
        request = Request{community(), object, false, {}};
        const auto left = std::chrono::duration_cast<microseconds>(deadline - Clock::now());
        const long interval = std::max<long>(1000, left.count() / (settings.retries + 1));
        session().timeout = interval;
        session().retries = settings.retries;
        takeSocketError();
        errno = 0;
        if (snmp_sess_async_send(handle, pdu.get(), takeAnswer, &request) == 0) {
            const int error = session().s_errno != 0 ? session().s_errno : errno;
            return {SnmpReply::Kind::refused, "", error};
        }
        static_cast<void>(pdu.release()); // the library's now
        while (!request.done && Clock::now() < deadline)
            if (const int error = awaitPacket(deadline); error != 0)
                return {SnmpReply::Kind::refused, "", error};
        return request.reply;
    }

    /// Reads what came, or repeats the request when it is time to. An errno value when the network
    /// says that nobody is there. Returns in any case, so that a device that sends without end
    /// cannot hold the caller beyond its deadline.
    int awaitPacket(Deadline deadline)
    {
        SnmpReadSet readSet;
        timeval untilRepetition{};
        int count = 0;
        int block = 1; // asks for the time until the repetition, whatever it is
        snmp_sess_select_info2(handle, &count, readSet.get(), &untilRepetition, &block);
        const auto repetition =
            std::chrono::seconds(untilRepetition.tv_sec) + microseconds(untilRepetition.tv_usec);
        const auto pause = std::chrono::ceil<milliseconds>(
            std::clamp<Clock::duration>(deadline - Clock::now(), Clock::duration::zero(), repetition));
        pollfd waiting{socket, POLLIN, 0};
        if (poll(&waiting, 1, static_cast<int>(pause.count())) > 0) {
            if (const int error = takeSocketError(); error != 0)
                return error;
            snmp_sess_read2(handle, readSet.get());
        }
        snmp_sess_timeout(handle);
        return 0;
    }

    /// Version 3: a request without a user, which the device answers with a report of its engine.
    SnmpReply learnEngine(Deadline deadline)
    {
        Pdu pdu(snmp_pdu_create(SNMP_MSG_GET), &snmp_free_pdu);
        pdu->version = SNMP_VERSION_3;
        pdu->securityName = strdup("");
        pdu->securityNameLen = 0;
        pdu->securityLevel = SNMP_SEC_LEVEL_NOAUTH;
        pdu->securityModel = SNMP_SEC_MODEL_USM;
        SnmpReply reply = ask(std::move(pdu), nullptr, deadline);
        netsnmp_session& own = session();
        if (reply.kind != SnmpReply::Kind::report)
            return reply;
        if (own.securityEngineIDLen == 0 || usm_create_user_from_session(&own) != SNMPERR_SUCCESS)
            return {SnmpReply::Kind::rubbish, "", 0};
        user = usm_get_user(own.securityEngineID, own.securityEngineIDLen, own.securityName);
        engineKnown = true;
        return reply;
    }
};

LibraryConnection::LibraryConnection(const DeviceSettings& settings, const SocketAddress& device)
    : impl_(std::make_unique<Impl>(settings, device))
{
}

LibraryConnection::~LibraryConnection() = default;

SnmpReply LibraryConnection::get(const ObjectIdentifier& object, Deadline deadline)
{
    if (impl_->handle == nullptr)
        return {SnmpReply::Kind::refused, "", impl_->openError};
    if (!impl_->engineKnown) {
        SnmpReply reply = impl_->learnEngine(deadline);
        if (!impl_->engineKnown)
            return reply;
    }
    Pdu pdu(snmp_pdu_create(SNMP_MSG_GET), &snmp_free_pdu);
    const std::vector<oid> name(object.begin(), object.end());
    snmp_add_null_var(pdu.get(), name.data(), name.size());
    return impl_->ask(std::move(pdu), &object, deadline);
}

} // namespace quelm
