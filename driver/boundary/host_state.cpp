// The one host state, and what the globals of the boundary point at.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/boundary/host_state.h"

#include "base/error.h"
#include "base/translation.h"
#include "driver/boundary/gtk_handle.h"
#include "driver/device/device_session.h"
#include "driver/store/former_phonebook.h"
#include "host/device_session.h"
#include "host/director.h"
#include "host/driver_info.h"
#include "host/fax_session.h"

#include <utility>

namespace quelm {

namespace {

HostState* theState = nullptr;

// The component reaches them through pointers only; what they do is done on the host state.
ComponentDirector director;
GlobalDriverInfo driverInfo;
BaseBiDiSession deviceQueries;

} // namespace

HostState::HostState(std::string homeFolder, std::string userName)
    : home(std::move(homeFolder)), location(home), user(std::move(userName))
{
    if (theState != nullptr)
        throw Error(localized("a driver runs in this process already; end it before another one is started"));
    theState = this;
    pDriverDirector = &director;
    pDriverGlobals = &driverInfo;
}

HostState::~HostState()
{
    theState = nullptr;
    pDriverDirector = nullptr;
    pDriverGlobals = nullptr;
    pFaxSession = nullptr;
    pBiDi = nullptr;
    alive_.reset();
}

void HostState::settleAt(const std::string& folder, const std::string& formerPhonebook)
{
    location = folder;
    takeOverPhonebook(formerPhonebook, location + "/db/phonebook/user/" + user + ".xdb");
}

void HostState::connectDevice(const DeviceSettings& settings)
{
    device = std::make_unique<DeviceSession>(settings, [this](const std::string& line, bool failed) {
        if (line.empty())
            failures.deviceAnswered();
        else
            failures.deviceFailed(line, failed);
    });
    guard.setBeforeCall([this] { device->startAction(); });
    pBiDi = &deviceQueries;
}

HostState* HostState::current() { return theState; }

GTKObject& HostState::handleOf(Widget& widget)
{
    GTKObject*& handle = handles_[&widget];
    if (handle == nullptr) {
        ownHandles_.push_back(std::make_unique<GTKObject>());
        handle = ownHandles_.back().get();
        pointHandleAt(*handle, *this, widget);
    }
    return *handle;
}

void HostState::adoptHandle(Widget& widget, GTKObject& handle) { handles_[&widget] = &handle; }

void HostState::forget(Widget& widget)
{
    handles_.erase(&widget);
    handlers_.erase(&widget);
}

void HostState::setHandler(const Widget& widget, const std::string& signal, Handler handler)
{
    handlers_[&widget][signal] = handler;
}

HostState::Handler HostState::handlerFor(const Widget& widget, const std::string& signal) const
{
    const auto ofWidget = handlers_.find(&widget);
    if (ofWidget == handlers_.end())
        return nullptr;
    const auto found = ofWidget->second.find(signal);
    return found == ofWidget->second.end() ? nullptr : found->second;
}

} // namespace quelm
