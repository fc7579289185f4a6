// Gives the device's work to threads.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/calls/dispatcher.h"

#include "device/calls/calling_work.h"
#include "device/calls/device_work.h"
#include "device/calls/rendering_work.h"
#include "device/calls/sheet_work.h"

#include <string>
#include <thread>
#include <utility>

namespace quelm::device {

struct Dispatcher::State {
    State(const StateFolder& folder, DeviceLog& log, const Exchange& exchange, DeviceClock& clock,
          DispatcherSettings settings)
        : work(folder, log, exchange, clock, std::move(settings))
    {
    }

    void begin(const std::string& name, const std::function<bool()>& piece)
    {
        threads.emplace_back([this, name, piece] { work.run(name, piece); });
    }

    DeviceWork work;
    SheetWork sheets{work};
    CallingWork calling{work};
    std::vector<std::thread> threads;
};

Dispatcher::Dispatcher(const StateFolder& folder, DeviceLog& log, const Exchange& exchange,
                       DeviceClock& clock, DispatcherSettings settings)
    : state_(std::make_unique<State>(folder, log, exchange, clock, std::move(settings)))
{
    const DispatcherSettings& given = state_->work.settings;
    for (int thread = 0; thread < given.renderings; ++thread)
        state_->begin("renderer " + std::to_string(thread), [this] { return renderNext(state_->work); });
    // A sheet waits for no document.
    state_->begin("sheets", [this] { return state_->sheets.writeNext(); });
    for (int line = 0; line < given.lines; ++line)
        state_->begin("line " + std::to_string(line), [this] { return state_->calling.callNext(); });
}

Dispatcher::~Dispatcher()
{
    state_->work.stop();
    for (std::thread& thread : state_->threads)
        thread.join();
}

void Dispatcher::wake() { state_->work.changed(); }

bool Dispatcher::isIdle()
{
    return !state_->work.isWorking() && state_->work.log.load().waitingJobs == 0 && state_->sheets.isDone() &&
           !state_->work.isWorking();
}

std::vector<int> Dispatcher::sheetsGivenUp() { return state_->sheets.givenUp(); }

std::map<int, CallProgress> Dispatcher::progress() { return state_->calling.progress(); }

} // namespace quelm::device
