// SPDX-License-Identifier: MIT
#include "core/autotype/AutoTypeService.h"

#include "core/autotype/AutoTypeError.h"
#include "core/autotype/PressedModifiers.h"
#include "core/primitives/Overloaded.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <new>
#include <utility>

namespace {

using namespace std::chrono_literals;

constexpr auto pollingInterval = 20ms;
constexpr double longestWaitForUser = 1.0;  // seconds

// A pause of a sequence may be longer than a clock can count.
constexpr double longestPause = 100.0 * 365 * 24 * 3600;

std::chrono::nanoseconds duration(double seconds) {
    return std::chrono::nanoseconds(std::llround(std::min(seconds, longestPause) * 1e9));
}

void postStroke(KeyEventSource& source, const KeyEvent& event) {
    std::array events{event, event};
    events[1].down = false;
    if (!source.post(events))
        throw AutoTypeError::eventCreationFailed();
}

}  // namespace

AutoTypeService::AutoTypeService(Desktop desktop) : m_desktop(desktop) {}

AutoTypeService::~AutoTypeService() {
    if (m_isTracking) {
        m_desktop.applications.observeActivation({});
        m_desktop.layout.observe({});
    }
    if (m_pendingStep)
        m_desktop.scheduler.cancel(*m_pendingStep);
}

void AutoTypeService::startTrackingFrontmostApplication() {
    if (m_isTracking)
        return;
    m_isTracking = true;
    m_desktop.layout.observe([this] { m_keyStrokeCache.clear(); });
    captureTarget();
    m_desktop.applications.observeActivation([this] { captureTarget(); });
}

std::shared_ptr<RunningApplication> AutoTypeService::captureTarget() {
    auto frontmost = m_desktop.applications.frontmost();
    if (frontmost && frontmost->processIdentifier() != m_desktop.applications.ownProcessIdentifier())
        m_targetApplication = std::move(frontmost);
    return m_targetApplication;
}

std::optional<std::string> AutoTypeService::frontmostWindowTitle() {
    const auto application = m_targetApplication ? m_targetApplication : m_desktop.applications.frontmost();
    if (!application)
        return std::nullopt;
    auto title = focusedWindowTitle(*application);
    return title && !title->empty() ? title : application->localizedName();
}

std::optional<std::string> AutoTypeService::focusedWindowTitle(RunningApplication& application) {
    return hasAccessibilityPermission() ? application.focusedWindowTitle() : std::nullopt;
}

void AutoTypeService::perform(std::string_view sequence, const KdbxEntry& entry, Done done) {
    perform(AutoTypeSequence::parse(sequence, entry), std::move(done));
}

void AutoTypeService::perform(std::vector<AutoTypeAction> actions, Done done) {
    m_runs.push_back(std::make_unique<Run>(std::move(actions), std::move(done), m_desktop.scheduler));
    if (m_runs.size() == 1)
        beginSoon();
}

void AutoTypeService::cancel() {
    for (const auto& run : m_runs)
        run->sleeper.cancel();
}

std::optional<KeyStroke> AutoTypeService::keyStroke(std::string_view character) {
    if (const auto cached = m_keyStrokeCache.find(character); cached != m_keyStrokeCache.end())
        return cached->second;
    const auto found = findKeyStroke(m_desktop.layout, character);
    if (found)
        m_keyStrokeCache.emplace(character, *found);
    return found;
}

bool AutoTypeService::hasAccessibilityPermission() {
    return m_desktop.keyboard.hasPermission();
}

void AutoTypeService::requestAccessibilityPermission() {
    m_desktop.keyboard.requestPermission();
}

AutoTypeService::Run::Run(std::vector<AutoTypeAction> list, Done whenDone, Scheduler& scheduler)
    : actions(std::move(list)), done(std::move(whenDone)), sleeper(scheduler) {}

void AutoTypeService::beginSoon() {
    later(&AutoTypeService::beginRun);
}

// A run cannot be destroyed by itself.
void AutoTypeService::endSoon() {
    later(&AutoTypeService::endRun);
}

void AutoTypeService::later(void (AutoTypeService::*step)()) {
    m_pendingStep = m_desktop.scheduler.after(0ns, [this, step] {
        m_pendingStep.reset();
        (this->*step)();
    });
}

void AutoTypeService::beginRun() {
    m_runs.front()->coroutine = work(*m_runs.front());
}

void AutoTypeService::endRun() {
    const auto ended = std::move(m_runs.front());
    m_runs.pop_front();
    if (!m_runs.empty())
        beginSoon();
    if (ended->done)
        ended->done(std::move(ended->failure));
}

Coroutine AutoTypeService::work(Run& run) {
    try {
        co_await type(run);
    } catch (const std::bad_alloc&) {
        run.failure = "Bu işlem için yeterli bellek yok.";
    } catch (const std::exception& error) {
        run.failure = error.what();
    }
    endSoon();
}

