// A UDP peer that plays a device which misbehaves.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef TESTS_SERVERS_UDP_DEVICE_H
#define TESTS_SERVERS_UDP_DEVICE_H

#include <atomic>
#include <functional>
#include <string>
#include <thread>

namespace servers {

/// Receives each datagram, on a thread of its own; `reply` sends one back to where it came from.
/// False from `reply` means that the device ends: a handler that sends without end stops then.
using Reply = std::function<bool(const std::string& datagram)>;
using DatagramHandler = std::function<void(const std::string& datagram, const Reply& reply)>;

/// A bound UDP socket on 127.0.0.1.
class UdpDevice {
public:
    /// Hands each datagram to `handler`.
    explicit UdpDevice(DatagramHandler handler);
    ~UdpDevice();
    UdpDevice(const UdpDevice&) = delete;
    UdpDevice& operator=(const UdpDevice&) = delete;

    int port() const { return number_; }
    /// "127.0.0.1:PORT"
    std::string address() const { return "127.0.0.1:" + std::to_string(number_); }
    /// How many datagrams came up to now.
    int received() const { return count_; }

private:
    void serve();

    DatagramHandler handle_;
    int bound_ = -1;
    int stopped_ = -1;
    int number_ = 0;
    std::atomic<int> count_{0};
    std::atomic<bool> ending_{false};
    std::thread thread_;
};

/// Answers nothing.
DatagramHandler beingSilent();
/// Answers everything with `text`.
DatagramHandler answeringWith(std::string text);
/// Sends `text` without end, once it was asked something.
DatagramHandler floodingWith(std::string text);
/// Loses the first `lost` datagrams, and hands the others to the server at 127.0.0.1:`port` and its
/// answers back.
DatagramHandler losing(int lost, int port);
/// Loses the datagrams that hold `bytes`, and hands the others on like that.
DatagramHandler silentAbout(std::string bytes, int port);

} // namespace servers

#endif
