// What drawings ask of a device: its language, and its limits.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/drawings/fonts.h"
#include "driver/drawings/glyph_picture.h"
#include "driver/drawings/program_text.h"
#include "driver/drawings/text_layout.h"
#include "tests/driver/drawings/drawings_support.h"

#include <cctype>
#include <set>

namespace quelm::tests {
namespace {

/// What a program asks of its device at most, and the names in it.
struct Demands {
    std::size_t lineLength = 0;
    std::size_t tokensAtOnce = 0; ///< elements of procedures that are not complete
    std::size_t pathPoints = 0;   ///< between two fillings
    std::size_t stringBytes = 0;  ///< of one string
    std::size_t nameLength = 0;
    std::set<std::string> defined; ///< names with a "/"
    std::set<std::string> called;  ///< and without
    std::size_t procedures = 0;
    bool isAscii = true;
    bool isBalanced = true;
};

class Reader {
public:
    static Demands read(const std::string& program)
    {
        Reader reader;
        std::istringstream lines(program);
        for (std::string line; std::getline(lines, line);) {
            reader.demands_.lineLength = std::max(reader.demands_.lineLength, line.size());
            std::istringstream tokens(line);
            for (std::string token; tokens >> token;)
                reader.take(token);
        }
        for (const char character : program)
            reader.demands_.isAscii &= character == '\n' || (' ' <= character && character <= '~');
        reader.demands_.isBalanced &= reader.elements_.size() == 1 && !reader.inString_;
        return reader.demands_;
    }

private:
    void take(const std::string& token)
    {
        if (inString_) {
            inString_ = token != ">";
            digits_ += inString_ ? token.size() : 0;
            demands_.stringBytes = std::max(demands_.stringBytes, (digits_ + 1) / 2);
            demands_.isBalanced &=
                !inString_ || token.find_first_not_of("0123456789abcdef") == std::string::npos;
            return;
        }
        if (token == "}") {
            demands_.isBalanced &= elements_.size() > 1;
            if (elements_.size() > 1)
                elements_.pop_back();
            return;
        }
        countElement();
        if (token == "{") {
            elements_.push_back(0);
            ++demands_.procedures;
        } else if (token == "<") {
            inString_ = true;
            digits_ = 0;
        } else if (token.find_first_not_of("-.0123456789") != std::string::npos) {
            takeName(token);
        }
    }

    void countElement()
    {
        if (elements_.size() > 1)
            ++elements_.back();
        std::size_t all = 0;
        for (const auto some : elements_)
            all += some;
        demands_.tokensAtOnce = std::max(demands_.tokensAtOnce, all);
    }

    void takeName(const std::string& token)
    {
        demands_.nameLength = std::max(demands_.nameLength, token.size());
        if (token[0] == '/' && token.find('/', 1) == std::string::npos)
            demands_.defined.insert(token.substr(1));
        else
            demands_.called.insert(token.substr(token.find_first_not_of('/')));
        if (token == "m" || token == "l")
            points_ += 1;
        if (token == "c")
            points_ += 3;
        demands_.pathPoints = std::max(demands_.pathPoints, points_);
        if (token == "f")
            points_ = 0;
    }

