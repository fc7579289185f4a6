// What host/device_session.h declares: questions to the device.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "host/device_session.h"

#include "base/bounded_text.h"
#include "driver/boundary/host_state.h"
#include "driver/device/device_session.h"

#include <utility>

namespace {

/// The device of the driver that lives, or null.
quelm::DeviceSession* currentDevice()
{
    const quelm::HostState* state = quelm::HostState::current();
    return state == nullptr ? nullptr : state->device.get();
}

} // namespace

BaseBiDiSession* pBiDi = nullptr;

bool BaseBiDiSession::getRecipientData(char* table, int index, char** value)
{
    return quelm::atBoundary(false, [&] {
        quelm::DeviceSession* device = currentDevice();
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
        quelm::DeviceSession* device = currentDevice();
        if (device == nullptr || oid == nullptr || buffer == nullptr || *buffer == nullptr || size <= 0)
            return false;
        const auto text = device->object(oid);
        if (!text)
            return false;
        quelm::copyBounded(*text, *buffer, static_cast<std::size_t>(size));
        return true;
    });
}
