// Reads heads of requests.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/panel/request_head.h"

#include <poll.h>
#include <sys/socket.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <string_view>

namespace quelm::device {
namespace {

/// Where the head ends, behind the empty line; npos while it does not. Lines may end in a line feed alone.
std::size_t endOfHead(const std::string& bytes)
{
    const auto lines = std::min(bytes.find("\n\r\n"), bytes.find("\n\n"));
    return lines == std::string::npos ? lines : bytes.find('\n', lines + 1) + 1;
}

bool startsWithHeader(std::string_view line, std::string_view name)
{
    const auto same = [](char a, char b) { return a == (b >= 'A' && b <= 'Z' ? b - 'A' + 'a' : b); };
    return line.size() > name.size() && line[name.size()] == ':' &&
           std::equal(name.begin(), name.end(), line.begin(), same);
}

} // namespace

RequestHead readHead(const FileHandle& socket, std::chrono::milliseconds patience)
{
    const auto deadline = std::chrono::steady_clock::now() + patience;
    RequestHead head;
    std::array<char, 4096> piece{};
    while (true) {
        const auto left =
            std::chrono::ceil<std::chrono::milliseconds>(deadline - std::chrono::steady_clock::now());
        if (left.count() <= 0)
            return head;
        pollfd waiting{socket.get(), POLLIN, 0};
        if (::poll(&waiting, 1, static_cast<int>(left.count())) < 0 && errno != EINTR)
            return head;
        const auto size = ::recv(socket.get(), piece.data(), piece.size(), 0);
        if (size < 0 && (errno == EAGAIN || errno == EWOULDBLOCK || errno == EINTR))
            continue;
        if (size <= 0)
            return head;
        head.bytes.append(piece.data(), static_cast<std::size_t>(size));
        const auto end = endOfHead(head.bytes);
        if (end != std::string::npos && end <= longestHead) {
            head.bytes.resize(end); // nobody reads a body
            head.kind = RequestHead::Kind::whole;
            return head;
        }
        if (head.bytes.size() > longestHead) {
            head.bytes.clear();
            head.kind = RequestHead::Kind::tooLong;
            return head;
        }
    }
}

std::string plainHead(const std::string& head)
{
    std::string plain;
    std::string_view left = head;
    while (!left.empty()) {
        const auto line = left.substr(0, std::min(left.find('\n'), left.size() - 1) + 1);
        if (!startsWithHeader(line, "range") && !startsWithHeader(line, "expect"))
            plain += line;
        left.remove_prefix(line.size());
    }
    return plain;
}

} // namespace quelm::device
