// Tests of the parting of a stream of pictures.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "base/ghostscript/png_stream.h"

#include "base/error.h"

#include <gtest/gtest.h>

namespace quelm {
namespace {

constexpr std::size_t plenty = 1000;

std::string chunk(const std::string& type, const std::string& data)
{
    const auto size = static_cast<char>(data.size());
    return std::string(3, '\0') + size + type + data + "sum!";
}

std::string picture(const std::string& data)
{
    return std::string("\x89PNG\r\n\x1a\n", 8) + chunk("IHDR", "head") + chunk("IDAT", data) +
           chunk("IEND", "");
}

TEST(PngStream, HandsOutPicturesOneByOne)
{
    PngStream stream(plenty);
    stream.append(picture("one") + picture("two"));
    EXPECT_EQ(stream.next(), picture("one"));
    EXPECT_FALSE(stream.atEnd());
    EXPECT_EQ(stream.next(), picture("two"));
    EXPECT_EQ(stream.next(), std::nullopt);
    EXPECT_TRUE(stream.atEnd());
}

TEST(PngStream, BytesMayComeOneAtATime)
{
    PngStream stream(plenty);
    const std::string bytes = picture("one") + picture("two");
    std::vector<std::string> pictures;
    for (const char byte : bytes) {
        stream.append({&byte, 1});
        while (auto next = stream.next())
            pictures.push_back(*next);
    }
    EXPECT_EQ(pictures, (std::vector{picture("one"), picture("two")}));
}

TEST(PngStream, DataThatLooksLikeTheEndIsData)
{
    PngStream stream(plenty);
    stream.append(picture(chunk("IEND", "")));
    EXPECT_EQ(stream.next(), picture(chunk("IEND", "")));
    EXPECT_TRUE(stream.atEnd());
}

TEST(PngStream, AnUnfinishedPictureIsNotHandedOut)
{
    PngStream stream(plenty);
    const std::string whole = picture("one");
    stream.append(whole.substr(0, whole.size() - 1));
    EXPECT_EQ(stream.next(), std::nullopt);
    EXPECT_FALSE(stream.atEnd());
}

TEST(PngStream, WhatIsNoPictureIsRefused)
{
    PngStream stream(plenty);
    stream.append("GIF89a");
    EXPECT_THROW(stream.next(), Error);
}

TEST(PngStream, APictureBeyondTheLimitIsRefusedBeforeAllOfItCame)
{
    PngStream stream(picture("one").size());
    stream.append(picture("one"));
    EXPECT_TRUE(stream.next());
    // The last chunk's length and type are there, its check sum is not.
    stream.append(picture("longer").substr(0, picture("longer").size() - 4));
    EXPECT_THROW(stream.next(), Error);
}

} // namespace
} // namespace quelm
