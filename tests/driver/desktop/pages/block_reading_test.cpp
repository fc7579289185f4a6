// Tests of the reading of streams.
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
        writer_ = pipe[1];
        read(owned<GInputStream>(g_unix_input_stream_new(pipe[0], TRUE)));
    }

    void readText(const std::string& text)
    {
        read(owned<GInputStream>(
            g_memory_input_stream_new_from_data(text.data(), static_cast<gssize>(text.size()), nullptr)));
    }

    void read(const std::shared_ptr<GInputStream>& stream)
    {
        readBlocks(stream.get(), cancellation_.get(), [this, lives = lives_](std::string_view block) {
            text_ += block;
            ends_ += block.empty() ? 1 : 0;
            if (text_.size() >= enough_)
                g_cancellable_cancel(cancellation_.get());
        });
        EXPECT_EQ(text_, "");
        EXPECT_EQ(ends_, 0);
    }

    void write(const std::string& text) const
    {
        EXPECT_EQ(::write(writer_, text.data(), text.size()), static_cast<ssize_t>(text.size()));
    }

    void closeWriter()
    {
        if (writer_ >= 0)
            ::close(writer_);
        writer_ = -1;
    }

    int writer_ = -1;
    std::shared_ptr<GCancellable> cancellation_ = owned<GCancellable>(g_cancellable_new());
    std::shared_ptr<int> lives_ = std::make_shared<int>(); ///< shared with what receives the blocks
    std::string text_;
    int ends_ = 0;
    std::size_t enough_ = std::string::npos; ///< the bytes behind which reading is cancelled
};

TEST_F(BlockReadingTest, BlocksComeAsTheyAreWritten)
{
    readPipe();
    write("one ");
    ASSERT_TRUE(loopUntil([this] { return text_ == "one "; }));
    write("two");
    ASSERT_TRUE(loopUntil([this] { return text_ == "one two"; }));
    EXPECT_EQ(ends_, 0);
    closeWriter();
    EXPECT_TRUE(loopUntil([this] { return ends_ == 1; }));
    EXPECT_EQ(text_, "one two");
}

TEST_F(BlockReadingTest, ManyBlocksAreOneText)
{
    std::string text(300'000, 'x');
    text += "end";
    readText(text);
    ASSERT_TRUE(loopUntil([this] { return ends_ == 1; }));
    EXPECT_EQ(text_, text);
}

TEST_F(BlockReadingTest, CancellationEndsTheWaiting)
{
    readPipe();
    loopUntilIdle();
    g_cancellable_cancel(cancellation_.get());
    ASSERT_TRUE(loopUntil([this] { return ends_ > 0; }));
    loopUntilIdle();
    EXPECT_EQ(ends_, 1);
}

TEST_F(BlockReadingTest, NothingComesBehindTheBlockThatCancelled)
{
    enough_ = 1;
    const std::string text(300'000, 'x');
    readText(text);
    ASSERT_TRUE(loopUntil([this] { return ends_ == 1; }));
    EXPECT_LT(text_.size(), text.size());
}

TEST_F(BlockReadingTest, TheReceiverIsGoneBehindTheEnd)
{
    readPipe();
    EXPECT_EQ(lives_.use_count(), 2);
    closeWriter();
    ASSERT_TRUE(loopUntil([this] { return ends_ == 1; }));
    EXPECT_EQ(lives_.use_count(), 1);
}

} // namespace
} // namespace quelm
