// The attribute lines of a job: their shapes, their order, and what they say.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DEVICE_STREAM_ATTRIBUTE_SECTION_H
#define DEVICE_STREAM_ATTRIBUTE_SECTION_H

#include "device/stream/attribute_names.h"
#include "device/stream/line_splitter.h"
#include "device/stream/received_job.h"
#include "device/stream/remarks.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace quelm::device {

/// The most recipients of a job.
inline constexpr std::size_t mostDestinations = 10'000;

/// An attribute line taken apart, however it is written.
struct AttributeLine {
    std::string_view prefix; ///< all ahead of the name
    std::string_view name;
    std::string_view rest;                ///< all behind it
    const AttributeName* known = nullptr; ///< null for a name that the device does not know
};

/// What a line of the DSC header or of PJL says as an attribute; nothing when it says something else. Lines
/// that only look like an attribute to a person are found, too: small letters, other blanks.
[[nodiscard]] std::optional<AttributeLine> attributeLine(JobForm form, std::string_view text);

/// True for a line that somebody may have meant as an attribute, with whatever signs ahead of its name or in
/// it: "% OID_ATT_FAX_TYPE", "oid-att fax type", "@PJL COMMENT QLMend".
[[nodiscard]] bool looksLikeAttribute(std::string_view text);

/// The lines of one form. All that is wrong goes to the refusals of `job`, all else that is remarkable to the
/// objections.
class AttributeSection {
public:
    AttributeSection(JobForm form, Remarks& refusals, Remarks& objections)
        : form_(form), refusals_(refusals), objections_(objections)
    {
    }

    /// Reads a line of the place where attributes stand.
    void take(const Line& line);

    /// True when a line was an attribute that the device knows.
    [[nodiscard]] bool hasLines() const { return last_.has_value(); }
    [[nodiscard]] std::uint64_t firstLine() const { return firstLine_; }

    /// True when a line was one that somebody may have meant as an attribute: a job that has one is a fax,
    /// and refused.
    [[nodiscard]] bool isMisspelt() const { return isMisspelt_; }
    /// Refuses a line that somebody may have meant as an attribute.
    void refuseMisspelt(std::uint64_t line);

    /// No more lines come: says what is missing up to the line `end`.
    void finish(std::uint64_t end);

    /// Writes what the lines say.
    void store(ReceivedJob& job) const;

private:
    using Place = std::uint64_t; // a line's number

    void refuseMisspelt(Place line, const std::string& why);
    void refuseSecond(Attribute attribute, Place line);
    void takeKnown(const AttributeLine& parts, const Line& line);
    /// The name in the shape of the form, for messages.
    [[nodiscard]] std::string shapeOf(const AttributeName& name) const;
    bool checkShape(const AttributeLine& parts, const Line& line);
    void checkOrder(Attribute attribute, const Line& line);
    void readValue(Attribute attribute, std::string_view value, const Line& line);
    void readQuoted(Attribute attribute, std::string_view value, const Line& line);
    void takeDestination(std::string_view number, Place line);
    void takeMailbox(std::string_view mailbox, Place line);
    void takeCard(std::string_view card, Place line);

    JobForm form_;
    Remarks& refusals_;
    Remarks& objections_;
    ReceivedJob values_;
    std::optional<Attribute> last_; ///< the furthest in the order
    std::optional<Attribute> previous_;
    std::array<Place, attributeNames.size()> seenAt_{};
    Place firstLine_ = 0;
    Place standInAt_ = 0; ///< where the job type stands in the place of the confirmation sheet
    bool isMisspelt_ = false;
    bool hasTooManyDestinations_ = false;
};

} // namespace quelm::device

#endif
