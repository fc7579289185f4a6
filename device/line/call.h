// What stands at the two ends of a call, and how it ended.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DEVICE_LINE_CALL_H
#define DEVICE_LINE_CALL_H

#include <chrono>
#include <functional>
#include <optional>
#include <string>

namespace quelm::device {

/// The machine that calls.
struct CallingFax {
    std::string pages;      ///< a TIFF file as `renderPages` makes it
    std::string identity;   ///< its station identity (CSI, TSI): at most 20 digits, blanks and "+"
    std::string subAddress; ///< the mailbox behind the other machine; empty for none
    int fastest = 14400;    ///< bit/s: 4800 or 14400
    bool errorCorrection = true;
};

/// What is at the other end.
struct AnsweringParty {
    enum class Kind {
        fax,
        busy,
        noAnswer, ///< it rings and rings
        voice     ///< a person speaks and then hangs up
    };
    Kind kind = Kind::fax;
    std::string identity; ///< of a fax machine, like the caller's
    std::string keepAs;  ///< where a fax machine writes what it receives: a TIFF file that does not exist yet
    int fastest = 14400; ///< 4800 for a slow machine, which knows V.27ter alone
    bool errorCorrection = true;
    /// Of the line: the signal is so many dB above it. The machine then offers 9,600 bit/s at most. Error
    /// correction repairs 20 dB, the call becomes slower from 18 on, and fails from 14 on.
    std::optional<double> noise;
    /// It puts the receiver down once it has acknowledged so many pages; for 0 as soon as the first comes.
    /// One that has received all pages by then has no reason to.
    std::optional<int> hangsUpAfterPage;
    std::optional<int> paperForPages; ///< its paper ends behind so many pages
};

/// How far a call is. Asked for every 20 ms of line time.
struct CallProgress {
    std::chrono::milliseconds lineTime{0}; ///< since the receiver was taken up
    int pagesSent = 0;                     ///< acknowledged by the other machine
};

/// Follows a call, on the thread that makes it; false hangs up. A call in real time waits here.
using CallWatch = std::function<bool(const CallProgress&)>;

/// How a call ended.
struct CallResult {
    enum class Kind {
        sent, ///< every page was acknowledged, and the call ended in order
        busy,
        noAnswer,
        failed,   ///< anything else, with the other machine or a person
        cancelled ///< the watch hung up
    };
    Kind kind = Kind::failed;
    int code =
        0; ///< the modem library's completion code; -1 where it had no part in the call (busy, no answer)
    std::string words;        ///< what happened in the field's words, for the report: "sent", "busy", "no fax
                              ///< machine answers", ...
    std::string libraryWords; ///< the library's own words for the code; empty where it had no part
    int pagesSent = 0;        ///< that the other machine has acknowledged
    int pagesKept = 0;        ///< that the other machine has written to its file
    int repeatedFrames = 0;   ///< pieces of pages that error correction had sent again
    int damagedRows = 0;      ///< lines of the kept pages that the other machine could not read
    int bitRate = 0;          ///< the last that both agreed on; 0 when they never did
    bool errorCorrection = false;
    std::string identity;                  ///< of the other machine, as it said it
    std::string subAddress;                ///< the mailbox that the other machine was told
    std::string dialled;                   ///< the keys as the exchange heard them, "," for a pause
    std::chrono::milliseconds duration{0}; ///< of line time, dialling included
};

} // namespace quelm::device

#endif
