// SPDX-License-Identifier: MIT
#include "tests/core/autotype/AutoTypeFixture.h"

#include <new>
#include <stdexcept>

using testing::ElementsAre;
using testing::IsEmpty;

using Modifiers = KeyboardLayout::Modifiers;

namespace {

/// Every "x" is typed with Shift and Option, every "y" with no modifier, and "z" by no key.
struct AutoTypeInterruptionTest : testing::Test, AutoTypeFixture {
    AutoTypeInterruptionTest() {
        desktop.layout.select({{{7, Modifiers::shiftAndOption}, "x"}, {{16, Modifiers::none}, "y"}});
    }

    void refuse(std::uint16_t code, bool down) {
        desktop.keyboard.refuses = [=](const KeyEvent& event) { return event.code == code && event.down == down; };
    }

    static constexpr auto cancelled = "İşlem iptal edildi.";
};

}  // namespace

TEST_F(AutoTypeInterruptionTest, failsAtAPlainStrokeThatCannotBeMadeAndPostsNoHalfOfIt) {
    for (const bool down : {true, false}) {
        desktop.keyboard.typed.clear();
        refuse(48, down);

        EXPECT_EQ(type({Action::text("y"), Action::key(AutoTypeKey::tab), Action::text("y")}), eventCreationFailed);

        ASSERT_EQ(desktop.keyboard.typed.size(), 2u);  // what was typed before stays
        EXPECT_EQ(desktop.keyboard.typed[0].code, 16);
    }
}

TEST_F(AutoTypeInterruptionTest, failsAtATextThatCannotBeAttached) {
    for (const bool down : {true, false}) {
        desktop.keyboard.typed.clear();
        desktop.keyboard.refuses = [=](const KeyEvent& event) { return !event.text.empty() && event.down == down; };

        EXPECT_EQ(type({Action::text("zy")}), eventCreationFailed);

        EXPECT_THAT(typed(), IsEmpty());
    }
}

TEST_F(AutoTypeInterruptionTest, releasesAllModifiersWhenTheFirstCannotBePressed) {
    refuse(56, true);

    EXPECT_EQ(type({Action::text("xy")}), eventCreationFailed);

    EXPECT_THAT(typed(), ElementsAre("120 up *58", "120 up *56"));
}

TEST_F(AutoTypeInterruptionTest, releasesAllModifiersWhenTheSecondCannotBePressed) {
    refuse(58, true);

    EXPECT_EQ(type({Action::text("xy")}), eventCreationFailed);

    EXPECT_THAT(typed(), ElementsAre("120 down *56 flags 20000", "120 up *58 flags 20000", "120 up *56"));
}

TEST_F(AutoTypeInterruptionTest, releasesAllModifiersWhenTheStrokeCannotBeMade) {
    for (const bool down : {true, false}) {
        AutoTypeFixture fixture;
        fixture.desktop.keyboard.refuses = [=](const KeyEvent& event) { return event.code == 0 && event.down == down; };

        EXPECT_EQ(fixture.type({Action::text("Ab")}), eventCreationFailed);

        EXPECT_THAT(fixture.typed(), ElementsAre("120 down *56 flags 20000", "140 up *56"));
    }
}

TEST_F(AutoTypeInterruptionTest, passesOverAModifierThatCannotBeReleased) {
    refuse(58, false);

    EXPECT_EQ(type({Action::text("xy")}), std::nullopt);

    EXPECT_THAT(typed(), ElementsAre("120 down *56 flags 20000", "120 down *58 flags a0000", "140 down 7 flags a0000",
                                     "140 up 7 flags a0000", "160 up *56", "185 down 16", "185 up 16"));
}

TEST_F(AutoTypeInterruptionTest, reportsMemoryThatRanOutAndAnythingElseThatFails) {
    desktop.keyboard.refuses = [](const KeyEvent& event) -> bool {
        return event.kind == KeyEvent::Kind::key && event.down ? throw std::bad_alloc() : false;
    };
    EXPECT_EQ(type({Action::text("x")}), std::bad_alloc().what());
    EXPECT_THAT(leftPressed(), IsEmpty());

    desktop.keyboard.refuses = [](const KeyEvent& event) -> bool {
        return event.kind == KeyEvent::Kind::key ? throw std::runtime_error("bağlantı koptu") : false;
    };
    EXPECT_EQ(type({Action::text("x")}), "bağlantı koptu");
    EXPECT_THAT(leftPressed(), IsEmpty());
}

TEST_F(AutoTypeInterruptionTest, releasesAllModifiersWhenItIsCancelledBeforeTheStroke) {
    const auto outcome = begin({Action::text("xy")});
    clock.advance(130ms);

    service->cancel();
    EXPECT_THAT(leftPressed(), IsEmpty());
    clock.advance(1s);

    EXPECT_EQ(outcome->failure, cancelled);
    EXPECT_THAT(typed(), ElementsAre("120 down *56 flags 20000", "120 down *58 flags a0000", "130 up *58 flags 20000",
                                     "130 up *56"));
}

