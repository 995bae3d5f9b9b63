// SPDX-License-Identifier: MIT
#include "app/state/GlobalHotKey.h"

#include "tests/app/state/StateFakes.h"
#include "tests/support/FakeDesktop.h"

#include <gmock/gmock.h>

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr auto noMatch = "Ön plandaki pencereyle eşleşen bir kayıt bulunamadı.";

/// The whole path from the key to the strokes; in front is a browser with the bank's page.
class GlobalHotKeyTest : public StateTest {
protected:
    FakeDesktop desktop{clock};
    AutoTypeService autoType{{desktop.keyboard, desktop.layout, desktop.applications, clock}};
    std::shared_ptr<FakeApplication> browser = desktop.applications.start(200, "BANKA - Giriş", "Gezgin");
    std::optional<GlobalHotKey> hotKey;

    GlobalHotKeyTest() {
        auto vault = smallVault();
        vault.root.entries.mutableAt(0).username = "ali";
        vault.root.entries.mutableAt(0).password = SecureString("gizli");
        putVault(vault);
        state.emplace(services(autoType));
        hotKey.emplace(GlobalHotKey::Services{.hotKeys = desktop.hotKeys,
                                              .scheduler = clock,
                                              .autoType = autoType,
                                              .preferences = *preferences,
                                              .state = *state});
        hotKey->registerGlobalHotKey();
        desktop.applications.bringToFront(browser);
    }

    void press() {
        desktop.hotKeys.press();
        clock.advance(10s);
    }

    /// The keys that were struck, in order.
    std::vector<std::uint16_t> struck() const {
        std::vector<std::uint16_t> codes;
        for (const auto& event : desktop.keyboard.typed)
            if (event.down)
                codes.push_back(event.code);
        return codes;
    }

    /// Opens a vault of these entries alone. What they type is their number: "1" for the first.
    void unlockWith(std::vector<KdbxEntry> entries) {
        auto vault = smallVault();
        vault.root.groups = {};
        vault.root.entries = {};
        for (std::size_t i = 0; i < entries.size(); ++i) {
            entries[i].autoTypeSequence = std::to_string(i + 1);
            vault.root.entries.append(entries[i]);
        }
        putVault(vault);
        unlock();
    }
    static constexpr int first = 18;  // the key "1"
    static constexpr int second = 19;

    std::vector<HotKey> registered() const {
        std::vector<HotKey> combinations;
        for (const auto& [identifier, combination] : desktop.hotKeys.registered)
            combinations.push_back(combination);
        return combinations;
    }
};

}  // namespace

TEST_F(GlobalHotKeyTest, aPressTypesTheEntryOfTheFrontWindow) {
    unlock();
    clock.advance(1h);
    const auto before = clock.now();

    press();

    EXPECT_THAT(struck(), ElementsAre(0, 37, 34, 48, 5, 34, 6, 37, 34, 36));  // ali, Tab, gizli, Return
    EXPECT_EQ(state->lastError(), std::nullopt);
    EXPECT_EQ(bank().accessed, before);
}

TEST_F(GlobalHotKeyTest, aPressTypesWhileTheVaultIsSavedButNotOnceItIsToBeLocked) {
    unlock();
    background.meanwhile = [this](const BackgroundWork::Task&) { press(); };
    state->save();
    EXPECT_THAT(struck(), testing::SizeIs(10));

    rename("Banka");
    background.meanwhile = [this](const BackgroundWork::Task&) { press(); };
    state->lock();
    EXPECT_THAT(struck(), testing::SizeIs(10));
    EXPECT_TRUE(state->isLocked());
}

TEST_F(GlobalHotKeyTest, aPressTypesIntoTheApplicationThatWasInFrontBeforeUs) {
    unlock();
    autoType.captureTarget();
    desktop.applications.bringOurselvesToFront();

    press();

    EXPECT_EQ(browser->activations, 1);
    EXPECT_THAT(struck(), testing::SizeIs(10));
}

TEST_F(GlobalHotKeyTest, pressesDuringARunTypeNothingMore) {
    unlock();
    desktop.hotKeys.press();
    desktop.hotKeys.press();
    clock.advance(200ms);
    desktop.hotKeys.press();

    clock.advance(10s);

    EXPECT_THAT(struck(), testing::SizeIs(10));
}

TEST_F(GlobalHotKeyTest, aRunGoesOnIntoNoOtherWindowAndReportsSo) {
    unlock();
    desktop.hotKeys.press();
    clock.advance(200ms);
    desktop.applications.bringToFront(desktop.applications.start(300, "Sohbet", "Sohbet"));

    clock.advance(10s);

    EXPECT_THAT(struck(), testing::SizeIs(testing::Lt(10)));
    EXPECT_EQ(state->lastError(), "Gezgin penceresi artık ön planda olmadığı için yazma durduruldu.");
}

TEST_F(GlobalHotKeyTest, aLockEndsARunAlsoDuringItsPauseAndShowsNoFailure) {
    auto vault = smallVault();
    vault.root.entries.mutableAt(0).password = SecureString("gizli");
    vault.root.entries.mutableAt(0).autoTypeSequence = "{DELAY 5000}{PASSWORD}";
    putVault(vault);
    unlock();
    desktop.hotKeys.press();
    clock.advance(1s);

    state->lock();
    clock.advance(10s);

    EXPECT_THAT(struck(), IsEmpty());
    EXPECT_EQ(state->lastError(), std::nullopt);
    EXPECT_FALSE(autoType.isTyping());
}

