// Asks an SNMP agent, message by message, without any library.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef TESTS_DEVICE_AGENT_SNMP_CLIENT_H
#define TESTS_DEVICE_AGENT_SNMP_CLIENT_H

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace snmp {

using Name = std::vector<std::uint32_t>;

/// "1.3.6.1": its numbers.
Name named(const std::string& dotted);

enum class Version : char { one = 0, two = 1 };
enum class Question : unsigned char { get = 0xA0, next = 0xA1, set = 0xA3, bulk = 0xA5 };

/// One object of an answer.
struct Variable {
    Name name;
    unsigned char type = 0;
    std::string value; ///< a text's bytes; of anything else the encoded content

    /// Of a whole number.
    std::int64_t number() const;
};

struct Answer {
    int error = 0;
    std::vector<Variable> variables;

    const Variable& only() const { return variables.at(0); }
};

/// SNMP's types.
enum Type : unsigned char {
    integer = 0x02,
    text = 0x04,
    objectName = 0x06,
    timeTicks = 0x43,
    noSuchObject = 0x80,
    noSuchInstance = 0x81,
    endOfView = 0x82
};

/// A socket that is connected to an agent.
class Client {
public:
    /// "127.0.0.1:161" or "[::1]:161"
    explicit Client(const std::string& address);
    ~Client();
    Client(const Client&) = delete;
    Client& operator=(const Client&) = delete;

    /// Asks for an object and waits for the answer; nothing when none comes within `patience` milliseconds.
    std::optional<Answer> ask(Question question, const Name& name, const std::string& community = "public",
                              Version version = Version::two, int patience = 10000) const;
    /// Sends bytes that may be anything.
    void send(const std::string& bytes) const;
    /// What comes within some milliseconds.
    std::optional<std::string> receive(int patience) const;

    /// The request itself.
    static std::string request(Question question, const Name& name, const std::string& community,
                               Version version);

private:
    int socket_ = -1;
};

} // namespace snmp

#endif