Coroutine AutoTypeService::type(Run& run) {
    if (run.actions.empty())
        co_return;
    if (!hasAccessibilityPermission())
        throw AutoTypeError::accessibilityPermissionMissing();
    co_await activateTarget(run.sleeper);
    if (m_settings.waitForModifierRelease)
        co_await userLetsGo(run.sleeper);
    const auto source = m_desktop.keyboard.makeSource();
    if (!source)
        throw AutoTypeError::eventCreationFailed();
    for (const auto& action : run.actions)
        if (const auto* text = std::get_if<AutoTypeAction::Text>(&action.action))
            source->expect(text->view());
    for (const auto& action : run.actions)
        co_await performAction(action, *source, run.sleeper);
}

Coroutine AutoTypeService::activateTarget(Sleeper& sleeper) {
    const auto target = m_targetApplication;  // the target may change while this one is waited for
    if (!target || target->isTerminated())
        throw AutoTypeError::noTargetApplication();
    if (isInFront(*target)) {
        co_await sleeper.sleep(duration(m_settings.postActivationDelay));
        co_return;
    }
    target->activate();
    const double deadline = m_desktop.scheduler.now().seconds + m_settings.activationTimeout;
    while (m_desktop.scheduler.now().seconds < deadline) {
        if (isInFront(*target)) {
            co_await sleeper.sleep(duration(m_settings.postActivationDelay));
            co_return;
        }
        co_await sleeper.sleep(pollingInterval);
    }
    throw AutoTypeError::targetActivationFailed(target->localizedName().value_or("Uygulama"));
}

// A cancelled run waits as well: a user who still holds the keys would have them mixed with the last stroke.
Coroutine AutoTypeService::userLetsGo(Sleeper& sleeper) {
    const double deadline = m_desktop.scheduler.now().seconds + longestWaitForUser;
    while (userHoldsKeys() && m_desktop.scheduler.now().seconds < deadline)
        co_await sleeper.sleep(pollingInterval, Sleeper::Cancellable::no);
    if (userHoldsKeys())
        m_desktop.keyboard.releaseHeldKeys();
}

Coroutine AutoTypeService::performAction(const AutoTypeAction& action, KeyEventSource& source, Sleeper& sleeper) {
    if (const auto* text = std::get_if<AutoTypeAction::Text>(&action.action)) {
        co_await typeText(text->view(), source, sleeper);
    } else if (const auto* key = std::get_if<AutoTypeAction::Key>(&action.action)) {
        co_await postKey({.code = keyCode(key->key), .flags = 0}, source, sleeper);
        co_await sleeper.sleep(duration(m_settings.keystrokeDelay));
    } else if (const auto* delay = std::get_if<AutoTypeAction::Delay>(&action.action)) {
        co_await sleeper.sleep(duration(static_cast<double>(delay->milliseconds) / 1000));
    } else {
        co_await clearField(source, sleeper);
    }
}

Coroutine AutoTypeService::typeText(std::string_view text, KeyEventSource& source, Sleeper& sleeper) {
    for (const auto character : Text::characters(text)) {
        if (const auto stroke = keyStroke(character))
            co_await postKey(*stroke, source, sleeper);
        else
            postStroke(source, {.code = 0, .flags = 0, .text = character});
        co_await sleeper.sleep(duration(m_settings.keystrokeDelay));
    }
}

Coroutine AutoTypeService::clearField(KeyEventSource& source, Sleeper& sleeper) {
    const std::uint16_t selectAll = keyStroke("a").value_or(KeyStroke()).code;
    co_await postKey({.code = selectAll, .flags = KeyFlag::command}, source, sleeper);
    co_await sleeper.sleep(duration(m_settings.keystrokeDelay));
    co_await postKey({.code = keyCode(AutoTypeKey::backspace), .flags = 0}, source, sleeper);
    co_await sleeper.sleep(duration(m_settings.keystrokeDelay));
}

Coroutine AutoTypeService::postKey(KeyStroke stroke, KeyEventSource& source, Sleeper& sleeper) {
    const KeyEvent event{.code = stroke.code, .flags = stroke.flags, .text = {}};
    if (!m_settings.useRealModifierKeyEvents || !PressedModifiers::areIn(stroke.flags)) {
        postStroke(source, event);
        co_return;
    }
    PressedModifiers modifiers(source, stroke.flags);
    modifiers.press();
    co_await sleeper.sleep(duration(m_settings.modifierSettleDelay));
    postStroke(source, event);
    co_await sleeper.sleep(duration(m_settings.modifierSettleDelay));
}

bool AutoTypeService::isInFront(const RunningApplication& application) {
    const auto frontmost = m_desktop.applications.frontmost();
    return frontmost && frontmost->processIdentifier() == application.processIdentifier();
}

bool AutoTypeService::userHoldsKeys() {
    return (m_desktop.keyboard.heldModifiers() & KeyFlag::all) != 0 || m_desktop.keyboard.isHotKeyHeld();
}