TEST_F(GlobalHotKeyTest, aPressWithoutAMatchIsReported) {
    unlock();
    browser->title = "Haberler";

    press();

    EXPECT_THAT(struck(), IsEmpty());
    EXPECT_EQ(state->lastError(), noMatch);
}

TEST_F(GlobalHotKeyTest, aPressTypesTheEntryThatTheFrontWindowSpeaksOf) {
    unlockWith({entryTitled("posta"), entryTitled("banka")});

    press();

    EXPECT_THAT(struck(), ElementsAre(second));
    EXPECT_EQ(state->lastError(), std::nullopt);
}

TEST_F(GlobalHotKeyTest, aPressTypesTheFirstOfSeveralMatches) {
    unlockWith({entryTitled("giriş"), entryTitled("banka - giriş")});

    press();

    EXPECT_THAT(struck(), ElementsAre(first));
}

TEST_F(GlobalHotKeyTest, aPressPassesOverEntriesThatWantNoAutoType) {
    auto disabled = entryTitled("banka");
    disabled.autoTypeEnabled = false;
    unlockWith({disabled, entryTitled("giriş")});

    press();

    EXPECT_THAT(struck(), ElementsAre(second));
}

TEST_F(GlobalHotKeyTest, aPressFindsNoMatchWithoutATitle) {
    unlockWith({entryTitled("")});
    browser->title.reset();
    browser->name.reset();

    press();

    EXPECT_EQ(state->lastError(), noMatch);
}

TEST_F(GlobalHotKeyTest, aPressMatchesTheApplicationsNameWithoutPermission) {
    unlockWith({entryTitled("banka"), entryTitled("gezgin")});
    desktop.keyboard.permission = false;
    clock.advance(1h);
    const auto now = clock.now();

    press();

    EXPECT_NE(root().entries[0].accessed, now);
    EXPECT_EQ(root().entries[1].accessed, now);
}

TEST_F(GlobalHotKeyTest, aPressReadsThePreviousApplicationsWindowWhileWeAreInFront) {
    unlockWith({entryTitled("brenvik"), entryTitled("banka")});
    autoType.captureTarget();
    desktop.applications.bringOurselvesToFront();

    press();

    EXPECT_THAT(struck(), ElementsAre(second));
}

TEST_F(GlobalHotKeyTest, aPressCapturesTheTargetThatIsInFrontNow) {
    unlockWith({entryTitled("banka")});
    autoType.clearTarget();

    press();

    EXPECT_EQ(autoType.targetApplication(), browser);
}

TEST_F(GlobalHotKeyTest, aPressWithoutAVaultShowsNothing) {
    press();

    EXPECT_EQ(state->lastError(), std::nullopt);
}

TEST_F(GlobalHotKeyTest, aPressDuringARunIsSilentAndCapturesNoTarget) {
    unlock();
    desktop.hotKeys.press();
    clock.advance(200ms);
    desktop.applications.bringToFront(desktop.applications.start(300, "Sohbet", "Sohbet"));
    autoType.clearTarget();

    desktop.hotKeys.press();
    clock.advance(0s);

    EXPECT_EQ(state->lastError(), std::nullopt);
    EXPECT_EQ(autoType.targetApplication(), nullptr);
}

TEST_F(GlobalHotKeyTest, aPressWhileLockedTypesAndShowsNothingAndYetCapturesTheTarget) {
    state->prepare(vaultFile);

    press();

    EXPECT_THAT(struck(), IsEmpty());
    EXPECT_EQ(state->lastError(), std::nullopt);
    EXPECT_EQ(autoType.targetApplication(), browser);
}

TEST_F(GlobalHotKeyTest, aFailureOfTheRunIsReported) {
    unlock();
    desktop.keyboard.permission = false;
    browser->name = "Banka";

    press();

    EXPECT_EQ(state->lastError(),
              "Otomatik yazma için Erişilebilirlik izni gerekli. Sistem Ayarları → Gizlilik ve Güvenlik → "
              "Erişilebilirlik bölümünden Brenvik'e izin verin.");
}

TEST_F(GlobalHotKeyTest, theCombinationIsThatOfThePreferences) {
    EXPECT_THAT(registered(), ElementsAre(HotKey{.keyCode = 0, .modifiers = 0x900}));
    EXPECT_TRUE(hotKey->isRegistered());
}

TEST_F(GlobalHotKeyTest, aChangeOfThePreferencesIsRegisteredAtOnce) {
    preferences->setHotKeyCode(12);
    EXPECT_THAT(registered(), ElementsAre(HotKey{.keyCode = 12, .modifiers = 0x900}));

    preferences->setHotKeyModifiers(0x300);
    EXPECT_THAT(registered(), ElementsAre(HotKey{.keyCode = 12, .modifiers = 0x300}));
    EXPECT_EQ(desktop.hotKeys.registered.begin()->first, 3U);  // each change registers once
}

TEST_F(GlobalHotKeyTest, aCombinationThatIsRefusedIsReportedNowhere) {
    desktop.hotKeys.grants = false;

    preferences->setHotKeyCode(12);

    EXPECT_FALSE(hotKey->isRegistered());
    EXPECT_EQ(state->lastError(), std::nullopt);
    EXPECT_EQ(preferences->hotKeyCode(), 12U);
}

TEST_F(GlobalHotKeyTest, theCombinationIsGivenBack) {
    hotKey->unregister();

    EXPECT_THAT(registered(), IsEmpty());
}
