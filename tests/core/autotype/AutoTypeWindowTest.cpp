// SPDX-License-Identifier: MIT
#include "tests/core/autotype/AutoTypeFixture.h"

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace {

constexpr auto stopped = "Notlar penceresi artık ön planda olmadığı için yazma durduruldu.";

/// Into which windows what is typed may go: an editor is in front, and a chat of the same program is open behind it.
struct AutoTypeWindowTest : testing::Test, AutoTypeFixture {
    AutoTypeWindowTest() { chat->number = 2; }

    std::shared_ptr<FakeApplication> browser = desktop.applications.start(200, "Banka - Giriş", "Gezgin");
    std::shared_ptr<FakeApplication> chat = desktop.applications.start(100, "Sohbet - Notlar", "Notlar");
};

}  // namespace

TEST_F(AutoTypeWindowTest, typesNothingMoreOnceAnotherWindowIsInFront) {
    for (const auto& other : {browser, chat}) {
        desktop.applications.bringToFront(editor);
        desktop.keyboard.typed.clear();
        const auto outcome = begin({Action::text("abcd")});
        clock.advance(150ms);
        desktop.applications.bringToFront(other);

        clock.advance(10s);

        EXPECT_EQ(outcome->failure, stopped);
        EXPECT_THAT(typed(), SizeIs(4)) << "a and b";
        EXPECT_EQ(desktop.keyboard.openSources, 0);
    }
}

TEST_F(AutoTypeWindowTest, typesNothingWhileNothingIsInFront) {
    const auto outcome = begin({Action::text("abcd")});
    clock.advance(150ms);
    desktop.applications.bringToFront(nullptr);

    clock.advance(10s);

    EXPECT_EQ(outcome->failure, stopped);
    EXPECT_THAT(typed(), SizeIs(4));
}

TEST_F(AutoTypeWindowTest, typesNothingIntoOurOwnWindow) {
    const auto outcome = begin({Action::text("abcd")});
    clock.advance(150ms);
    desktop.applications.bringOurselvesToFront();

    clock.advance(10s);

    EXPECT_EQ(outcome->failure, stopped);
    EXPECT_THAT(typed(), SizeIs(4));
}

TEST_F(AutoTypeWindowTest, leavesNothingPressedInWhicheverStepOfAStrokeTheWindowChanges) {
    for (int step = 0; step < 30; ++step) {
        AutoTypeFixture fixture;
        const auto outcome = fixture.begin({Action::text("Ab"), Action::clearField(), Action::text("🙂")});
        fixture.clock.advance(120ms + step * 10ms);
        fixture.desktop.applications.bringToFront(fixture.desktop.applications.start(200, "", "Gezgin"));
        const auto typedByThen = fixture.typed().size();

        fixture.clock.advance(10s);

        EXPECT_THAT(fixture.leftPressed(), IsEmpty()) << step;
        for (std::size_t event = typedByThen; event < fixture.typed().size(); ++event)
            EXPECT_FALSE(fixture.desktop.keyboard.typed[event].down) << step;
        EXPECT_TRUE(outcome->failure == stopped || step > 15) << step << ": the last stroke has been made by then";
    }
}

TEST_F(AutoTypeWindowTest, typesNothingIntoAWindowThatComesBetweenTheWishAndTheFirstStroke) {
    for (const auto when : {0ms, 60ms, 119ms}) {
        desktop.applications.bringToFront(editor);
        const auto outcome = begin({Action::text("a")});
        if (when > 0ms)
            clock.advance(when);
        desktop.applications.bringToFront(chat);

        clock.advance(10s);

        EXPECT_EQ(outcome->failure, stopped) << when.count();
        EXPECT_THAT(typed(), IsEmpty());
    }
}

TEST_F(AutoTypeWindowTest, typesIntoTheTargetOfTheWishThoughAnotherProgramComesToTheFrontBeforeTheRunBegins) {
    const auto outcome = begin({Action::text("a")});
    desktop.applications.bringToFront(browser);

    clock.advance(10s);

    EXPECT_EQ(outcome->failure, std::nullopt);
    EXPECT_EQ(editor->activations, 1);
    EXPECT_EQ(browser->activations, 0);
    EXPECT_THAT(typed(), SizeIs(2));
}

