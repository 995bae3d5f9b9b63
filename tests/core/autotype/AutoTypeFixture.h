// SPDX-License-Identifier: MIT
#pragma once

#include "core/autotype/AutoTypeService.h"
#include "tests/support/Description.h"
#include "tests/support/FakeDesktop.h"
#include "tests/support/FakeScheduler.h"

#include <gmock/gmock.h>

#include <cmath>
#include <sstream>

using namespace std::chrono_literals;

using Action = AutoTypeAction;

/// A service on a desktop where an editor is in front, and how its runs have ended.
struct AutoTypeFixture {
    struct Ended {
        bool ended = false;
        std::optional<std::string> failure;
    };

    AutoTypeFixture() {
        desktop.applications.bringToFront(editor);
        service->startTrackingFrontmostApplication();
    }

    /// Asks for a run; the outcome shows once it has ended.
    std::shared_ptr<Ended> begin(std::vector<AutoTypeAction> actions) {
        auto outcome = std::make_shared<Ended>();
        service->perform(std::move(actions), [outcome](const std::exception_ptr& failure) {
            EXPECT_FALSE(outcome->ended);
            *outcome = {.ended = true, .failure = descriptionOf(failure)};
        });
        return outcome;
    }

    /// A whole run and its failure.
    std::optional<std::string> type(std::vector<AutoTypeAction> actions) {
        const auto outcome = begin(std::move(actions));
        clock.advance(60s);
        EXPECT_TRUE(outcome->ended);
        return outcome->failure;
    }

    /// What was posted, an event a line: milliseconds since the start, the direction, an asterisk for a modifier's own
    /// event, the code, the flags where there are any, the text where there is one.
    [[nodiscard]] std::vector<std::string> typed() const {
        std::vector<std::string> lines;
        for (const auto& event : desktop.keyboard.typed) {
            std::ostringstream line;
            line << std::llround((event.at.seconds - start.seconds) * 1000) << (event.down ? " down " : " up ")
                 << (event.kind == KeyEvent::Kind::flagsChanged ? "*" : "") << event.code;
            if (event.flags != 0)
                line << " flags " << std::hex << event.flags;
            if (!event.text.empty())
                line << " text " << event.text;
            lines.push_back(line.str());
        }
        return lines;
    }

    /// The modifiers that the posted events have left pressed.
    [[nodiscard]] std::set<std::uint16_t> leftPressed() const {
        std::set<std::uint16_t> pressed;
        for (const auto& event : desktop.keyboard.typed)
            if (event.down)
                pressed.insert(event.code);
            else
                pressed.erase(event.code);
        return pressed;
    }

    FakeScheduler clock;
    FakeDesktop desktop{clock};
    std::shared_ptr<FakeApplication> editor = desktop.applications.start(100, "mektup.txt - Notlar", "Notlar");
    std::unique_ptr<AutoTypeService> service = std::make_unique<AutoTypeService>(
        AutoTypeService::Desktop{desktop.keyboard, desktop.layout, desktop.applications, clock});
    const Timestamp start = clock.now();
};

inline constexpr auto permissionMissing =
    "Otomatik yazma için Erişilebilirlik izni gerekli. Sistem Ayarları → Gizlilik ve Güvenlik → Erişilebilirlik "
    "bölümünden Brenvik'e izin verin.";
inline constexpr auto noTarget = "Yazılacak hedef uygulama bulunamadı.";
inline constexpr auto eventCreationFailed = "Klavye olayı oluşturulamadı.";
