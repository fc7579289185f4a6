// Joins what stands at both ends of a telephone line until the call is over.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/line/fax_call.h"

#include "device/line/call_words.h"
#include "device/line/exchange_tones.h"
#include "device/line/fax_machine.h"
#include "device/line/line_noise.h"
#include "device/line/page_files.h"
#include "device/line/voice.h"

#include <algorithm>

namespace quelm::device {
namespace {

using std::chrono::milliseconds;
using Kind = CallResult::Kind;

/// For what the caller says last to be heard.
constexpr milliseconds tail = std::chrono::seconds(1);

/// No call takes longer, not even at 2,400 bit/s with all of it repeated.
milliseconds longestCall(const SentPages& pages)
{
    constexpr std::int64_t perByte = 20;
    return std::chrono::minutes(5 + 5 * std::int64_t{pages.count()}) +
           milliseconds(static_cast<std::int64_t>(pages.bytes()) * perByte);
}

bool goesOn(const CallWatch& watch, milliseconds lineTime, int pagesSent)
{
    return !watch || watch({.lineTime = lineTime, .pagesSent = pagesSent});
}

FaxMachineSettings settingsOf(const CallingFax& caller, const SentPages& pages)
{
    FaxMachineSettings settings;
    settings.calls = true;
    settings.file = pages.shortName();
    settings.identity = caller.identity;
    settings.subAddress = caller.subAddress;
    settings.fastest = caller.fastest;
    settings.errorCorrection = caller.errorCorrection;
    return settings;
}

FaxMachineSettings settingsOf(const AnsweringParty& answering, const ReceivedPages& pages)
{
    FaxMachineSettings settings;
    settings.file = pages.shortName();
    settings.identity = answering.identity;
    settings.fastest = answering.fastest;
    // V.17, whose short training before each page bears no noise, is what machines on such lines do without.
    constexpr int fastestOfV29 = 9600;
    if (answering.noise)
        settings.fastest = std::min(settings.fastest, fastestOfV29);
    settings.errorCorrection = answering.errorCorrection;
    settings.paperForPages = answering.paperForPages;
    return settings;
}

/// A call to another fax machine.
class FaxCall {
public:
    FaxCall(const CallingFax& caller, const AnsweringParty& answering, unsigned seed)
        : party_(answering), pages_(caller.pages), received_(answering.keepAs),
          calling_(settingsOf(caller, pages_)), answering_(settingsOf(answering, received_))
    {
        if (answering.noise) {
            toAnswering_.emplace(*answering.noise, 2 * seed);
            toCalling_.emplace(*answering.noise, 2 * seed + 1);
        }
    }

    CallResult carry(const CallWatch& watch)
    {
        const milliseconds longest = longestCall(pages_);
        bool cancelled = false;
        while (!calling_.hasEnded() && !cancelled && event_ == CallEvent::none) {
            exchangePiece();
            cancelled = !goesOn(watch, lineTime_, calling_.state().pages);
            if (otherHangsUp())
                event_ = CallEvent::hungUp;
            else if (answering_.isOutOfPaper() && !calling_.state().errorCorrection)
                event_ = CallEvent::outOfPaper; // without error correction there is no other way to say so
            else if (lineTime_ >= longest)
                event_ = CallEvent::tooLong;
        }
        CallResult result;
        result.duration = lineTime_;
        const bool endedByItself = calling_.hasEnded();
        while (endedByItself && !answering_.hasEnded() && lineTime_ < result.duration + tail)
            exchangePiece();
        calling_.hangUp();
        answering_.hangUp();
        describe(result, cancelled, endedByItself);
        return result;
    }

private:
    void exchangePiece()
    {
        Samples called{};
        Samples answered{};
        calling_.speak(called);
        answering_.speak(answered);
        if (toAnswering_)
            toAnswering_->addTo(called);
        if (toCalling_)
            toCalling_->addTo(answered);
        answering_.listen(called);
        calling_.listen(answered);
        lineTime_ += pieceTime;
        if (calling_.hasAgreed() && agreedAt_ == milliseconds::zero())
            agreedAt_ = lineTime_;
    }

    /// True when the other machine puts the receiver down in the middle of the call.
    bool otherHangsUp() const
    {
        if (!party_.hangsUpAfterPage || *party_.hangsUpAfterPage >= pages_.count())
            return false;
        // The first page has begun by then, and cannot be over: its modem is still being trained.
        constexpr milliseconds soon{200};
        if (*party_.hangsUpAfterPage <= 0)
            return agreedAt_ != milliseconds::zero() && lineTime_ > agreedAt_ + soon;
        return calling_.state().pages >= *party_.hangsUpAfterPage;
    }