TEST_F(AutoTypeWindowTest, takesTheFirstTargetThatThereIsWhereTheWishHadNone) {
    service->clearTarget();
    const auto outcome = begin({Action::text("a")});
    desktop.applications.bringToFront(browser);

    clock.advance(10s);

    EXPECT_EQ(outcome->failure, std::nullopt);
    EXPECT_THAT(typed(), SizeIs(2));
}

TEST_F(AutoTypeWindowTest, succeedsWhenItsLastKeyClosesTheWindow) {
    const auto outcome = begin({Action::text("a"), Action::key(AutoTypeKey::enter)});
    clock.advance(150ms);
    desktop.applications.bringToFront(chat);

    clock.advance(10s);

    EXPECT_EQ(outcome->failure, std::nullopt);
    EXPECT_THAT(typed(), ElementsAre("120 down 0", "120 up 0", "145 down 36", "145 up 36"));
}

TEST_F(AutoTypeWindowTest, goesOnInTheWindowThatItsOwnKeyHasBrought) {
    for (const auto key : {AutoTypeKey::enter, AutoTypeKey::space, AutoTypeKey::escape}) {
        desktop.applications.bringToFront(editor);
        desktop.keyboard.typed.clear();
        const auto outcome = begin({Action::key(key), Action::delay(5000), Action::text("ab")});
        clock.advance(1s);
        chat->cameInPlaceOf = editor->number;
        desktop.applications.bringToFront(chat);

        clock.advance(10s);

        EXPECT_EQ(outcome->failure, std::nullopt);
        EXPECT_THAT(typed(), SizeIs(6));
    }
}

TEST_F(AutoTypeWindowTest, waitsForTheWindowThatItsOwnKeyBrings) {
    const auto outcome = begin({Action::key(AutoTypeKey::enter), Action::text("a")});
    clock.advance(130ms);
    desktop.applications.bringToFront(nullptr);
    clock.advance(470ms);
    chat->cameInPlaceOf = editor->number;
    desktop.applications.bringToFront(chat);

    clock.advance(10s);

    EXPECT_EQ(outcome->failure, std::nullopt);
    EXPECT_THAT(typed(), ElementsAre("120 down 36", "120 up 36", "605 down 0", "605 up 0"));
}

TEST_F(AutoTypeWindowTest, waitsTwoSecondsForItAndTypesNothing) {
    const auto outcome = begin({Action::key(AutoTypeKey::enter), Action::text("a")});
    clock.advance(130ms);
    desktop.applications.bringToFront(chat);  // which was there before
    clock.advance(2014ms);
    EXPECT_FALSE(outcome->ended);

    clock.advance(1ms);

    EXPECT_EQ(outcome->failure, stopped);
    EXPECT_THAT(typed(), SizeIs(2));
}

TEST_F(AutoTypeWindowTest, followsNoWindowThatItsOwnKeysDidNotBring) {
    chat->cameInPlaceOf = editor->number;
    for (const auto& before : {Action::key(AutoTypeKey::tab), Action::text("x"), Action::clearField()}) {
        desktop.applications.bringToFront(editor);
        const auto outcome = begin({before, Action::delay(1000), Action::text("a")});
        clock.advance(500ms);
        desktop.applications.bringToFront(chat);

        clock.advance(10s);

        EXPECT_EQ(outcome->failure, stopped);
    }
}

TEST_F(AutoTypeWindowTest, followsNoWindowLongAfterItsOwnKey) {
    chat->cameInPlaceOf = editor->number;
    const auto outcome = begin({Action::key(AutoTypeKey::enter), Action::delay(2000), Action::text("a"),
                                Action::delay(1000), Action::text("b")});
    clock.advance(2500ms);
    desktop.applications.bringToFront(chat);

    clock.advance(10s);

    EXPECT_EQ(outcome->failure, stopped);
    EXPECT_THAT(typed(), SizeIs(4)) << "Enter and a";
}

