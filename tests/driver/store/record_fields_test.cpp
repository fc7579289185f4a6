// Which records can be read: the rule, and the component itself.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/store/record_fields.h"

#include "host/record_database.h"
#include "phonebook/record_format.h"

#include <gtest/gtest.h>

#include <array>
#include <exception>
#include <random>
#include <string>

namespace {

using quelm::fieldProblem;
using quelm::FieldProblem;
using Kind = FieldProblem::Kind;

/// True when the component's own reader gets through the record.
bool componentReads(const std::string& data)
{
    std::string key = "uAnne";
    std::string text = data;
    LegacyDBRecord record{0, 0, 0, key.data(), text.data()};
    LegacyDBRecipient recipient;
    ClearLegacyDBRecipientInfo(recipient);
    try {
        return ParseLegacyPBEntry(&record, recipient);
    } catch (const std::exception&) {
        return false;
    }
}

std::string field(const std::string& tag, const std::string& value)
{
    return ".s" + tag + "\r\n" + value + "\r\n.e" + tag + "\r\n";
}

struct Case {
    const char* what;
    std::string data;
    std::optional<FieldProblem> problem;
};

class FieldRule : public testing::TestWithParam<Case> {};

TEST_P(FieldRule, SaysWhatTheComponentCannotRead)
{
    EXPECT_EQ(fieldProblem(GetParam().data), GetParam().problem);
    EXPECT_EQ(componentReads(GetParam().data), !GetParam().problem);
}

INSTANTIATE_TEST_SUITE_P(
    Records, FieldRule,
    testing::Values(Case{"entry", field("usg", "0") + field("nam", "Anne") + field("fxn", "1"), {}},
                    Case{"nothing", "", {}}, Case{"noField", "anything", {}},
                    Case{"blank", field("nam", "Anne") + field("cmp", " "), FieldProblem{Kind::blank, "cmp"}},
                    Case{"emptyLines", field("nam", ""), FieldProblem{Kind::blank, "nam"}},
                    Case{"everyWhiteSpace", field("cmp", " \t\v\f"), FieldProblem{Kind::blank, "cmp"}},
                    Case{"noBreakSpaceIsText", field("cmp", "\u00A0"), {}},
                    Case{"noMembers", field("gen", ""), FieldProblem{Kind::blank, "gen"}},
                    Case{"noValueAtAll", ".snam.enam" + field("usg", "0"), {}},
                    Case{"noEnd", ".snam\r\nAnne\r\n", FieldProblem{Kind::endless, "nam"}},
                    Case{"cutTag", ".susg\r\n0\r\n.eusg\r\n.sna", FieldProblem{Kind::endless, "na"}},
                    Case{"noTag", "x.s", FieldProblem{Kind::endless, ""}},
                    Case{"unknownField", field("xyz", "foo"), {}},
                    Case{"blankUnknownField", field("xyz", "\n"), FieldProblem{Kind::blank, "xyz"}},
                    Case{"endInAValue", field("nam", "Dr.enamel.s1"), FieldProblem{Kind::endless, "1\r\n"}},
                    Case{"tagOfTheEndMark", ".s.e.e.e.\r\n", {}},
                    Case{"nulEndsTheText", field("nam", "Anne") + std::string("\0", 1) + ".snam", {}}),
    [](const auto& tested) { return std::string(tested.param.what); });

TEST(FieldRuleOfManyRecords, AgreesWithTheComponent)
{
    constexpr unsigned seed = 20240612;
    std::mt19937 random(seed);
    const std::array<std::string, 24> pieces{".s",   ".e",   ".s", ".e", "usg",  "nam", "cmp", "gen",
                                             "\r\n", "\r\n", " ",  "\t", "Anne", "u",   ",",   ">",
                                             ".",    "s",    "e",  "x",  "\v",   "é",   "\f",  "dtm"};
    int readable = 0;
    constexpr int records = 60000;
    for (int i = 0; i < records; ++i) {
        std::string data;
        // Half of them begin as fields do, so that many can be read.
        if (i % 2 == 0)
            data = field(pieces[4 + random() % 4], pieces[random() % pieces.size()]);
        const auto length = random() % 14;
        for (unsigned long piece = 0; piece < length; ++piece)
            data += pieces[random() % pieces.size()];
        const bool reads = componentReads(data);
        ASSERT_EQ(!fieldProblem(data), reads) << "seed " << seed << ", record " << i << ": " << data;
        readable += reads ? 1 : 0;
    }
    EXPECT_GT(readable, records / 10);
    EXPECT_LT(readable, records - records / 10);
}

TEST(FieldRuleOfManyRecords, NamesAFieldAsAUserKnowsIt)
{
    EXPECT_EQ(described(FieldProblem{Kind::blank, "cmp"}), "its field \"organization\" is blank");
    EXPECT_EQ(described(FieldProblem{Kind::endless, "a\nb"}), "its field \"a b\" has no end");
}

} // namespace
