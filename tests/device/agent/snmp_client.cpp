// Puts SNMP messages together and takes them apart.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "tests/device/agent/snmp_client.h"

#include "tests/servers/snmp_element.h"

#include <netdb.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <sstream>
#include <stdexcept>
#include <string_view>

namespace snmp {

namespace {

struct Element {
    unsigned char tag = 0;
    std::string_view content;
};

/// Takes elements off a message.
class Elements {
public:
    explicit Elements(std::string_view bytes) : rest_(bytes) {}

    bool atEnd() const { return rest_.empty(); }

    Element next()
    {
        const unsigned char tag = byte();
        std::size_t size = byte();
        if (size >= 0x80) {
            std::size_t count = size & 0x7FU;
            for (size = 0; count > 0; --count)
                size = size << 8U | byte();
        }
        if (size > rest_.size())
            throw std::runtime_error("an element of the answer is cut short");
        const Element found{tag, rest_.substr(0, size)};
        rest_.remove_prefix(size);
        return found;
    }

private:
    unsigned char byte()
    {
        if (rest_.empty())
            throw std::runtime_error("the answer is cut short");
        const auto first = static_cast<unsigned char>(rest_.front());
        rest_.remove_prefix(1);
        return first;
    }

    std::string_view rest_;
};

std::int64_t numberIn(std::string_view content)
{
    std::int64_t number = !content.empty() && (static_cast<unsigned char>(content[0]) & 0x80U) != 0 ? -1 : 0;
    for (const char byte : content)
        number = number * 256 + static_cast<unsigned char>(byte);
    return number;
}

std::string encoded(const Name& name)
{
    std::string content(1, static_cast<char>(name.at(0) * 40 + name.at(1)));
    for (std::size_t at = 2; at < name.size(); ++at) {
        std::string digits(1, static_cast<char>(name[at] & 0x7FU));
        for (std::uint32_t rest = name[at] >> 7U; rest != 0; rest >>= 7U)
            digits.insert(digits.begin(), static_cast<char>((rest & 0x7FU) | 0x80U));
        content += digits;
    }
    return content;
}

Name decoded(std::string_view content)
{
    Name name;
    std::uint32_t number = 0;
    for (const char digit : content) {
        number = number << 7U | (static_cast<unsigned char>(digit) & 0x7FU);
        if ((static_cast<unsigned char>(digit) & 0x80U) != 0)
            continue;
        if (name.empty())
            name = {number / 40, number % 40};
        else
            name.push_back(number);
        number = 0;
    }
    return name;
}

Answer answerIn(const std::string& bytes)
{
    Elements message(Elements(bytes).next().content);
    message.next(); // the version
    message.next(); // the community
    Elements pdu(message.next().content);
    pdu.next(); // the request's number
    Answer answer;
    answer.error = static_cast<int>(numberIn(pdu.next().content));
    pdu.next(); // at which object
    for (Elements variables(pdu.next().content); !variables.atEnd();) {
        Elements variable(variables.next().content);
        const Name name = decoded(variable.next().content);
        const Element value = variable.next();
        answer.variables.push_back({name, value.tag, std::string(value.content)});
    }
    return answer;
}

} // namespace

Name named(const std::string& dotted)
{
    Name name;
    std::istringstream input(dotted);
    for (std::string part; std::getline(input, part, '.');)
        name.push_back(static_cast<std::uint32_t>(std::stoul(part)));
    return name;
}

std::int64_t Variable::number() const { return numberIn(value); }

Client::Client(const std::string& address)
{
    const auto colon = address.rfind(':');
    std::string host = address.substr(0, colon);
    if (host.starts_with('['))
        host = host.substr(1, host.size() - 2);
    addrinfo wanted{};
    wanted.ai_socktype = SOCK_DGRAM;
    wanted.ai_flags = AI_NUMERICHOST | AI_NUMERICSERV;
    addrinfo* found = nullptr;
    if (getaddrinfo(host.c_str(), address.substr(colon + 1).c_str(), &wanted, &found) != 0)
        throw std::runtime_error("no address: " + address);
    socket_ = socket(found->ai_family, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    connect(socket_, found->ai_addr, found->ai_addrlen);
    freeaddrinfo(found);
}

Client::~Client() { close(socket_); }

std::string Client::request(Question question, const Name& name, const std::string& community,
                            Version version)
{
    constexpr unsigned char null = 0x05;
    constexpr unsigned char sequence = 0x30;
    const std::string zero = element(integer, std::string(1, '\0'));
    const std::string repetitions = element(integer, std::string(1, 50)); // of a bulk request
    const std::string value = question == Question::set ? element(text, "changed") : element(null, "");
    const std::string variables =
        element(sequence, element(sequence, element(objectName, encoded(name)) + value));
    const std::string pdu = element(integer, std::string(1, 7)) + zero +
                            (question == Question::bulk ? repetitions : zero) + variables;
    return element(sequence, element(integer, std::string(1, static_cast<char>(version))) +
                                 element(text, community) +
                                 element(static_cast<unsigned char>(question), pdu));
}

void Client::send(const std::string& bytes) const { ::send(socket_, bytes.data(), bytes.size(), 0); }

std::optional<std::string> Client::receive(int patience) const
{
    pollfd readable{socket_, POLLIN, 0};
    if (poll(&readable, 1, patience) <= 0)
        return std::nullopt;
    std::array<char, 65536> bytes{};
    const ssize_t size = recv(socket_, bytes.data(), bytes.size(), 0);
    if (size < 0)
        return std::nullopt;
    return std::string(bytes.data(), static_cast<std::size_t>(size));
}

std::optional<Answer> Client::ask(Question question, const Name& name, const std::string& community,
                                  Version version, int patience) const
{
    send(request(question, name, community, version));
    const auto bytes = receive(patience);
    if (!bytes)
        return std::nullopt;
    return answerIn(*bytes);
}

} // namespace snmp
