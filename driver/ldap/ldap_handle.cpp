// Drives the LDAP library without ever letting it wait longer than it may.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/ldap/ldap_handle.h"

#include "base/broken_pipe_guard.h"
#include "driver/directory/directory_error.h"
#include "driver/directory/directory_messages.h"

#include <fcntl.h>
#include <lber.h>
#include <openldap.h>
#include <sys/socket.h>
#include <sys/time.h>

#include <algorithm>
#include <chrono>
#include <future>
#include <mutex>
#include <string_view>

namespace quelm {

namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::microseconds;

/// The time left, as the library takes it; never less than nothing.
timeval timeLeft(Deadline deadline)
{
    const auto left = std::max(microseconds(0), std::chrono::ceil<microseconds>(deadline - Clock::now()));
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(left);
    timeval result{};
    result.tv_sec = static_cast<time_t>(seconds.count());
    result.tv_usec = static_cast<suseconds_t>((left - seconds).count());
    return result;
}

/// False when the name service kept the library waiting until the deadline.
bool isInitialized(Deadline deadline)
{
    static std::timed_mutex waiting;
    static StartedCall<void> initializing = startCall([] {
        int version = 0;
        ldap_get_option(nullptr, LDAP_OPT_PROTOCOL_VERSION, &version);
    });
    const std::unique_lock<std::timed_mutex> lock(waiting, deadline);
    return lock.owns_lock() && initializing.isBackBefore(deadline);
}

} // namespace

int ldapResultCode(int libraryCode)
{
    return libraryCode < 0 ? ldap_code::firstOfTheClient - libraryCode : libraryCode;
}

LdapHandle::LdapHandle(FileHandle connected, const DirectoryAddress& server, Deadline deadline)
    : socket_(connected.get())
{
    if (!isInitialized(deadline))
        throw DirectoryError(ldap_code::timeout, directory_messages::nameServiceSilent(server.shown()));
    const int error = ldap_init_fd(socket_, LDAP_PROTO_TCP, server.uri().c_str(), &handle_);
    if (error != LDAP_SUCCESS)
        throw DirectoryError(ldapResultCode(error),
                             directory_messages::noLibrary(server.shown(), ldap_err2string(error)));
    static_cast<void>(connected.release()); // the library's now
    const int version = LDAP_VERSION3;
    set(LDAP_OPT_PROTOCOL_VERSION, &version);
    set(LDAP_OPT_REFERRALS, LDAP_OPT_OFF);
    set(LDAP_OPT_RESTART, LDAP_OPT_ON); // a signal does not end a wait
    const int never = LDAP_DEREF_NEVER;
    set(LDAP_OPT_DEREF, &never);
    // A length that a broken server claims is not believed, let alone allocated.
    Sockbuf* buffer = nullptr;
    ber_len_t longestMessage = ber_len_t{16} << 20U;
    if (ldap_get_option(handle_, LDAP_OPT_SOCKBUF, &buffer) == LDAP_OPT_SUCCESS)
        ber_sockbuf_ctrl(buffer, LBER_SB_OPT_SET_MAX_INCOMING, &longestMessage);
}

LdapHandle::~LdapHandle()
{
    const BrokenPipeGuard guard;
    ldap_unbind_ext(handle_, nullptr, nullptr);
}

bool LdapHandle::set(int option, const void* value) const
{
    return ldap_set_option(handle_, option, value) == LDAP_OPT_SUCCESS;
}

void LdapHandle::setBlocking(bool blocking) const
{
    const int flags = fcntl(socket_, F_GETFL);
    fcntl(socket_, F_SETFL, blocking ? flags & ~O_NONBLOCK : flags | O_NONBLOCK);
}

bool LdapHandle::installTls(Deadline deadline) const
{
    // The library keeps no time here, and with some of the TLS libraries below it turns in circles
    // while a socket has nothing to read. So it may block, and the connection is cut at the deadline.
    set(LDAP_OPT_NETWORK_TIMEOUT, nullptr); // one from ldap.conf would make the socket non-blocking
    setBlocking(true);
    std::promise<void> finished;
    auto watchdog = startCall([socket = socket_, deadline, finish = finished.get_future()] {
        const bool late = finish.wait_until(deadline) != std::future_status::ready;
        if (late)
            shutdown(socket, SHUT_RDWR);
        return late;
    });
    const int error = ldap_install_tls(handle_);
    finished.set_value();
    const bool late = watchdog.get();
    setBlocking(false);
    return error == LDAP_SUCCESS && !late;
}

LdapMessage LdapHandle::receive(int id, Deadline deadline, int& error) const
{
    LDAPMessage* message = nullptr;
    int kind = 0;
    do { // the library counts in milliseconds, and may be one too early
        timeval left = timeLeft(deadline);
        kind = ldap_result(handle_, id, LDAP_MSG_ONE, &left, &message);
    } while (kind == 0 && Clock::now() < deadline);
    error = LDAP_TIMEOUT;
    if (kind < 0) {
        ldap_get_option(handle_, LDAP_OPT_RESULT_CODE, &error);
        if (error == LDAP_SUCCESS || error == LDAP_TIMEOUT)
            error = LDAP_SERVER_DOWN;
    }
    return LdapMessage(message);
}

DirectoryOutcome LdapHandle::outcomeOf(int error, int id, Deadline deadline) const
{
    LdapMessage answer;
    if (error == LDAP_SUCCESS)
        answer = receive(id, deadline, error);
    if (!answer)
        return {ldapResultCode(error), ldap_err2string(error)};
    return outcomeOf(answer.get());
}

DirectoryOutcome LdapHandle::outcomeOf(LDAPMessage* answer) const
{
    int code = LDAP_SUCCESS;
    char* message = nullptr;
    const int error = ldap_parse_result(handle_, answer, &code, nullptr, &message, nullptr, nullptr, 0);
    if (error != LDAP_SUCCESS)
        code = error;
    DirectoryOutcome outcome{ldapResultCode(code), directoryText(message != nullptr ? message : "")};
    ldap_memfree(message);
    if (outcome.message.empty())
        outcome.message = ldap_err2string(code);
    return outcome;
}

DirectoryEntry LdapHandle::entryOf(LDAPMessage* result) const
{
    // One pass over the message: asking for the values by the attributes' names would begin at the first
    // attribute each time, and a server decides how many there are.
    constexpr int mostAttributes = 1000;
    DirectoryEntry entry;
    BerElement* position = nullptr;
    berval name{}; // of the entry, then of its attributes; these and the values lie in the message
    int error = ldap_get_dn_ber(handle_, result, &position, &name);
    for (int n = 0; n < mostAttributes && error == LDAP_SUCCESS; ++n) {
        berval* values = nullptr;
        error = ldap_get_attribute_ber(handle_, result, position, &name, &values);
        const std::unique_ptr<berval, decltype(&ber_memfree)> valuesOwner(values, &ber_memfree);
        if (error != LDAP_SUCCESS || name.bv_val == nullptr)
            break;
        const bool hasValue = values != nullptr && values->bv_val != nullptr;
        entry.add({name.bv_val, name.bv_len},
                  hasValue ? std::string_view(values->bv_val, values->bv_len) : std::string_view());
    }
    ber_free(position, 0);
    return entry;
}

} // namespace quelm