    Demands demands_;
    std::vector<std::size_t> elements_{0}; // of the procedures that are open
    std::size_t points_ = 0;
    std::size_t digits_ = 0;
    bool inString_ = false;
};

const std::set<std::string>& levelTwo()
{
    static const std::set<std::string> operators = {
        "array",  "begin",   "bind",      "closepath", "currentpoint", "curveto",   "def",
        "dict",   "div",     "dup",       "end",       "exec",         "fill",      "grestore",
        "gsave",  "image",   "imagemask", "true",      "imagemask",    "lineto",    "load",
        "moveto", "newpath", "put",       "rmoveto",   "scale",        "translate", "[",
        "]"};
    return operators;
}

void expectModest(const Demands& demands)
{
    EXPECT_LE(demands.lineLength, 110U);
    EXPECT_LT(demands.tokensAtOnce, 480U) << "they may lie on the operand stack, of 500";
    EXPECT_LT(demands.pathPoints, 1500U);
    EXPECT_LE(demands.stringBytes, 65535U);
    EXPECT_LE(demands.nameLength, 127U);
    EXPECT_TRUE(demands.isAscii);
    EXPECT_TRUE(demands.isBalanced);
    for (const auto& name : demands.called)
        EXPECT_TRUE(levelTwo().contains(name) || demands.defined.contains(name)) << name;
}

class DrawingsLimitsTest : public DrawingsTest {};

/// Different Chinese characters.
std::string chinese(char32_t count)
{
    std::string text;
    for (char32_t character = 0x4E00; character < 0x4E00 + count; ++character) {
        text += static_cast<char>(0xE0U | character >> 12U);
        text += static_cast<char>(0x80U | (character >> 6U & 0x3FU));
        text += static_cast<char>(0x80U | (character & 0x3FU));
    }
    return text;
}

TEST_F(DrawingsLimitsTest, ManyChineseCharactersAreModest)
{
    PangoDrawings drawings;
    static_cast<void>(drawings.add(chinese(64), Typeface::sans, 14));
    ASSERT_EQ(drawings.missing(), "");
    const std::string program = drawings.postScript("Texts");
    const auto demands = Reader::read(program);
    expectModest(demands);
    EXPECT_EQ(demands.defined.count("g63"), 1U);
    EXPECT_EQ(demands.defined.count("g64"), 0U);
    EXPECT_LT(program.size(), 100000U);
}

TEST_F(DrawingsLimitsTest, SoIsALineOfAnyLength)
{
    PangoDrawings drawings;
    std::string text;
    for (int i = 0; i < 500; ++i)
        text += chinese(64);
    const auto line = drawings.add(text, Typeface::sans, 0.01).at(0);
    const auto demands = Reader::read(drawings.postScript("Texts"));
    expectModest(demands);
    EXPECT_GT(demands.procedures, 200U);
    const auto ink = print(drawings, "/Texts load 0 get 100 400 moveto 1 1000 scale exec").ink;
    EXPECT_NEAR(ink.right, left + line.width, 2);
}

TEST_F(DrawingsLimitsTest, SoAreGlyphsOfVeryManyPoints)
{
    PangoDrawings drawings;
    std::string text;
    for (const char* ornament : {"🗺", "🏘", "🌃", "🏙", "🎡", "🖽", "🗾", "🕸", "🏟"})
        text += ornament;
    const auto line = drawings.add(text, Typeface::sans, 40).at(0);
    ASSERT_EQ(drawings.missing(), "");
    const auto demands = Reader::read(drawings.postScript("Texts"));
    expectModest(demands);
    EXPECT_TRUE(demands.called.contains("imagemask")) << "one of them has more points than a path may have";
    EXPECT_NEAR(print(drawings, "0.5 setgray " + show(line)).ink.darkest, 128, 2)
        << "in the current colour, too";
}

TEST_F(DrawingsLimitsTest, SoArePictures)
{
    const auto map = Fonts::ofThisMachine()->newFontMap(FontChoice::all);
    const TextLayout layout(map.get(), "Helvetica", "中ﷺ", 100);
    for (const auto& glyph : layout.lines().at(0).glyphs) {
        const auto demands = Reader::read(inLines(procedureOf(pictureOf(glyph.font, glyph.glyph))));
        expectModest(demands);
        EXPECT_GT(demands.stringBytes, 1000U);
    }
}

TEST_F(DrawingsLimitsTest, NumbersHaveTheirFormInEveryLanguage)
{
    EXPECT_EQ(numberText(0.0), "0");
    EXPECT_EQ(numberText(-0.0001), "0");
    EXPECT_EQ(numberText(14.0), "14");
    EXPECT_EQ(numberText(12.5), "12.5");
    EXPECT_EQ(numberText(-1234567.8912), "-1234567.891");
}

} // namespace
} // namespace quelm::tests
