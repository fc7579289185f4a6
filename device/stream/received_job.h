// What a device makes of a print job: its settings as a fax, and all that is wrong with it.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DEVICE_STREAM_RECEIVED_JOB_H
#define DEVICE_STREAM_RECEIVED_JOB_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace quelm::device {

/// How the job's attribute lines are wrapped.
enum class JobForm {
    plain, ///< PostScript without attribute lines
    dsc,   ///< comments of the PostScript document
    pjl    ///< comments of the printer's job language
};

enum class Resolution { standard, fine, superfine };

/// The fastest that a call may be.
enum class Speed { forced4800, upTo14400, automatic };

/// One recipient.
struct Destination {
    std::string
        number; ///< what the line says between its quotation marks: digits, and what stands among them
    std::string mailbox;    ///< empty for none
    std::uint64_t line = 0; ///< of the job, from 1
};

/// Something that is to be said about a line of the job.
struct Remark {
    std::uint64_t line = 0; ///< from 1; 0 when it is about the job as a whole
    std::string text;       ///< part of a sentence, UTF-8, one line: what is wrong
};

/// What a job says. Texts are bytes of the job where nothing else is said: they may hold anything.
struct ReceivedJob {
    JobForm form = JobForm::plain;
    std::string title;  ///< of the job; empty when it has none
    bool isFax = false; ///< it has attribute lines; otherwise it is printed
    bool coverSheet = false;
    bool confirmationSheet = false;
    Resolution resolution = Resolution::standard;
    Speed speed = Speed::automatic;
    std::vector<Destination> destinations;
    std::string creditCard; ///< its digits as they stand there; empty for none

    std::uint64_t size = 0;            ///< of the job in bytes
    std::uint64_t postScriptBegin = 0; ///< the offset of its first byte of PostScript
    std::uint64_t postScriptEnd = 0;   ///< the offset behind the last

    /// Why the device refuses the job as a whole; empty for a job that it takes.
    std::vector<Remark> refusals;
    /// How many more there are; the last of `refusals` says so then.
    std::size_t refusalsLeftOut = 0;
    /// What it passes over: attributes that it does not know.
    std::vector<Remark> objections;

    bool isRefused() const { return !refusals.empty(); }
    /// How many reasons there are, also those that are left out.
    std::size_t refusalCount() const
    {
        return refusals.size() + refusalsLeftOut - (refusalsLeftOut > 0 ? 1 : 0);
    }
};

} // namespace quelm::device

#endif
