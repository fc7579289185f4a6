// The words of a report, by how a call ended and by the modem library's completion code.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/line/call_words.h"

#include "base/translation.h"
#include "device/line/modem_library.h"

#include <algorithm>
#include <array>

namespace quelm::device {
namespace {

using Kind = CallResult::Kind;

struct CodeWords {
    int code;
    const char* words;
};

constexpr const char* nobody = forTranslation("no fax machine answers");
constexpr const char* speed = forTranslation("cannot agree on a speed");
constexpr const char* incapable = forTranslation("the other machine cannot receive these pages");
constexpr const char* silent = forTranslation("the other machine does not answer any more");
constexpr const char* garbled = forTranslation("the other machine's answers make no sense");
constexpr const char* hungUp = forTranslation("the other machine hung up");
constexpr const char* unreadable = forTranslation("the pages cannot be read");

constexpr std::array codes{
    CodeWords{T30_ERR_CEDTONE, nobody},
    CodeWords{T30_ERR_T0_EXPIRED, nobody},
    CodeWords{T30_ERR_T1_EXPIRED, nobody},
    CodeWords{T30_ERR_CANNOT_TRAIN, speed},
    CodeWords{T30_ERR_TX_BADDCS, speed},
    CodeWords{T30_ERR_INCOMPATIBLE, incapable},
    CodeWords{T30_ERR_RX_INCAPABLE, incapable},
    CodeWords{T30_ERR_NORESSUPPORT, incapable},
    CodeWords{T30_ERR_NOSIZESUPPORT, incapable},
    CodeWords{T30_ERR_TX_PHBDEAD, silent},
    CodeWords{T30_ERR_TX_PHDDEAD, silent},
    CodeWords{T30_ERR_RETRYDCN, silent},
    CodeWords{T30_ERR_HDLC_CARRIER, garbled},
    CodeWords{T30_ERR_UNEXPECTED, garbled},
    CodeWords{T30_ERR_TX_ECMPHD, garbled},
    CodeWords{T30_ERR_TX_INVALRSP, garbled},
    CodeWords{T30_ERR_TX_NODIS, garbled},
    CodeWords{T30_ERR_TX_BADPG, hungUp},
    CodeWords{T30_ERR_TX_GOTDCN, hungUp},
    CodeWords{T30_ERR_RX_DCNPHD, hungUp},
    CodeWords{T30_ERR_CALLDROPPED, hungUp},
    CodeWords{T30_ERR_TX_T5EXP, forTranslation("the other machine is not ready")},
    CodeWords{T30_ERR_FILEERROR, unreadable},
    CodeWords{T30_ERR_NOPAGE, unreadable},
    CodeWords{T30_ERR_BADTIFF, unreadable},
    CodeWords{T30_ERR_BADPAGE, unreadable},
    CodeWords{T30_ERR_BADTAG, unreadable},
    CodeWords{T30_ERR_BADTIFFHDR, unreadable},
};

const char* failure(int code, CallEvent event)
{
    switch (event) {
    case CallEvent::hungUp:
        return hungUp;
    case CallEvent::outOfPaper:
        return forTranslation("the other machine is out of paper");
    case CallEvent::noisyLine:
        return forTranslation("the line is too noisy");
    case CallEvent::tooLong:
        return forTranslation("the call took too long");
    case CallEvent::none:
    case CallEvent::damagedRows:
        break;
    }
    const auto* found = std::ranges::find(codes, code, &CodeWords::code);
    return found == codes.end() ? forTranslation("the call failed") : found->words;
}

} // namespace

std::string callWords(Kind kind, int code, CallEvent event)
{
    switch (kind) {
    case Kind::sent:
        return event == CallEvent::damagedRows ? localized("sent, with damaged lines") : localized("sent");
    case Kind::busy:
        return localized("busy");
    case Kind::noAnswer:
        return localized("no answer");
    case Kind::cancelled:
        return localized("broken off");
    case Kind::failed:
        break;
    }
    return localized(failure(code, event));
}

std::string libraryWords(int code) { return t30_completion_code_to_str(code); }

} // namespace quelm::device
