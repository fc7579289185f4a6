// Tests of the reading of streams.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/desktop/pages/block_reading.h"

#include "tests/driver/desktop/main_loop.h"

#include <gio/gunixinputstream.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <memory>
#include <string>

namespace quelm {
namespace {

template <typename Object>
std::shared_ptr<Object> owned(gpointer object)
{
    return {static_cast<Object*>(object), g_object_unref};
}

class BlockReadingTest : public testing::Test {
protected:
    ~BlockReadingTest() override { closeWriter(); }

    /// Reads a pipe, into which `write` writes.
    void readPipe()
    {
        std::array<int, 2> pipe{};
        ASSERT_EQ(::pipe(pipe.data()), 0);
        writer = pipe[1];
        read(owned<GInputStream>(g_unix_input_stream_new(pipe[0], TRUE)));
    }

    void readText(const std::string& written)
    {
        read(owned<GInputStream>(g_memory_input_stream_new_from_data(
            written.data(), static_cast<gssize>(written.size()), nullptr)));
    }

    void read(const std::shared_ptr<GInputStream>& stream)
    {
        readBlocks(stream.get(), cancellation.get(), [this, lives = lives](std::string_view block) {
            text += block;
            ends += block.empty() ? 1 : 0;
            if (text.size() >= enough)
                g_cancellable_cancel(cancellation.get());
        });
        EXPECT_EQ(text, "");
        EXPECT_EQ(ends, 0);
    }

    void write(const std::string& bytes) const
    {
        EXPECT_EQ(::write(writer, bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
    }

    void closeWriter()
    {
        if (writer >= 0)
            ::close(writer);
        writer = -1;
    }

    int writer = -1;
    std::shared_ptr<GCancellable> cancellation = owned<GCancellable>(g_cancellable_new());
    std::shared_ptr<int> lives = std::make_shared<int>(); ///< shared with what receives the blocks
    std::string text;
    int ends = 0;
    std::size_t enough = std::string::npos; ///< the bytes behind which reading is cancelled
};

TEST_F(BlockReadingTest, BlocksComeAsTheyAreWritten)
{
    readPipe();
    write("one ");
    ASSERT_TRUE(loopUntil([this] { return text == "one "; }));
    write("two");
    ASSERT_TRUE(loopUntil([this] { return text == "one two"; }));
    EXPECT_EQ(ends, 0);
    closeWriter();
    EXPECT_TRUE(loopUntil([this] { return ends == 1; }));
    EXPECT_EQ(text, "one two");
}

TEST_F(BlockReadingTest, ManyBlocksAreOneText)
{
    std::string written(300'000, 'x');
    written += "end";
    readText(written);
    ASSERT_TRUE(loopUntil([this] { return ends == 1; }));
    EXPECT_EQ(text, written);
}

TEST_F(BlockReadingTest, CancellationEndsTheWaiting)
{
    readPipe();
    loopUntilIdle();
    g_cancellable_cancel(cancellation.get());
    ASSERT_TRUE(loopUntil([this] { return ends > 0; }));
    loopUntilIdle();
    EXPECT_EQ(ends, 1);
}

TEST_F(BlockReadingTest, NothingComesBehindTheBlockThatCancelled)
{
    enough = 1;
    const std::string written(300'000, 'x');
    readText(written);
    ASSERT_TRUE(loopUntil([this] { return ends == 1; }));
    EXPECT_LT(text.size(), written.size());
}

TEST_F(BlockReadingTest, TheReceiverIsGoneBehindTheEnd)
{
    readPipe();
    EXPECT_EQ(lives.use_count(), 2);
    closeWriter();
    ASSERT_TRUE(loopUntil([this] { return ends == 1; }));
    EXPECT_EQ(lives.use_count(), 1);
}

} // namespace
} // namespace quelm