TEST_F(AutoTypeInterruptionTest, releasesAllModifiersWhenItIsCancelledAfterTheStroke) {
    const auto outcome = begin({Action::text("xy")});
    clock.advance(150ms);

    service->cancel();
    EXPECT_THAT(leftPressed(), IsEmpty());
    clock.advance(1s);

    EXPECT_EQ(outcome->failure, cancelled);
    EXPECT_THAT(typed(), ElementsAre("120 down *56 flags 20000", "120 down *58 flags a0000", "140 down 7 flags a0000",
                                     "140 up 7 flags a0000", "150 up *58 flags 20000", "150 up *56"));
}

TEST_F(AutoTypeInterruptionTest, endsAtTheNextPauseWhenItIsCancelled) {
    const auto outcome = begin({Action::text("y"), Action::delay(1000), Action::text("y")});
    clock.advance(500ms);

    service->cancel();
    EXPECT_EQ(outcome->ended, false);  // the end is reported from the loop
    clock.advance(0s);

    EXPECT_EQ(outcome->failure, cancelled);
    EXPECT_THAT(typed(), ElementsAre("120 down 16", "120 up 16"));
    EXPECT_EQ(clock.waitingCount(), 0u);
}

TEST_F(AutoTypeInterruptionTest, passesTheFailedPauseOnFromActivation) {
    for (const auto when : {0ms, 50ms}) {
        desktop.applications.bringToFront(editor);
        const auto outcome = begin({Action::text("y")});
        clock.advance(when);

        service->cancel();
        clock.advance(0s);

        EXPECT_EQ(outcome->failure, cancelled);
    }
    EXPECT_THAT(typed(), IsEmpty());
}

TEST_F(AutoTypeInterruptionTest, passesTheFailedSleepOnWhileTheTargetComesToTheFront) {
    editor->comesToFront = false;
    desktop.applications.bringOurselvesToFront();
    const auto outcome = begin({Action::text("y")});
    clock.advance(50ms);

    service->cancel();
    clock.advance(0s);

    EXPECT_EQ(outcome->failure, cancelled);
}

TEST_F(AutoTypeInterruptionTest, waitsForTheUserAlsoWhenItIsCancelledMeanwhile) {
    desktop.keyboard.held = KeyFlag::command;
    const auto outcome = begin({Action::text("yy")});
    clock.advance(500ms);

    service->cancel();
    clock.advance(100ms);
    desktop.keyboard.held = 0;
    clock.advance(1s);

    EXPECT_EQ(outcome->failure, cancelled);
    EXPECT_THAT(typed(), ElementsAre("620 down 16", "620 up 16"));
}

TEST_F(AutoTypeInterruptionTest, failsNoPauseOfNoTimeWhenItIsCancelled) {
    service->setSettings({.keystrokeDelay = 0, .postActivationDelay = 0});
    const auto outcome = begin({Action::text("y"), Action::delay(0), Action::text("y")});

    service->cancel();
    clock.advance(0s);

    EXPECT_EQ(outcome->failure, std::nullopt);
    EXPECT_EQ(desktop.keyboard.typed.size(), 4u);
}

TEST_F(AutoTypeInterruptionTest, cancelsTheRunsThatWaitToo) {
    const auto first = begin({Action::text("y")});
    const auto second = begin({Action::text("y")});
    clock.advance(50ms);

    service->cancel();
    clock.advance(1s);

    EXPECT_EQ(first->failure, cancelled);
    EXPECT_EQ(second->failure, cancelled);
    EXPECT_THAT(typed(), IsEmpty());
    EXPECT_EQ(type({Action::text("y")}), std::nullopt);
}

TEST_F(AutoTypeInterruptionTest, cancelsNothingAtRest) {
    service->cancel();

    EXPECT_EQ(type({Action::text("y")}), std::nullopt);
}

TEST_F(AutoTypeInterruptionTest, leavesNothingPressedOrWaitingWheneverTheServiceGoes) {
    for (int step = 0; step < 60; ++step) {
        AutoTypeFixture fixture;
        fixture.desktop.keyboard.held = KeyFlag::command;
        fixture.editor->comesToFront = false;
        fixture.desktop.applications.bringOurselvesToFront();
        const auto first = fixture.begin({Action::text("AB"), Action::clearField(), Action::delay(40)});
        const auto second = fixture.begin({Action::text("y")});
        for (int past = 0; past < step; ++past) {
            fixture.clock.advance(10ms);
            if (past == 4)
                fixture.desktop.applications.bringToFront(fixture.editor);
            if (past == 19)
                fixture.desktop.keyboard.held = 0;
        }

        fixture.service.reset();

        EXPECT_THAT(fixture.leftPressed(), IsEmpty()) << step;
        EXPECT_EQ(fixture.desktop.keyboard.openSources, 0) << step;
        EXPECT_EQ(fixture.clock.waitingCount(), 0u) << step;
        EXPECT_FALSE(fixture.desktop.applications.isObserved());
        fixture.desktop.layout.select({});
        fixture.clock.advance(10s);
        EXPECT_FALSE(first->ended && second->ended);
    }
}
