// SPDX-License-Identifier: MIT
#pragma once

#include "core/platform/Applications.h"
#include "core/platform/HotKeys.h"
#include "core/platform/KeyboardEvents.h"
#include "core/platform/KeyboardLayout.h"
#include "core/platform/Scheduler.h"

#include <array>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// A key event as it was posted, and when.
struct TypedEvent {
    KeyEvent::Kind kind;
    std::uint16_t code;
    bool down;
    std::uint64_t flags;
    std::string text;  // what the event stands for whatever its code; mostly empty
    Timestamp at;
};

/// The window of another program that is in front, and the one that it replaced.
struct FakeFront {
    DesktopWindow window;
    std::uint64_t cameInPlaceOf = 0;  // the number of a window; 0 where of none
};

/// A keyboard that keeps what is posted.
class FakeKeyboard final : public KeyboardEvents {
public:
    explicit FakeKeyboard(Scheduler& scheduler) : m_scheduler(scheduler) {}

    [[nodiscard]] bool hasPermission() override {
        ++permissionQuestions;
        return permission;
    }
    [[nodiscard]] bool canRequestPermission() const override { return canBeAsked; }
    void requestPermission() override { ++permissionRequests; }
    [[nodiscard]] std::uint64_t heldModifiers() override { return held; }
    [[nodiscard]] bool isHotKeyHeld() override { return hotKeyHeld; }
    void releaseHeldKeys() override {
        ++releases;
        held = 0;
        hotKeyHeld = false;
    }
    [[nodiscard]] std::unique_ptr<KeyEventSource> makeSource(const DesktopWindow& window) override {
        if (!givesSource)
            return nullptr;
        ++openSources;
        return std::make_unique<Source>(*this, window);
    }

    bool permission = true;
    bool canBeAsked = true;
    bool givesSource = true;
    std::function<FakeFront()> front;  // where keys go
    std::uint64_t held = 0;
    bool hotKeyHeld = false;
    std::function<bool(const KeyEvent&)> refuses;  // which events cannot be made; none where it is empty

    int permissionQuestions = 0;
    int permissionRequests = 0;
    int releases = 0;
    int openSources = 0;
    std::string expected;           // all characters that were announced
    std::vector<TypedEvent> typed;  // since the start

private:
    class Source final : public KeyEventSource {
    public:
        Source(FakeKeyboard& keyboard, DesktopWindow window) : m_keyboard(keyboard), m_window(window) {}
        ~Source() override { --m_keyboard.openSources; }

        void expect(std::string_view characters) override { m_keyboard.expected += characters; }

        [[nodiscard]] Posted post(std::span<const KeyEvent> events) override {
            bool presses = false;
            for (const auto& event : events) {
                if (m_keyboard.refuses && m_keyboard.refuses(event))
                    return Posted::impossible;
                presses = presses || event.down;
            }
            if (presses && m_keyboard.front().window != m_window)
                return Posted::elsewhere;
            for (const auto& event : events)
                m_keyboard.typed.push_back({.kind = event.kind,
                                            .code = event.code,
                                            .down = event.down,
                                            .flags = event.flags,
                                            .text = std::string(event.text),
                                            .at = m_keyboard.m_scheduler.now()});
            return Posted::yes;
        }

        [[nodiscard]] bool follow() override {
            const auto front = m_keyboard.front();
            if (front.window.processIdentifier == m_window.processIdentifier && front.cameInPlaceOf == m_window.number)
                m_window = front.window;
            return front.window == m_window;
        }

    private:
        FakeKeyboard& m_keyboard;
        DesktopWindow m_window;
    };

    Scheduler& m_scheduler;
};

/// A layout that is a table. It starts as the US one.
class FakeLayout final : public KeyboardLayout {
public:
    using Table = std::map<std::pair<std::uint16_t, Modifiers>, std::string>;

    [[nodiscard]] bool isAvailable() override { return available; }

