// SPDX-License-Identifier: MIT
#include "platform/none/NoDesktop.h"

#include "core/autotype/AutoTypeService.h"
#include "core/autotype/HotKeyService.h"
#include "tests/support/Description.h"
#include "tests/support/FakeScheduler.h"

using namespace std::chrono_literals;

namespace {

struct NoDesktopTest : testing::Test {
    FakeScheduler clock;
    NoDesktop desktop;
    AutoTypeService autoType{{desktop.keyboard, desktop.layout, desktop.applications, clock}};
};

}  // namespace

TEST_F(NoDesktopTest, lacksThePermissionToTypeAlsoAfterAsking) {
    std::optional<std::string> failure;
    autoType.requestAccessibilityPermission();

    autoType.perform({AutoTypeAction::text("a")},
                     [&](const std::exception_ptr& ended) { failure = descriptionOf(ended); });
    clock.advance(0s);

    EXPECT_FALSE(autoType.hasAccessibilityPermission());
    EXPECT_EQ(failure,
              "Otomatik yazma için Erişilebilirlik izni gerekli. Sistem Ayarları → Gizlilik ve Güvenlik → "
              "Erişilebilirlik bölümünden Brenvik'e izin verin.");
}

TEST_F(NoDesktopTest, knowsNoTargetAndNoTitle) {
    autoType.startTrackingFrontmostApplication();

    EXPECT_EQ(autoType.captureTarget(), nullptr);
    EXPECT_EQ(autoType.frontmostWindowTitle(), std::nullopt);
}

TEST_F(NoDesktopTest, leavesTheHotKeyUnregistered) {
    HotKeyService service(desktop.hotKeys, clock);

    service.registerHotKey({}, [] {});
    EXPECT_FALSE(service.isRegistered());
    service.unregister();

    EXPECT_EQ(HotKeyService::displayString({}, desktop.layout), "⌥⌘#0");
}

TEST_F(NoDesktopTest, findsNoStroke) {
    EXPECT_EQ(autoType.keyStroke("a"), std::nullopt);
}
