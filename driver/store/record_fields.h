// The fields in a record's text, as the component finds them, and the records that it cannot read.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRIVER_STORE_RECORD_FIELDS_H
#define DRIVER_STORE_RECORD_FIELDS_H

#include <optional>
#include <string>
#include <string_view>

namespace quelm {

/// Why the component cannot read a record: it gives up at such a field, and with it, for one that is blank,
/// the list of the whole phonebook.
struct FieldProblem {
    enum class Kind { blank, endless };
    Kind kind;
    std::string tag; ///< "nam"; of any bytes, shorter at the end of the text

    friend bool operator==(const FieldProblem&, const FieldProblem&) = default;
};

/// Walks through the fields of a record's text, such as ".snam\r\nAnne\r\n.enam\r\n". The text ends at its
/// first NUL, as the component takes it.
class RecordFields {
public:
    explicit RecordFields(std::string_view data) : rest_(data.substr(0, data.find('\0'))) {}

    /// Moves to the next field that has a value. False at the end of the text or at a field that cannot be
    /// read.
    [[nodiscard]] bool next();

    std::string_view tag() const { return tag_; }
    /// Without the white space around it; part of the text.
    std::string_view value() const { return value_; }
    /// What stopped `next`; nothing at the end of the text.
    const std::optional<FieldProblem>& problem() const { return problem_; }

private:
    std::string_view rest_;
    std::string tag_;
    std::string_view value_;
    std::optional<FieldProblem> problem_;
};

/// What keeps the component from reading a record with this text, or nothing.
[[nodiscard]] std::optional<FieldProblem> fieldProblem(std::string_view data);

/// The end of a sentence for the user: its field "organization" is blank.
[[nodiscard]] std::string described(const FieldProblem& problem);

} // namespace quelm

#endif
