// SPDX-License-Identifier: MIT
#include "core/autotype/HotKeyService.h"

#include "tests/support/FakeDesktop.h"
#include "tests/support/FakeScheduler.h"

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

using namespace std::chrono_literals;
using Modifiers = KeyboardLayout::Modifiers;

namespace {

struct HotKeyServiceTest : testing::Test {
    std::function<void()> count(int& counter) {
        return [&counter] { ++counter; };
    }

    FakeScheduler clock;
    FakeHotKeys hotKeys;
    std::unique_ptr<HotKeyService> service = std::make_unique<HotKeyService>(hotKeys, clock);
    FakeLayout layout;
    int pressed = 0;
};

}  // namespace

TEST_F(HotKeyServiceTest, hasADefault) {
    EXPECT_EQ(HotKeyService::defaultKeyCode, 0u);
    EXPECT_EQ(HotKeyService::defaultModifiers, 0x900u);
}

TEST_F(HotKeyServiceTest, isIdleAtTheStart) {
    EXPECT_FALSE(service->isRegistered());
    EXPECT_EQ(service->registration(), std::nullopt);
    EXPECT_EQ(hotKeys.installations, 0);
}

TEST_F(HotKeyServiceTest, registersACombinationUnderTheFirstIdentifier) {
    service->registerHotKey({.keyCode = 12, .modifiers = 0x300}, count(pressed));

    EXPECT_TRUE(service->isRegistered());
    EXPECT_EQ(service->registration(), (HotKey{.keyCode = 12, .modifiers = 0x300}));
    EXPECT_THAT(hotKeys.registered, ElementsAre(Pair(1u, HotKey{.keyCode = 12, .modifiers = 0x300})));
    EXPECT_EQ(hotKeys.installations, 1);
}

TEST_F(HotKeyServiceTest, callsTheHandlerFromTheLoop) {
    service->registerHotKey({}, count(pressed));

    hotKeys.press();
    EXPECT_EQ(pressed, 0);
    clock.advance(0s);
    EXPECT_EQ(pressed, 1);

    hotKeys.press();
    clock.advance(0s);
    EXPECT_EQ(pressed, 2);
}

TEST_F(HotKeyServiceTest, takesPressesThatCameWhileTheLoopWasBusyForOne) {
    service->registerHotKey({}, count(pressed));

    hotKeys.press();
    hotKeys.press();
    clock.advance(0s);

    EXPECT_EQ(pressed, 1);
}

TEST_F(HotKeyServiceTest, callsTheNewHandlerThoughAPressOfTheOldCombinationWaits) {
    service->registerHotKey({}, [] { FAIL(); });
    hotKeys.press();
    service->registerHotKey({}, count(pressed));

    hotKeys.press();
    clock.advance(0s);

    EXPECT_EQ(pressed, 1);
}

TEST_F(HotKeyServiceTest, registersTheSameCombinationAnewUnderANewIdentifier) {
    int second = 0;
    service->registerHotKey({}, count(pressed));

    service->registerHotKey({}, count(second));
    hotKeys.press();
    clock.advance(0s);

    EXPECT_THAT(hotKeys.registered, ElementsAre(Pair(2u, HotKey())));
    EXPECT_EQ(pressed, 0);
    EXPECT_EQ(second, 1);
    EXPECT_EQ(hotKeys.installations, 2);
    EXPECT_EQ(hotKeys.removals, 1);
}

TEST_F(HotKeyServiceTest, dropsAPressThatArrivesAfterAnotherRegistration) {
    int second = 0;
    service->registerHotKey({}, count(pressed));
    hotKeys.press();

    service->registerHotKey({.keyCode = 1}, count(second));
    clock.advance(0s);

    EXPECT_EQ(pressed, 0);
    EXPECT_EQ(second, 0);
}

TEST_F(HotKeyServiceTest, takesPressesForOneAlsoAroundADroppedOne) {
    service->registerHotKey({}, [] { FAIL(); });
    hotKeys.press();
    clock.after(0s, [this] { hotKeys.press(); });
    service->registerHotKey({}, count(pressed));
    hotKeys.press();

    clock.advance(0s);

    EXPECT_EQ(pressed, 1);
}

TEST_F(HotKeyServiceTest, dropsAPressUnderAnUnknownIdentifier) {
    service->registerHotKey({}, count(pressed));

    for (const HotKeys::Identifier identifier : {0u, 2u, 4294967295u})
        hotKeys.notify(identifier);
    clock.advance(0s);

    EXPECT_EQ(pressed, 0);
}

TEST_F(HotKeyServiceTest, isLeftWithoutACombinationWhenOneIsRefused) {
    service->registerHotKey({}, count(pressed));
    hotKeys.grants = false;

    service->registerHotKey({.keyCode = 1}, count(pressed));

    EXPECT_FALSE(service->isRegistered());
    EXPECT_THAT(hotKeys.registered, IsEmpty());
    EXPECT_EQ(hotKeys.installations - hotKeys.removals, 1);  // the handler stays
    for (const HotKeys::Identifier identifier : {1u, 2u})
        hotKeys.notify(identifier);
    clock.advance(0s);
    EXPECT_EQ(pressed, 0);
}

TEST_F(HotKeyServiceTest, letsGoOfARefusedHandlerAtOnce) {
    hotKeys.grants = false;
    const auto held = std::make_shared<int>();

    service->registerHotKey({}, [held] {});

    EXPECT_EQ(held.use_count(), 1);
}

