// SPDX-License-Identifier: MIT
#include "tests/core/autotype/AutoTypeFixture.h"

using testing::ElementsAre;
using testing::IsEmpty;

using Modifiers = KeyboardLayout::Modifiers;

namespace {

struct AutoTypeServiceTest : testing::Test, AutoTypeFixture {};

}  // namespace

TEST_F(AutoTypeServiceTest, hasDefaults) {
    EXPECT_EQ(service->settings().keystrokeDelay, 0.025);
    EXPECT_EQ(service->settings().activationTimeout, 2.0);
    EXPECT_EQ(service->settings().postActivationDelay, 0.12);
    EXPECT_TRUE(service->settings().waitForModifierRelease);
    EXPECT_TRUE(service->settings().useRealModifierKeyEvents);
    EXPECT_EQ(service->settings().modifierSettleDelay, 0.02);
    EXPECT_EQ(AutoTypeService::defaultSequence, "{USERNAME}{TAB}{PASSWORD}{ENTER}");
}

TEST_F(AutoTypeServiceTest, typesAPlainCharacterAndPauses) {
    EXPECT_EQ(type({Action::text("ab")}), std::nullopt);

    EXPECT_THAT(typed(), ElementsAre("120 down 0", "120 up 0", "145 down 11", "145 up 11"));
}

TEST_F(AutoTypeServiceTest, holdsShiftAroundACapitalLetter) {
    EXPECT_EQ(type({Action::text("Ab")}), std::nullopt);

    EXPECT_THAT(typed(), ElementsAre("120 down *56 flags 20000", "140 down 0 flags 20000", "140 up 0 flags 20000",
                                     "160 up *56", "185 down 11", "185 up 11"));
}

TEST_F(AutoTypeServiceTest, pressesSeveralModifiersInOrderAndReleasesThemInReverse) {
    desktop.layout.select({{{8, Modifiers::shiftAndOption}, "x"}});

    EXPECT_EQ(type({Action::text("x")}), std::nullopt);

    EXPECT_THAT(typed(), ElementsAre("120 down *56 flags 20000", "120 down *58 flags a0000", "140 down 8 flags a0000",
                                     "140 up 8 flags a0000", "160 up *58 flags 20000", "160 up *56"));
}

TEST_F(AutoTypeServiceTest, putsFlagsOnTheStrokeAloneWithoutRealModifierEvents) {
    service->setSettings({.useRealModifierKeyEvents = false});

    EXPECT_EQ(type({Action::text("AB"), Action::clearField()}), std::nullopt);

    EXPECT_THAT(typed(), ElementsAre("120 down 0 flags 20000", "120 up 0 flags 20000", "145 down 11 flags 20000",
                                     "145 up 11 flags 20000", "170 down 0 flags 100000", "170 up 0 flags 100000",
                                     "195 down 51", "195 up 51"));
}

TEST_F(AutoTypeServiceTest, attachesToANeutralKeyWhatNoKeyGives) {
    EXPECT_EQ(type({Action::text("a👩‍👩‍👧ş")}), std::nullopt);

    EXPECT_THAT(typed(), ElementsAre("120 down 0", "120 up 0", "145 down 0 text 👩‍👩‍👧",
                                     "145 up 0 text 👩‍👩‍👧", "170 down 0 text ş", "170 up 0 text ş"));
}

TEST_F(AutoTypeServiceTest, attachesAllCharactersToANeutralKeyWithoutALayout) {
    desktop.layout.available = false;

    EXPECT_EQ(type({Action::text("aB")}), std::nullopt);

    EXPECT_THAT(typed(), ElementsAre("120 down 0 text a", "120 up 0 text a", "145 down 0 text B", "145 up 0 text B"));
}

TEST_F(AutoTypeServiceTest, announcesTheCharactersOfARunThatNoKeyGivesBeforeItsFirstStroke) {
    const auto outcome = begin({Action::text("aş"), Action::key(AutoTypeKey::tab), Action::text("👍🏽b")});

    clock.advance(120ms);

    EXPECT_EQ(desktop.keyboard.expected, "ş👍🏽");
    EXPECT_EQ(typed().size(), 2U);
    EXPECT_FALSE(outcome->ended);
}