TEST_F(AutoTypeWindowTest, namesTheProgramAlsoWhenItHasGone) {
    const auto outcome = begin({Action::text("abcd")});
    clock.advance(150ms);
    editor->name.reset();
    desktop.applications.bringToFront(nullptr);

    clock.advance(10s);

    EXPECT_EQ(outcome->failure, stopped);
    editor->name.reset();
    desktop.applications.bringToFront(editor);
    const auto nameless = begin({Action::text("abcd")});
    clock.advance(150ms);
    desktop.applications.bringToFront(browser);
    clock.advance(10s);
    EXPECT_EQ(nameless->failure, "Uygulama penceresi artık ön planda olmadığı için yazma durduruldu.");
}

TEST_F(AutoTypeWindowTest, countsItsDeadlinesByNoClockThatCanBeSet) {
    for (const auto set : {std::chrono::nanoseconds(-1h), std::chrono::nanoseconds(1h)}) {
        AutoTypeFixture fixture;
        fixture.editor->comesToFront = false;
        fixture.desktop.applications.bringOurselvesToFront();
        const auto late = fixture.begin({Action::text("a")});
        fixture.clock.advance(1s);
        fixture.clock.setTimeOfDay(set);
        fixture.clock.advance(999ms);
        EXPECT_FALSE(late->ended);
        fixture.clock.advance(1ms);
        EXPECT_EQ(late->failure, "Notlar uygulaması ön plana getirilemedi.");

        fixture.desktop.applications.bringToFront(fixture.editor);
        fixture.desktop.keyboard.held = KeyFlag::command;
        const auto held = fixture.begin({Action::text("a")});
        fixture.clock.advance(500ms);
        fixture.clock.setTimeOfDay(set);
        fixture.clock.advance(619ms);
        EXPECT_THAT(fixture.typed(), IsEmpty()) << "a second after the window's time";
        fixture.clock.advance(1s);
        EXPECT_TRUE(held->ended);
        EXPECT_THAT(fixture.typed(), SizeIs(2));
    }
}

TEST_F(AutoTypeWindowTest, endsAllRunsAtOnceWhenItIsStopped) {
    for (int step = 0; step < 40; ++step) {
        AutoTypeFixture fixture;
        fixture.desktop.keyboard.held = step < 5 ? KeyFlag::command : 0;
        const auto first = fixture.begin({Action::text("AB"), Action::delay(100), Action::clearField()});
        const auto second = fixture.begin({Action::text("y")});
        fixture.clock.advance(step * 10ms);

        fixture.service->stop();
        const auto typedByThen = fixture.typed();
        EXPECT_THAT(fixture.leftPressed(), IsEmpty()) << step;
        EXPECT_FALSE(fixture.service->isTyping());
        EXPECT_EQ(fixture.desktop.keyboard.openSources, 0);
        EXPECT_EQ(fixture.clock.waitingCount(), 0U);
        fixture.desktop.keyboard.held = 0;
        fixture.clock.advance(10s);

        EXPECT_EQ(fixture.typed(), typedByThen) << step;
        EXPECT_FALSE(second->ended);
        EXPECT_EQ(fixture.type({Action::text("y")}), std::nullopt) << "another run is another run";
    }
}

TEST_F(AutoTypeWindowTest, canBeStoppedFromTheEndOfARun) {
    service->perform({Action::text("a")}, [&](auto) { service->stop(); });
    service->perform({Action::text("b")}, [](auto) { FAIL(); });

    clock.advance(10s);

    EXPECT_THAT(typed(), SizeIs(2));
    EXPECT_EQ(clock.waitingCount(), 0U);
}

TEST_F(AutoTypeWindowTest, remembersNoStrokeOnceItIsStopped) {
    type({Action::text("s")});
    const int once = desktop.layout.translations;

    service->stop();

    EXPECT_EQ(service->keyStroke("s"), (KeyStroke{1, 0}));
    EXPECT_GT(desktop.layout.translations, once) << "it is looked for anew";
}