    /// How many pages a machine keeps that stopped behind some of them.
    int mostKept() const
    {
        int most = answering_.state().pages;
        if (party_.hangsUpAfterPage)
            most = std::min(most, std::max(*party_.hangsUpAfterPage, 0));
        if (party_.paperForPages)
            most = std::min(most, std::max(*party_.paperForPages, 0));
        return most;
    }

    void describe(CallResult& result, bool cancelled, bool endedByItself)
    {
        const FaxMachineState state = calling_.state();
        result.code = calling_.code();
        result.pagesSent = state.pages;
        result.pagesKept = received_.keep(mostKept());
        result.repeatedFrames = state.repeatedFrames;
        result.damagedRows = answering_.damagedRows();
        result.bitRate = calling_.hasAgreed() ? state.bitRate : 0;
        result.errorCorrection = calling_.hasAgreed() && state.errorCorrection;
        result.identity = calling_.otherIdentity();
        result.subAddress = answering_.otherSubAddress();
        const bool inOrder = endedByItself && calling_.code() == 0 && answering_.code() == 0;
        const int count = pages_.count();
        if (cancelled)
            result.kind = Kind::cancelled;
        else if (inOrder && result.pagesSent == count && result.pagesKept == count)
            result.kind = Kind::sent;
        if (result.kind == Kind::failed)
            received_.requireRoom(); // a machine that cannot write gives up in one way or another
        result.words = callWords(result.kind, result.code, eventOf(result));
        result.libraryWords = libraryWords(result.code);
    }

    /// What is to be said beside the library's code.
    CallEvent eventOf(const CallResult& result) const
    {
        if (result.kind == Kind::sent)
            return result.damagedRows > 0 ? CallEvent::damagedRows : CallEvent::none;
        if (event_ != CallEvent::none)
            return event_;
        if (answering_.isOutOfPaper())
            return CallEvent::outOfPaper;
        return party_.noise ? CallEvent::noisyLine : CallEvent::none;
    }

    AnsweringParty party_;
    SentPages pages_;
    ReceivedPages received_;
    FaxMachine calling_;
    FaxMachine answering_;
    std::optional<LineNoise> toAnswering_;
    std::optional<LineNoise> toCalling_;
    milliseconds lineTime_{0};
    milliseconds agreedAt_{0};
    CallEvent event_ = CallEvent::none; ///< that ended the call from outside
};

/// A call that a person answers.
CallResult callPerson(const CallingFax& caller, const CallWatch& watch)
{
    const SentPages pages(caller.pages);
    FaxMachine calling(settingsOf(caller, pages));
    Voice person;
    CallResult result;
    bool cancelled = false;
    while (!calling.hasEnded() && !cancelled) {
        Samples called{};
        Samples answered{};
        calling.speak(called);
        person.speak(answered);
        calling.listen(answered);
        result.duration += pieceTime;
        cancelled = !goesOn(watch, result.duration, 0);
    }
    calling.hangUp();
    result.kind = cancelled ? Kind::cancelled : Kind::failed;
    result.code = calling.code();
    result.words = callWords(result.kind, result.code);
    result.libraryWords = libraryWords(result.code);
    return result;
}

/// A call that nobody takes: the caller listens to the exchange.
CallResult callNobody(ExchangeTone tone, const CallWatch& watch)
{
    constexpr int mostRings = 6;
    constexpr milliseconds longest = std::chrono::minutes(1);
    ToneSender exchange(tone);
    ToneListener caller;
    CallResult result;
    result.kind = Kind::noAnswer;
    result.code = -1;
    while (caller.rings() < mostRings && result.duration < longest) {
        Samples heard{};
        exchange.speak(heard);
        caller.listen(heard);
        result.duration += pieceTime;
        if (caller.isBusy()) {
            result.kind = Kind::busy;
            break;
        }
        if (!goesOn(watch, result.duration, 0)) {
            result.kind = Kind::cancelled;
            break;
        }
    }
    result.words = callWords(result.kind, result.code);
    return result;
}

} // namespace

CallResult carryCall(const CallingFax& caller, const AnsweringParty& answering, const CallWatch& watch,
                     unsigned seed)
{
    switch (answering.kind) {
    case AnsweringParty::Kind::busy:
        return callNobody(ExchangeTone::busy, watch);
    case AnsweringParty::Kind::noAnswer:
        return callNobody(ExchangeTone::ringing, watch);
    case AnsweringParty::Kind::voice:
        return callPerson(caller, watch);
    case AnsweringParty::Kind::fax:
        break;
    }
    return FaxCall(caller, answering, seed).carry(watch);
}

} // namespace quelm::device
