// SPDX-License-Identifier: MIT
#pragma once

#include "core/autotype/AutoTypeSequence.h"
#include "core/autotype/AutoTyping.h"
#include "core/autotype/KeyStroke.h"
#include "core/model/KdbxDatabase.h"
#include "core/platform/Applications.h"
#include "core/platform/Coroutine.h"
#include "core/platform/KeyboardEvents.h"
#include "core/platform/KeyboardLayout.h"
#include "core/platform/Scheduler.h"
#include "core/text/Text.h"

#include <chrono>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Types into the application that was last in front, by synthetic strokes of keys.
class AutoTypeService final : public AutoTyping {
public:
    using KeyStroke = ::KeyStroke;

    static constexpr std::string_view defaultSequence = AutoTypeSequence::defaultSequence;

    /// Durations are in seconds.
    struct Settings {
        double keystrokeDelay = 0.025;       // after each character, key or step of clearing a field
        double activationTimeout = 2.0;      // for the target to come to the front
        double postActivationDelay = 0.12;   // from then to the first stroke
        bool waitForModifierRelease = true;  // a second at most, for the hot key's modifiers
        bool useRealModifierKeyEvents = true;
        double modifierSettleDelay = 0.02;  // on either side of a stroke with such events
    };

    /// The desktop; all of it outlives the service.
    struct Desktop {
        KeyboardEvents& keyboard;
        KeyboardLayout& layout;
        Applications& applications;
        Scheduler& scheduler;
    };

    explicit AutoTypeService(Desktop desktop);
    AutoTypeService(const AutoTypeService&) = delete;
    AutoTypeService& operator=(const AutoTypeService&) = delete;

    /// Ends a run where it is, with no modifier left pressed. No `done` is called.
    ~AutoTypeService() override;

    /// The layout that it types with.
    [[nodiscard]] KeyboardLayout& layout() const noexcept { return m_desktop.layout; }

    [[nodiscard]] const Settings& settings() const noexcept { return m_settings; }
    void setSettings(const Settings& settings) noexcept { m_settings = settings; }

    /// Follows the application in front from now on, and empties the cache of strokes whenever the layout changes.
    /// Repeated calls do nothing.
    void startTrackingFrontmostApplication();

    /// Makes the application in front the target, unless it is this one: what was in front before us stays the target.
    /// The result is the target, or null.
    std::shared_ptr<RunningApplication> captureTarget();
    void clearTarget() noexcept { m_targetApplication.reset(); }

    /// The application that would be typed into, or null.
    [[nodiscard]] const std::shared_ptr<RunningApplication>& targetApplication() const noexcept {
        return m_targetApplication;
    }

    /// The title of the target's window, or of the front window where there is no target. Where it has none or may not
    /// be read, the application's name; nothing where that is unknown too.
    [[nodiscard]] std::optional<std::string> frontmostWindowTitle();

    /// Brings the target to the front and performs the actions in its window. A failure is an `AutoTypeError` or
    /// `Cancelled`.
    ///
    /// The target is the one at the time of the call, whatever comes to the front before the run begins. Where there is
    /// none then, it is the one at the run's beginning. Each stroke goes into the window in which the run began or
    /// nowhere: a run fails once its window has closed or is not in front any more, also where another window of the
    /// application is. The exception: after a key that answers a dialogue (Enter, Space or Escape) the run goes on in
    /// the window that this brings to the front. See `KeyEventSource::follow`.
    ///
    /// A run that is asked for during another begins when that one has ended. Side by side their strokes would mix, and
    /// half of one password and half of another would go into one field. Dropping the later one would report a success
    /// or a failure that never was.
    void perform(std::vector<AutoTypeAction> actions, Done done) override;

    /// Parses a sequence for an entry and performs it.
    void perform(std::string_view sequence, const KdbxEntry& entry, Done done);

    void stop() override;

    /// Whether a run is going on or waits for its turn.
    [[nodiscard]] bool isTyping() const noexcept { return !m_runs.empty(); }

    /// Ends all runs with `Cancelled` at their next pause, which for a run that pauses now is within this call. A run
    /// that waits for the user to release keys still types its first stroke, unlike with `stop`.
    void cancel();

    /// The stroke for a character under the present layout, remembered for the next time where there is one.
    [[nodiscard]] std::optional<KeyStroke> keyStroke(std::string_view character);

    /// Whether strokes may be posted and titles be read. The user is not asked.
    [[nodiscard]] bool hasAccessibilityPermission();

    /// Whether the user can be asked for that permission.
    [[nodiscard]] bool canRequestAccessibilityPermission() const { return m_desktop.keyboard.canRequestPermission(); }

    /// Asks the user for it.
    void requestAccessibilityPermission();

private:
    /// One request, from its asking to its end.
    struct Run {
        Run(std::vector<AutoTypeAction> list, Done whenDone, Scheduler& scheduler);

        std::vector<AutoTypeAction> actions;
        Done done;
        std::shared_ptr<RunningApplication> target;  // null while there is none
        DesktopWindow window;                        // of the target; what is typed goes there
        std::string applicationName;                 // while its window was there
        bool isActivated = false;                    // whether the target had to be brought to the front
        Sleeper sleeper;
        std::exception_ptr failure;
        std::optional<Coroutine> coroutine;  // goes first; none before its turn
    };

    /// What the strokes of a run need.
    struct Strokes {
        KeyEventSource& source;
        Sleeper& sleeper;
        const std::string& applicationName;
        /// Until when the window may change because of the run's own keys. At the next stroke it may in any case.
        std::optional<std::chrono::nanoseconds> windowMayChangeUntil;
    };

    void beginSoon();
    void endSoon();
    void later(void (AutoTypeService::*step)());
    void beginRun();
    void endRun();

    Coroutine work(Run& run);
    Coroutine type(Run& run);
    Coroutine activateTarget(Run& run);
    Coroutine userLetsGo(Sleeper& sleeper);
    Coroutine performAction(const AutoTypeAction& action, Strokes& strokes);
    Coroutine typeText(std::string_view text, Strokes& strokes);
    Coroutine pressKey(AutoTypeKey key, Strokes& strokes);
    Coroutine clearField(Strokes& strokes);
    Coroutine postKey(KeyStroke stroke, Strokes& strokes);
    Coroutine windowComes(Strokes& strokes);

    void take(std::shared_ptr<RunningApplication> target, Run& run);
    void expect(const std::vector<AutoTypeAction>& actions, KeyEventSource& source);
    [[nodiscard]] std::chrono::nanoseconds fromNow(double seconds) const;
    [[nodiscard]] bool isInFront(const RunningApplication& application);
    [[nodiscard]] bool userHoldsKeys();
    [[nodiscard]] std::optional<std::string> focusedWindowTitle(RunningApplication& application);

    Desktop m_desktop;
    Settings m_settings;
    std::shared_ptr<RunningApplication> m_targetApplication;
    Text::Map<KeyStroke> m_keyStrokeCache;  // right for the present layout alone
    bool m_isTracking = false;
    std::deque<std::unique_ptr<Run>> m_runs;       // in the order of asking; the first is at work
    std::optional<Scheduler::Task> m_pendingStep;  // the beginning or the end of the first run
};
