// Asks the device for what the component wants to know, and spares one that failed.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/device/device_session.h"

#include "driver/device/object_identifier.h"

#include <utility>

namespace quelm {

namespace {

constexpr std::string_view directoryTable = "ubqSvcMonServiceDetailTableLDAP";

} // namespace

DeviceSession::DeviceSession(const DeviceSettings& given, Report to)
    : settings_(given), report_(std::move(to)), session_(given)
{
}

std::optional<std::string> DeviceSession::tableEntry(std::string_view table, int index)
{
    if (table != directoryTable || index < 0 || index > 1)
        return std::nullopt;
    auto text = object(index == 0 ? settings_.directoryServerObject : settings_.directoryBaseObject);
    if (index == 0 && text && text->empty())
        return std::nullopt;
    return text;
}

std::optional<std::string> DeviceSession::object(std::string_view name)
{
    const auto numbers = parseObjectIdentifier(name);
    if (!numbers || failedInAction())
        return std::nullopt;
    SnmpAnswer answer = session_.get(*numbers);
    if (answer.kind == SnmpAnswer::Kind::deviceFailed) {
        ++failuresInRow_;
    } else {
        failuresInRow_ = 0;
        answersInAction_ = true;
    }
    report_(answer.trouble, failedInAction());
    if (answer.kind != SnmpAnswer::Kind::value)
        return std::nullopt;
    return std::move(answer.text);
}

} // namespace quelm
