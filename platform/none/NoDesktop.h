// SPDX-License-Identifier: MIT
#pragma once

#include "core/platform/Applications.h"
#include "core/platform/HotKeys.h"
#include "core/platform/KeyboardEvents.h"
#include "core/platform/KeyboardLayout.h"

#include <unistd.h>

/// A keyboard that takes no posted keys.
class NoKeyboard final : public KeyboardEvents {
public:
    [[nodiscard]] bool hasPermission() override { return false; }
    [[nodiscard]] bool canRequestPermission() const override { return false; }
    void requestPermission() override {}
    [[nodiscard]] std::uint64_t heldModifiers() override { return 0; }
    [[nodiscard]] bool isHotKeyHeld() override { return false; }
    void releaseHeldKeys() override {}
    [[nodiscard]] std::unique_ptr<KeyEventSource> makeSource(const DesktopWindow&) override { return nullptr; }
};

/// A keyboard whose layout is unknown.
class NoLayout final : public KeyboardLayout {
public:
    [[nodiscard]] bool isAvailable() override { return false; }
    [[nodiscard]] std::string translate(std::uint16_t, Modifiers) override { return {}; }
    void observe(std::function<void()>) override {}
};

/// A desktop that shows no application.
class NoApplications final : public Applications {
public:
    [[nodiscard]] std::shared_ptr<RunningApplication> frontmost() override { return nullptr; }
    [[nodiscard]] std::int64_t ownProcessIdentifier() override { return ::getpid(); }
    void observeActivation(std::function<void()>) override {}
};

/// A desktop that grants no hot key.
class NoHotKeys final : public HotKeys {
public:
    [[nodiscard]] bool areGranted() const override { return false; }
    bool installHandler(std::function<void(Identifier)>) override { return false; }
    void removeHandler() override {}
    [[nodiscard]] bool registerHotKey(const HotKey&, Identifier) override { return false; }
    void unregisterHotKey(Identifier) override {}
};

/// The implementation for a desktop that offers nothing to type with: auto-type reports that it lacks the permission,
/// and the hot key stays unregistered. All else of the program works.
struct NoDesktop {
    NoKeyboard keyboard;
    NoLayout layout;
    NoApplications applications;
    NoHotKeys hotKeys;
};