TEST_F(AutoTypeServiceTest, pressesNamedKeysWithoutModifiers) {
    EXPECT_EQ(type({Action::key(AutoTypeKey::tab), Action::key(AutoTypeKey::forwardDelete)}), std::nullopt);

    EXPECT_THAT(typed(), ElementsAre("120 down 48", "120 up 48", "145 down 117", "145 up 117"));
}

TEST_F(AutoTypeServiceTest, pausesForTheTimeOfADelayAndNoLonger) {
    const auto outcome = begin({Action::delay(500), Action::key(AutoTypeKey::tab), Action::delay(0)});
    clock.advance(644ms);
    EXPECT_FALSE(outcome->ended);

    clock.advance(1ms);

    EXPECT_TRUE(outcome->ended);
    EXPECT_THAT(typed(), ElementsAre("620 down 48", "620 up 48"));
}

TEST_F(AutoTypeServiceTest, pausesForMilliseconds) {
    EXPECT_EQ(type({Action::delay(50'000), Action::key(AutoTypeKey::tab)}), std::nullopt);

    EXPECT_THAT(typed(), ElementsAre("50120 down 48", "50120 up 48"));
}

TEST_F(AutoTypeServiceTest, outlastsADelayBeyondAllTime) {
    const auto outcome = begin({Action::delay(9223372036854775807), Action::text("a")});

    clock.advance(24h * 365 * 50);

    EXPECT_FALSE(outcome->ended);
    EXPECT_THAT(typed(), IsEmpty());
}

TEST_F(AutoTypeServiceTest, clearsAFieldBySelectingAllAndDeleting) {
    EXPECT_EQ(type({Action::clearField(), Action::text("b")}), std::nullopt);

    EXPECT_THAT(typed(), ElementsAre("120 down *55 flags 100000", "140 down 0 flags 100000", "140 up 0 flags 100000",
                                     "160 up *55", "185 down 51", "185 up 51", "210 down 11", "210 up 11"));
}

TEST_F(AutoTypeServiceTest, selectsAllByTheLayoutsOwnKeyLessItsModifiers) {
    desktop.layout.select({{{12, Modifiers::shift}, "a"}});

    EXPECT_EQ(type({Action::clearField()}), std::nullopt);

    EXPECT_THAT(typed(), ElementsAre("120 down *55 flags 100000", "140 down 12 flags 100000", "140 up 12 flags 100000",
                                     "160 up *55", "185 down 51", "185 up 51"));
}

TEST_F(AutoTypeServiceTest, selectsAllByTheFirstKeyWhereTheLayoutHasNone) {
    desktop.layout.select({});

    EXPECT_EQ(type({Action::clearField()}), std::nullopt);

    EXPECT_THAT(typed(), ElementsAre("120 down *55 flags 100000", "140 down 0 flags 100000", "140 up 0 flags 100000",
                                     "160 up *55", "185 down 51", "185 up 51"));
}

TEST_F(AutoTypeServiceTest, performsASequenceForAnEntry) {
    KdbxEntry entry;
    entry.username = "ab";
    entry.password = SecureString("c");
    service->perform("{USERNAME}{TAB}{PASSWORD}", entry, {});

    clock.advance(1s);

    EXPECT_THAT(typed(), ElementsAre("120 down 0", "120 up 0", "145 down 11", "145 up 11", "170 down 48", "170 up 48",
                                     "195 down 8", "195 up 8"));
}

TEST_F(AutoTypeServiceTest, returnsBeforeAnythingIsTypedOrLookedAt) {
    desktop.keyboard.permission = false;
    const auto outcome = begin({Action::text("a")});

    EXPECT_FALSE(outcome->ended);
    EXPECT_EQ(desktop.keyboard.permissionQuestions, 0);
    EXPECT_TRUE(service->isTyping());
}

TEST_F(AutoTypeServiceTest, takesNoTimeAtAllWithoutDelays) {
    service->setSettings({.keystrokeDelay = 0, .postActivationDelay = 0, .modifierSettleDelay = 0});
    const auto outcome = begin({Action::text(std::string(10'000, 'a') + std::string(10'000, 'A'))});

    clock.advance(0s);

    EXPECT_TRUE(outcome->ended);
    EXPECT_EQ(desktop.keyboard.typed.size(), 2 * 10'000u + 4 * 10'000u);
    EXPECT_THAT(leftPressed(), IsEmpty());
}

TEST_F(AutoTypeServiceTest, succeedsWithAnEmptyListWhateverIsMissing) {
    desktop.keyboard.permission = false;
    desktop.keyboard.givesSource = false;
    editor->terminated = true;

    EXPECT_EQ(type({}), std::nullopt);

    EXPECT_EQ(desktop.keyboard.permissionQuestions, 0);
    EXPECT_EQ(editor->activations, 0);
}

TEST_F(AutoTypeServiceTest, failsWithoutPermissionBeforeAnythingElse) {
    desktop.keyboard.permission = false;
    service->clearTarget();

    EXPECT_EQ(type({Action::text("a")}), permissionMissing);

    EXPECT_THAT(typed(), IsEmpty());
    EXPECT_EQ(desktop.keyboard.permissionRequests, 0);
}

TEST_F(AutoTypeServiceTest, asksForPermissionOnlyWhenItIsCalledTo) {
    desktop.keyboard.permission = false;
    EXPECT_FALSE(service->hasAccessibilityPermission());
    EXPECT_EQ(desktop.keyboard.permissionRequests, 0);

    service->requestAccessibilityPermission();

    EXPECT_EQ(desktop.keyboard.permissionRequests, 1);
    desktop.keyboard.permission = true;
    EXPECT_TRUE(service->hasAccessibilityPermission());
}

TEST_F(AutoTypeServiceTest, failsWithoutASource) {
    desktop.keyboard.givesSource = false;

    EXPECT_EQ(type({Action::text("a")}), eventCreationFailed);
}

TEST_F(AutoTypeServiceTest, holdsTheSourceForOneRunOnly) {
    begin({Action::text("ab")});
    clock.advance(120ms);
    EXPECT_EQ(desktop.keyboard.openSources, 1);
    clock.advance(1s);
    EXPECT_EQ(desktop.keyboard.openSources, 0);

    desktop.keyboard.refuses = [](const KeyEvent&) { return true; };
    EXPECT_EQ(type({Action::text("a")}), eventCreationFailed);

    EXPECT_EQ(desktop.keyboard.openSources, 0);
}

TEST_F(AutoTypeServiceTest, waitsForTheUserToLetGoOfModifiers) {
    for (const auto flag : {KeyFlag::shift, KeyFlag::control, KeyFlag::option, KeyFlag::command}) {
        desktop.keyboard.typed.clear();
        desktop.keyboard.held = flag;
        const auto before = clock.now();
        const auto outcome = begin({Action::text("a")});
        clock.advance(405ms);
        desktop.keyboard.held = 0;

        clock.advance(1s);

        EXPECT_TRUE(outcome->ended);
        ASSERT_EQ(desktop.keyboard.typed.size(), 2u);
        EXPECT_NEAR(desktop.keyboard.typed[0].at.seconds - before.seconds, 0.42, 1e-6) << flag;
        EXPECT_EQ(desktop.keyboard.releases, 0);
    }
}

TEST_F(AutoTypeServiceTest, waitsForTheHotKeysOwnKeyToo) {
    desktop.keyboard.hotKeyHeld = true;
    begin({Action::text("a")});
    clock.advance(150ms);
    desktop.keyboard.hotKeyHeld = false;

    clock.advance(1s);

    EXPECT_THAT(typed(), ElementsAre("160 down 0", "160 up 0"));
}

TEST_F(AutoTypeServiceTest, goesAheadAfterASecondWithWhatIsStillHeldReleased) {
    desktop.keyboard.held = KeyFlag::command | KeyFlag::option;

    EXPECT_EQ(type({Action::text("a")}), std::nullopt);

    EXPECT_THAT(typed(), ElementsAre("1120 down 0", "1120 up 0"));
    EXPECT_EQ(desktop.keyboard.releases, 1);
}

TEST_F(AutoTypeServiceTest, passesOverOtherFlagsOfTheUsersKeyboard) {
    desktop.keyboard.held = ~KeyFlag::all;

    EXPECT_EQ(type({Action::text("a")}), std::nullopt);

    EXPECT_THAT(typed(), ElementsAre("120 down 0", "120 up 0"));
}

TEST_F(AutoTypeServiceTest, doesNotWaitForTheUserWhenItIsSetNotTo) {
    service->setSettings({.waitForModifierRelease = false});
    desktop.keyboard.held = KeyFlag::command;

    EXPECT_EQ(type({Action::text("a")}), std::nullopt);

    EXPECT_THAT(typed(), ElementsAre("120 down 0", "120 up 0"));
    EXPECT_EQ(desktop.keyboard.releases, 0);
}

TEST_F(AutoTypeServiceTest, looksACharacterUpOnceForAllRuns) {
    type({Action::text("ss")});
    const int once = desktop.layout.translations;
    EXPECT_GT(once, 0);

    type({Action::text("s")});

    EXPECT_EQ(service->keyStroke("s"), (KeyStroke{1, 0}));
    EXPECT_EQ(desktop.layout.translations, once);
}

TEST_F(AutoTypeServiceTest, usesARememberedStrokeAlsoWithoutALayout) {
    type({Action::text("s")});
    desktop.layout.available = false;

    EXPECT_EQ(service->keyStroke("s"), (KeyStroke{1, 0}));
    EXPECT_EQ(service->keyStroke("d"), std::nullopt);
}

TEST_F(AutoTypeServiceTest, remembersASearchForAKeyStrokeItself) {
    EXPECT_EQ(service->keyStroke("S"), (KeyStroke{1, 0x20000}));
    const int once = desktop.layout.translations;

    EXPECT_EQ(service->keyStroke("S"), (KeyStroke{1, 0x20000}));

    EXPECT_EQ(desktop.layout.translations, once);
}

TEST_F(AutoTypeServiceTest, doesNotRememberThatACharacterWasNotFound) {
    type({Action::text("ş")});
    const int once = desktop.layout.translations;

    type({Action::text("ş")});

    EXPECT_EQ(desktop.layout.translations, 2 * once);
}

TEST_F(AutoTypeServiceTest, searchesAnewAfterTheLayoutHasChanged) {
    type({Action::text("a")});
    desktop.layout.select({{{12, Modifiers::none}, "a"}});

    EXPECT_EQ(service->keyStroke("a"), (KeyStroke{12, 0}));
}

TEST_F(AutoTypeServiceTest, typesTheRestUnderALayoutThatIsSelectedMeanwhile) {
    begin({Action::text("aa")});
    clock.advance(130ms);
    desktop.layout.select({{{12, Modifiers::none}, "a"}});

    clock.advance(1s);

    EXPECT_THAT(typed(), ElementsAre("120 down 0", "120 up 0", "145 down 12", "145 up 12"));
}

TEST_F(AutoTypeServiceTest, performsARunThatIsAskedForDuringAnotherAfterIt) {
    const auto first = begin({Action::text("ab")});
    clock.advance(130ms);
    const auto second = begin({Action::text("cd")});
    clock.advance(40ms);
    EXPECT_TRUE(first->ended);
    EXPECT_FALSE(second->ended);
    EXPECT_TRUE(service->isTyping());

    clock.advance(1s);

    EXPECT_TRUE(second->ended);
    EXPECT_FALSE(service->isTyping());
    EXPECT_THAT(typed(), ElementsAre("120 down 0", "120 up 0", "145 down 11", "145 up 11", "290 down 8", "290 up 8",
                                     "315 down 2", "315 up 2"));
}

TEST_F(AutoTypeServiceTest, performsAWaitingRunAlsoAfterAFailure) {
    desktop.keyboard.permission = false;
    const auto first = begin({Action::text("a")});
    const auto second = begin({Action::text("b")});
    const auto third = begin({});
    clock.advance(1s);

    EXPECT_EQ(first->failure, permissionMissing);
    EXPECT_EQ(second->failure, permissionMissing);
    EXPECT_TRUE(third->ended);
    EXPECT_EQ(third->failure, std::nullopt);
}

TEST_F(AutoTypeServiceTest, canBeAskedForARunWhenOneEnds) {
    service->perform({Action::text("a")}, [&](auto) { service->perform({Action::text("b")}, {}); });

    clock.advance(1s);

    EXPECT_THAT(typed(), ElementsAre("120 down 0", "120 up 0", "265 down 11", "265 up 11"));
    EXPECT_FALSE(service->isTyping());
}

TEST_F(AutoTypeServiceTest, mayGoWhenARunEnds) {
    bool ended = false;
    service->perform({Action::text("a")}, [&](auto) {
        ended = true;
        service.reset();
    });
    service->perform({Action::text("b")}, [](auto) { FAIL(); });

    clock.advance(1s);

    EXPECT_TRUE(ended);
    EXPECT_EQ(desktop.keyboard.typed.size(), 2u);
    EXPECT_EQ(clock.waitingCount(), 0u);
}
