// Asks the device for what the component wants to know.
#include "driver/boundary/device_session.h"

#include "base/bounded_text.h"
#include "base/log.h"
#include "driver/boundary/host_state.h"
#include "host/device_session.h"

#include <utility>

namespace quelm {

namespace {

constexpr std::string_view directoryTable = "ubqSvcMonServiceDetailTableLDAP";

/// The device of the driver that lives, or null.
DeviceSession* currentDevice()
{
    const HostState* state = HostState::current();
    return state == nullptr ? nullptr : state->device.get();
}

} // namespace

DeviceSession::DeviceSession(const DeviceSettings& given) : settings(given), session(given) {}

std::optional<std::string> DeviceSession::tableEntry(std::string_view table, int index)
{
    if (table != directoryTable || index < 0 || index > 1)
        return std::nullopt;
    auto text = object(index == 0 ? settings.directoryServerObject : settings.directoryBaseObject);
    if (index == 0 && text && text->empty())
        return std::nullopt;
    return text;
}

std::optional<std::string> DeviceSession::object(std::string_view name)
{
    const auto numbers = parseObjectIdentifier(name);
    if (!numbers || failedInAction())
        return std::nullopt;
    SnmpAnswer answer = session.get(*numbers);
    if (answer.kind == SnmpAnswer::Kind::deviceFailed) {
        ++failuresInRow;
    } else {
        failuresInRow = 0;
        answersInAction = true;
    }
    lastTrouble = failedInAction() ? oneLine(answer.trouble) : "";
    if (!answer.trouble.empty())
        log(Severity::warning, answer.trouble);
    if (answer.kind != SnmpAnswer::Kind::value)
        return std::nullopt;
    return std::move(answer.text);
}

std::string lastDeviceTrouble()
{
    const DeviceSession* device = currentDevice();
    return device == nullptr ? "" : device->trouble();
}

} // namespace quelm

bool BaseBiDiSession::getRecipientData(char* table, int index, char** value)
{
    return quelm::atBoundary(false, [&] {
        quelm::DeviceSession* device = quelm::currentDevice();
        if (device == nullptr || table == nullptr || value == nullptr)
            return false;
        auto text = device->tableEntry(table, index);
        if (!text)
            return false;
        device->keptEntry() = *std::move(text);
        *value = device->keptEntry().data();
        return true;
    });
}

bool BaseBiDiSession::fetchSingleOIDResponse(char* oid, char** buffer, int size)
{
    return quelm::atBoundary(false, [&] {
        quelm::DeviceSession* device = quelm::currentDevice();
        if (device == nullptr || oid == nullptr || buffer == nullptr || *buffer == nullptr || size <= 0)
            return false;
        const auto text = device->object(oid);
        if (!text)
            return false;
        quelm::copyBounded(*text, *buffer, static_cast<std::size_t>(size));
        return true;
    });
}