    [[nodiscard]] std::string translate(std::uint16_t keyCode, Modifiers modifiers) override {
        ++translations;
        const auto found = m_table.find({keyCode, modifiers});
        return found == m_table.end() ? "" : found->second;
    }

    void observe(std::function<void()> changed) override { m_changed = std::move(changed); }

    /// The user selects another layout.
    void select(Table table) {
        m_table = std::move(table);
        if (m_changed)
            m_changed();
    }

    /// Letters, digits and signs, each also with Shift, and the keys of control characters. The keypad gives its
    /// operators alone, since no lock is on. Option makes no difference.
    [[nodiscard]] static Table us() {
        Table table;
        for (const auto& [code, plain, shifted] : usKeys)
            for (const auto& [modifiers, text] :
                 {std::pair(Modifiers::none, plain), std::pair(Modifiers::shift, shifted),
                  std::pair(Modifiers::option, plain), std::pair(Modifiers::shiftAndOption, shifted)})
                table[{code, modifiers}] = std::string(text);
        return table;
    }

    bool available = true;
    int translations = 0;

private:
    struct Key {
        std::uint16_t code;
        std::string_view plain;
        std::string_view shifted;
    };

    static constexpr std::array usKeys{
        Key{0, "a", "A"},    Key{1, "s", "S"},        Key{2, "d", "D"},    Key{3, "f", "F"},        Key{4, "h", "H"},
        Key{5, "g", "G"},    Key{6, "z", "Z"},        Key{7, "x", "X"},    Key{8, "c", "C"},        Key{9, "v", "V"},
        Key{11, "b", "B"},   Key{12, "q", "Q"},       Key{13, "w", "W"},   Key{14, "e", "E"},       Key{15, "r", "R"},
        Key{16, "y", "Y"},   Key{17, "t", "T"},       Key{18, "1", "!"},   Key{19, "2", "@"},       Key{20, "3", "#"},
        Key{21, "4", "$"},   Key{22, "6", "^"},       Key{23, "5", "%"},   Key{24, "=", "+"},       Key{25, "9", "("},
        Key{26, "7", "&"},   Key{27, "-", "_"},       Key{28, "8", "*"},   Key{29, "0", ")"},       Key{30, "]", "}"},
        Key{31, "o", "O"},   Key{32, "u", "U"},       Key{33, "[", "{"},   Key{34, "i", "I"},       Key{35, "p", "P"},
        Key{36, "\r", "\r"}, Key{37, "l", "L"},       Key{38, "j", "J"},   Key{39, "'", "\""},      Key{40, "k", "K"},
        Key{41, ";", ":"},   Key{42, "\\", "|"},      Key{43, ",", "<"},   Key{44, "/", "?"},       Key{45, "n", "N"},
        Key{46, "m", "M"},   Key{47, ".", ">"},       Key{48, "\t", "\t"}, Key{49, " ", " "},       Key{50, "`", "~"},
        Key{51, "\b", "\b"}, Key{53, "\x1B", "\x1B"}, Key{67, "*", "*"},   Key{69, "+", "+"},       Key{75, "/", "/"},
        Key{76, "\r", "\r"}, Key{78, "-", "-"},       Key{81, "=", "="},   Key{117, "\x7F", "\x7F"}};

    Table m_table = us();
    std::function<void()> m_changed;
};

class FakeApplications;

/// An application that does what a test says.
class FakeApplication final : public RunningApplication, public std::enable_shared_from_this<FakeApplication> {
public:
    FakeApplication(FakeApplications& desktop, std::int64_t pid, std::optional<std::string> windowTitle,
                    std::optional<std::string> applicationName)
        : title(std::move(windowTitle)), name(std::move(applicationName)), m_desktop(desktop), m_pid(pid) {}

    [[nodiscard]] std::int64_t processIdentifier() const override { return m_pid; }
    [[nodiscard]] DesktopWindow window() const override { return {.processIdentifier = m_pid, .number = number}; }
    [[nodiscard]] std::optional<std::string> localizedName() override { return name; }
    [[nodiscard]] std::optional<std::string> focusedWindowTitle() override { return title; }
    [[nodiscard]] bool isTerminated() override { return terminated; }
    void activate() override;