TEST_F(HotKeyServiceTest, givesTheNumberOfARefusedCombinationToNoOther) {
    hotKeys.grants = false;
    service->registerHotKey({}, count(pressed));
    hotKeys.grants = true;

    service->registerHotKey({}, count(pressed));

    EXPECT_THAT(hotKeys.registered, ElementsAre(Pair(2u, HotKey())));
}

TEST_F(HotKeyServiceTest, registersAlsoWhenNoEventHandlerCanBeInstalled) {
    hotKeys.givesHandler = false;

    service->registerHotKey({}, count(pressed));

    EXPECT_TRUE(service->isRegistered());
    service->unregister();
    EXPECT_EQ(hotKeys.removals, 0);
}

TEST_F(HotKeyServiceTest, givesTheCombinationBack) {
    const auto held = std::make_shared<int>();
    service->registerHotKey({}, [held] {});
    hotKeys.press();

    service->unregister();
    clock.advance(0s);

    EXPECT_FALSE(service->isRegistered());
    EXPECT_THAT(hotKeys.registered, IsEmpty());
    EXPECT_EQ(hotKeys.removals, 1);
    EXPECT_EQ(held.use_count(), 1);
}

TEST_F(HotKeyServiceTest, canBeUnregisteredWithNothingRegistered) {
    service->unregister();
    service->registerHotKey({}, count(pressed));
    service->unregister();
    service->unregister();

    EXPECT_FALSE(service->isRegistered());
    EXPECT_EQ(hotKeys.removals, 1);
}

TEST_F(HotKeyServiceTest, canBeRegisteredAnewByItsOwnHandler) {
    service->registerHotKey({}, [this] { service->registerHotKey({.keyCode = 1}, count(pressed)); });

    hotKeys.press();
    clock.advance(0s);
    hotKeys.press();
    clock.advance(0s);

    EXPECT_EQ(pressed, 1);
}

TEST_F(HotKeyServiceTest, callsNoHandlerOnceItIsGone) {
    const auto held = std::make_shared<int>();
    service->registerHotKey({}, [this, held] { ++pressed; });
    hotKeys.press();

    service.reset();
    hotKeys.press();
    clock.advance(0s);

    EXPECT_EQ(pressed, 0);
    EXPECT_EQ(held.use_count(), 1);
    EXPECT_EQ(hotKeys.removals, 0);
    EXPECT_EQ(hotKeys.registered.size(), 1u);
}

TEST_F(HotKeyServiceTest, showsTheModifiersInAFixedOrderAndTheKey) {
    EXPECT_EQ(HotKeyService::displayString({}, layout), "⌥⌘A");
    EXPECT_EQ(HotKeyService::displayString({.keyCode = 0, .modifiers = 0x1B00}, layout), "⌃⌥⇧⌘A");
    EXPECT_EQ(HotKeyService::displayString({.keyCode = 0, .modifiers = 0x1000}, layout), "⌃A");
    EXPECT_EQ(HotKeyService::displayString({.keyCode = 0, .modifiers = 0x200}, layout), "⇧A");
}

TEST_F(HotKeyServiceTest, showsTheKeyAloneWithoutModifiers) {
    EXPECT_EQ(HotKeyService::displayString({.keyCode = 12, .modifiers = 0}, layout), "Q");
}

TEST_F(HotKeyServiceTest, namesSixteenKeysWhateverTheLayout) {
    const std::map<std::uint32_t, std::string> names{
        {36, "↩"},   {48, "⇥"},   {49, "Space"}, {53, "⎋"},    {96, "F5"},   {97, "F6"},  {98, "F7"},  {99, "F3"},
        {100, "F8"}, {101, "F9"}, {103, "F11"},  {109, "F10"}, {111, "F12"}, {118, "F4"}, {120, "F2"}, {122, "F1"}};
    layout.available = false;
    for (std::uint32_t code = 0; code < 130; ++code) {
        const auto name = names.find(code);
        EXPECT_EQ(HotKeyService::displayString({.keyCode = code, .modifiers = 0}, layout),
                  name == names.end() ? "#" + std::to_string(code) : name->second);
    }
}

TEST_F(HotKeyServiceTest, namesOtherKeysByTheLayout) {
    layout.select({{{0, Modifiers::none}, "q"}, {{41, Modifiers::none}, "ş"}, {{27, Modifiers::none}, "ß"}});

    EXPECT_EQ(HotKeyService::displayString({.keyCode = 0, .modifiers = 0}, layout), "Q");
    EXPECT_EQ(HotKeyService::displayString({.keyCode = 41, .modifiers = 0}, layout), "Ş");
    EXPECT_EQ(HotKeyService::displayString({.keyCode = 27, .modifiers = 0}, layout), "SS");
}

TEST_F(HotKeyServiceTest, namesAKeyThatGivesNoPrintableTextByItsCode) {
    EXPECT_EQ(HotKeyService::displayString({.keyCode = 51, .modifiers = 0}, layout), "#51");
    EXPECT_EQ(HotKeyService::displayString({.keyCode = 117, .modifiers = 0}, layout), "#117");
    EXPECT_EQ(HotKeyService::displayString({.keyCode = 10, .modifiers = 0}, layout), "#10");
    EXPECT_EQ(HotKeyService::displayString({.keyCode = 65536, .modifiers = 0}, layout), "#65536");
    EXPECT_EQ(HotKeyService::displayString({.keyCode = 4294967295, .modifiers = 0}, layout), "#4294967295");
}
