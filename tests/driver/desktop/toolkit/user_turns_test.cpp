// Actions and refreshes, a turn of the main loop at a time.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "driver/desktop/toolkit/user_turns.h"

#include "base/error.h"
#include "tests/driver/desktop/main_loop.h"

#include <glibmm/init.h>
#include <glibmm/main.h>
#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <string>

namespace {

class Drawing : public quelm::Refreshable {
public:
    explicit Drawing(std::string& journal, std::string text) : log_(journal), name_(std::move(text)) {}
    void refresh() override { log_ += name_ + ";"; }

private:
    std::string& log_;
    std::string name_;
};

class UserTurns : public testing::Test {
protected:
    UserTurns() { Glib::init(); }

    auto noting(const std::string& text)
    {
        return [this, text] { journal += text + ";"; };
    }

    std::string journal;
    quelm::UserTurns turns;
    Drawing view{journal, "drawn"};
};

} // namespace

TEST_F(UserTurns, AnActionRunsFromTheMainLoopAndNotBefore)
{
    turns.act(noting("acted"));
    EXPECT_EQ(journal, "");
    loopUntilIdle();
    EXPECT_EQ(journal, "acted;");
}

TEST_F(UserTurns, ActionsRunInTheirOrderAheadOfDrawing)
{
    turns.touch(view);
    turns.act(noting("first"));
    turns.act(noting("second"));
    loopUntilIdle();
    EXPECT_EQ(journal, "first;second;drawn;");
}

TEST_F(UserTurns, ActionsRunAheadOfFurtherEvents)
{
    Glib::signal_idle().connect_once(noting("event"), Glib::PRIORITY_DEFAULT);
    turns.act(noting("acted"));
    turns.touch(view);
    loopUntilIdle();
    EXPECT_EQ(journal, "acted;drawn;event;");
}

TEST_F(UserTurns, WhatIsTouchedAThousandTimesIsDrawnOnce)
{
    turns.act([this] {
        for (int time = 0; time < 1000; ++time)
            turns.touch(view);
    });
    loopUntilIdle();
    EXPECT_EQ(journal, "drawn;");
    turns.touch(view);
    loopUntilIdle();
    EXPECT_EQ(journal, "drawn;drawn;");
}

TEST_F(UserTurns, TheEndOfATurnIsToldWhenActionsRan)
{
    turns.setSettled(noting("settled"));
    turns.touch(view);
    loopUntilIdle();
    EXPECT_EQ(journal, "drawn;");
    turns.act(noting("acted"));
    turns.touch(view);
    loopUntilIdle();
    EXPECT_EQ(journal, "drawn;acted;drawn;settled;");
}

TEST_F(UserTurns, AnErrorIsToldAndTheControlShowsWhatTheTreeHolds)
{
    turns.setTrouble([this](const std::string& message) { journal += message + ";"; });
    turns.act([] { throw quelm::Error("impossible"); }, &view);
    turns.act(noting("acted"));
    loopUntilIdle();
    EXPECT_EQ(journal, "impossible;acted;drawn;");
}

TEST_F(UserTurns, WhatLeftTheScreenIsNotDrawn)
{
    auto leaving = std::make_unique<Drawing>(journal, "gone");
    turns.touch(*leaving);
    turns.act(
        [&] {
            turns.forget(*leaving);
            leaving.reset();
            throw quelm::Error("impossible");
        },
        leaving.get());
    loopUntilIdle();
    EXPECT_EQ(journal, "");
}

TEST_F(UserTurns, AnActionThatQueuesAnotherIsFollowedByIt)
{
    turns.act([this] {
        turns.act(noting("second"));
        journal += "first;";
    });
    loopUntilIdle();
    EXPECT_EQ(journal, "first;second;");
}

TEST_F(UserTurns, NothingRunsWhenTheQueueIsGone)
{
    {
        quelm::UserTurns ending;
        ending.act(noting("acted"));
    }
    loopUntilIdle();
    EXPECT_EQ(journal, "");
}