    std::uint64_t number = 1;         // of its window; the first one of its process
    std::uint64_t cameInPlaceOf = 0;  // another window of its process, which a key has closed
    std::optional<std::string> title;
    std::optional<std::string> name;
    bool terminated = false;
    bool comesToFront = true;  // at once, when it is asked to
    int activations = 0;       // how often it was asked

private:
    FakeApplications& m_desktop;
    std::int64_t m_pid;
};

/// A desktop on which our own window is in front at the start.
class FakeApplications final : public Applications {
public:
    static constexpr std::int64_t ownPid = 4'194'305;  // more than Linux ever gives

    [[nodiscard]] std::shared_ptr<RunningApplication> frontmost() override { return m_front; }
    [[nodiscard]] std::int64_t ownProcessIdentifier() override { return ownPid; }
    void observeActivation(std::function<void()> activated) override { m_activated = std::move(activated); }

    [[nodiscard]] std::shared_ptr<FakeApplication> start(std::int64_t pid, std::optional<std::string> title,
                                                         std::optional<std::string> name) {
        return std::make_shared<FakeApplication>(*this, pid, std::move(title), std::move(name));
    }

    /// The user brings a window to the front; null is a moment in which none is there.
    void bringToFront(std::shared_ptr<FakeApplication> application) {
        m_front = std::move(application);
        if (m_activated)
            m_activated();
    }

    void bringOurselvesToFront() { bringToFront(m_own); }

    [[nodiscard]] bool isObserved() const { return static_cast<bool>(m_activated); }

    [[nodiscard]] FakeFront front() const {
        return m_front ? FakeFront{.window = m_front->window(), .cameInPlaceOf = m_front->cameInPlaceOf} : FakeFront();
    }

private:
    std::shared_ptr<FakeApplication> m_own = std::make_shared<FakeApplication>(*this, ownPid, "Brenvik", "Brenvik");
    std::shared_ptr<FakeApplication> m_front = m_own;
    std::function<void()> m_activated;
};

inline void FakeApplication::activate() {
    ++activations;
    if (comesToFront)
        m_desktop.bringToFront(shared_from_this());
}

/// Combinations that are taken and pressed by hand.
class FakeHotKeys final : public HotKeys {
public:
    bool installHandler(std::function<void(Identifier)> pressed) override {
        ++installations;
        if (!givesHandler)
            return false;
        m_pressed = std::move(pressed);
        return true;
    }
    void removeHandler() override {
        ++removals;
        m_pressed = nullptr;
    }
    [[nodiscard]] bool registerHotKey(const HotKey& hotKey, Identifier identifier) override {
        if (!grants)
            return false;
        registered[identifier] = hotKey;
        return true;
    }
    void unregisterHotKey(Identifier identifier) override { registered.erase(identifier); }

    /// The user presses all combinations that are registered.
    void press() {
        for (const auto& [identifier, hotKey] : registered)
            notify(identifier);
    }

    /// The desktop reports a press under an identifier, which may be an old one.
    void notify(Identifier identifier) {
        if (m_pressed)
            m_pressed(identifier);
    }

    bool grants = true;
    bool givesHandler = true;
    std::map<Identifier, HotKey> registered;
    int installations = 0;
    int removals = 0;

private:
    std::function<void(Identifier)> m_pressed;
};

/// A desktop in memory: permission given, nothing held, a US layout, our own window in front.
struct FakeDesktop {
    explicit FakeDesktop(Scheduler& scheduler) : keyboard(scheduler) {
        keyboard.front = [this] { return applications.front(); };
    }
    FakeDesktop(const FakeDesktop&) = delete;
    FakeDesktop& operator=(const FakeDesktop&) = delete;

    FakeKeyboard keyboard;
    FakeLayout layout;
    FakeApplications applications;
    FakeHotKeys hotKeys;
};
