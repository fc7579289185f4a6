// Makes calls, and enters how they ended.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/calls/calling_work.h"

#include "base/disk_room.h"
#include "base/error.h"
#include "device/calls/event_lines.h"

#include <chrono>
#include <string>

namespace quelm::device {
namespace {

/// Of its troubles.
std::string nameOf(const DueCall& due) { return "call " + std::to_string(due.call.number); }

} // namespace

/// A call that others can follow.
class CallingWork::OpenCall {
public:
    OpenCall(CallingWork& calling, int number) : calling_(calling), number_(number)
    {
        const std::lock_guard lock(calling_.mutex_);
        calling_.calls_[number_] = {};
    }
    ~OpenCall()
    {
        const std::lock_guard lock(calling_.mutex_);
        calling_.calls_.erase(number_);
    }
    OpenCall(const OpenCall&) = delete;
    OpenCall& operator=(const OpenCall&) = delete;

private:
    CallingWork& calling_;
    int number_;
};

bool CallingWork::callNext()
{
    const auto due = work_.log.beginCall(work_.clock.now());
    if (!due)
        return false;
    const OpenCall open(*this, due->call.number);
    call(*due);
    return true;
}

void CallingWork::call(const DueCall& due)
{
    const auto ended = connect(due);
    if (ended && ended->kind != CallResult::Kind::cancelled) {
        work_.clock.advanceTo(due.call.begunAt + ended->record.duration);
        end(due, *ended);
        return;
    }
    try {
        work_.log.breakOffCall(due.call.number);
    } catch (const Error& error) {
        work_.tellTrouble(nameOf(due), error); // the next start breaks it off
    }
    work_.tell(callLine(due.call, CallResult::Kind::cancelled, due.keys, {}));
}

/// Makes the call; again when this machine could not keep what came. Nothing when the device stops.
std::optional<CallEnd> CallingWork::connect(const DueCall& due)
{
    constexpr int mostTries = 6;
    Rest rests(work_.settings.rest);
    for (int tries = 1;; ++tries) {
        try {
            const auto begun = std::chrono::steady_clock::now();
            return makeCall(due, work_.folder, work_.exchange, work_.settings.identity,
                            [&](const CallProgress& progress) { return follow(due, begun, progress); });
        } catch (const NoRoom& error) {
            work_.tellTrouble(nameOf(due), error);
        } catch (const Error& error) {
            work_.tellTrouble(nameOf(due), error);
            if (tries >= mostTries) {
                CallEnd failed;
                failed.record = due.call;
                failed.record.result = error.what();
                failed.record.code = -1;
                return failed;
            }
        }
        if (!work_.rest(rests.next()))
            return std::nullopt;
    }
}

/// Lets line time go by, really or not.
bool CallingWork::follow(const DueCall& due, SteadyMoment begun, const CallProgress& progress)
{
    work_.clock.advanceTo(due.call.begunAt + progress.lineTime);
    {
        const std::lock_guard lock(mutex_);
        calls_[due.call.number] = progress;
    }
    if (work_.clock.isRealTime())
        work_.waitUntil(begun + progress.lineTime);
    return !work_.isStopping();
}

/// Enters the call's end, however long that takes: what is not entered would be made again.
void CallingWork::end(const DueCall& due, const CallEnd& ended)
{
    const bool foundNobody = ended.kind == CallResult::Kind::busy || ended.kind == CallResult::Kind::noAnswer;
    const auto pause = static_cast<std::size_t>(due.call.attempt - 1);
    std::optional<Moment> again;
    if (foundNobody && pause < work_.settings.pauses.size())
        again = due.call.begunAt + ended.record.duration + work_.settings.pauses[pause];
    Rest rests(work_.settings.rest);
    for (;;) {
        bool isDone = false;
        try {
            isDone = work_.log.endCall(ended.record, ended.kind == CallResult::Kind::sent, again);
        } catch (const Error& error) {
            work_.tellTrouble(nameOf(due), error);
            if (!work_.rest(rests.next()))
                return;
            continue;
        }
        work_.tell(callLine(ended.record, ended.kind, due.keys, again));
        work_.noTrouble(nameOf(due));
        if (isDone)
            work_.tell(doneLine(*work_.log.job(due.call.job)));
        return;
    }
}

std::map<int, CallProgress> CallingWork::progress()
{
    const std::lock_guard lock(mutex_);
    return calls_;
}

} // namespace quelm::device
