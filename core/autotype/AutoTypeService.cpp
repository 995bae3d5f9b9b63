// SPDX-License-Identifier: MIT
#include "core/autotype/AutoTypeService.h"

#include "core/autotype/AutoTypeError.h"
#include "core/autotype/PressedModifiers.h"
#include "core/primitives/Overloaded.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
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

// Each of them may close a dialogue, and bring another window to the front.
bool answersDialogues(AutoTypeKey key) {
    return key == AutoTypeKey::enter || key == AutoTypeKey::space || key == AutoTypeKey::escape;
}

void requirePosted(KeyEventSource::Posted posted, const std::string& applicationName) {
    if (posted == KeyEventSource::Posted::impossible)
        throw AutoTypeError::eventCreationFailed();
    if (posted == KeyEventSource::Posted::elsewhere)
        throw AutoTypeError::targetNoLongerInFront(applicationName);
}

KeyEventSource::Posted postStroke(KeyEventSource& source, const KeyEvent& event) {
    std::array events{event, event};
    events[1].down = false;
    return source.post(events);
}

std::string nameOf(RunningApplication& application) {
    return application.localizedName().value_or("Uygulama");
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
    take(m_targetApplication, *m_runs.back());
    if (m_runs.size() == 1)
        beginSoon();
}

// The end of a run's coroutine releases what it has pressed.
void AutoTypeService::stop() {
    if (m_pendingStep)
        m_desktop.scheduler.cancel(*m_pendingStep);
    m_pendingStep.reset();
    m_runs.clear();
    m_keyStrokeCache.clear();  // it has each letter that was typed
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
    } catch (...) {
        run.failure = std::current_exception();
    }
    endSoon();
}

Coroutine AutoTypeService::type(Run& run) {
    if (run.actions.empty())
        co_return;
    if (!hasAccessibilityPermission())
        throw AutoTypeError::accessibilityPermissionMissing();
    co_await activateTarget(run);
    if (m_settings.waitForModifierRelease)
        co_await userLetsGo(run.sleeper);
    const auto source = m_desktop.keyboard.makeSource(run.window);
    if (!source)
        throw AutoTypeError::eventCreationFailed();
    expect(run.actions, *source);
    Strokes strokes{
        .source = *source, .sleeper = run.sleeper, .applicationName = run.applicationName, .windowMayChangeUntil = {}};
    if (run.isActivated)  // the focus may follow some time after the window
        strokes.windowMayChangeUntil = m_desktop.scheduler.steadyNow();
    for (const auto& action : run.actions)
        co_await performAction(action, strokes);
}

void AutoTypeService::take(std::shared_ptr<RunningApplication> target, Run& run) {
    run.target = std::move(target);
    if (!run.target)
        return;
    run.window = run.target->window();
    run.applicationName = nameOf(*run.target);
}

Coroutine AutoTypeService::activateTarget(Run& run) {
    if (!run.target)
        take(m_targetApplication, run);
    if (!run.target || run.target->isTerminated())
        throw AutoTypeError::noTargetApplication();
    if (isInFront(*run.target)) {
        co_await run.sleeper.sleep(duration(m_settings.postActivationDelay));
        co_return;
    }
    run.isActivated = true;
    run.target->activate();
    const auto deadline = fromNow(m_settings.activationTimeout);
    while (m_desktop.scheduler.steadyNow() < deadline) {
        if (const auto front = m_desktop.applications.frontmost();
            front && front->processIdentifier() == run.target->processIdentifier()) {
            run.window = front->window();
            co_await run.sleeper.sleep(duration(m_settings.postActivationDelay));
            co_return;
        }
        co_await run.sleeper.sleep(pollingInterval);
    }
    throw AutoTypeError::targetActivationFailed(run.applicationName);
}

void AutoTypeService::expect(const std::vector<AutoTypeAction>& actions, KeyEventSource& source) {
    Bytes characters;  // may be of a password
    for (const auto& action : actions)
        if (const auto* text = std::get_if<AutoTypeAction::Text>(&action.action))
            for (const auto character : Text::characters(text->view()))
                if (!keyStroke(character))
                    append(characters, bytesOf(character));
    source.expect(textOf(characters));
}

std::chrono::nanoseconds AutoTypeService::fromNow(double seconds) const {
    return m_desktop.scheduler.steadyNow() + duration(seconds);
}

// A cancelled run waits as well: a user who still holds the keys would have them mixed with the last stroke.
Coroutine AutoTypeService::userLetsGo(Sleeper& sleeper) {
    const auto deadline = fromNow(longestWaitForUser);
    while (userHoldsKeys() && m_desktop.scheduler.steadyNow() < deadline)
        co_await sleeper.sleep(pollingInterval, Sleeper::Cancellable::no);
    if (userHoldsKeys())
        m_desktop.keyboard.releaseHeldKeys();
}

Coroutine AutoTypeService::performAction(const AutoTypeAction& action, Strokes& strokes) {
    if (const auto* text = std::get_if<AutoTypeAction::Text>(&action.action))
        co_await typeText(text->view(), strokes);
    else if (const auto* key = std::get_if<AutoTypeAction::Key>(&action.action))
        co_await pressKey(key->key, strokes);
    else if (const auto* delay = std::get_if<AutoTypeAction::Delay>(&action.action))
        co_await strokes.sleeper.sleep(duration(static_cast<double>(delay->milliseconds) / 1000));
    else
        co_await clearField(strokes);
}

Coroutine AutoTypeService::typeText(std::string_view text, Strokes& strokes) {
    for (const auto character : Text::characters(text)) {
        if (const auto stroke = keyStroke(character)) {
            co_await postKey(*stroke, strokes);
        } else {
            co_await windowComes(strokes);
            requirePosted(postStroke(strokes.source, {.code = 0, .flags = 0, .text = character}),
                          strokes.applicationName);
        }
        co_await strokes.sleeper.sleep(duration(m_settings.keystrokeDelay));
    }
}

Coroutine AutoTypeService::pressKey(AutoTypeKey key, Strokes& strokes) {
    co_await postKey({.code = keyCode(key), .flags = 0}, strokes);
    if (answersDialogues(key))
        strokes.windowMayChangeUntil = fromNow(m_settings.activationTimeout);
    co_await strokes.sleeper.sleep(duration(m_settings.keystrokeDelay));
}

Coroutine AutoTypeService::clearField(Strokes& strokes) {
    const std::uint16_t selectAll = keyStroke("a").value_or(KeyStroke()).code;
    co_await postKey({.code = selectAll, .flags = KeyFlag::command}, strokes);
    co_await strokes.sleeper.sleep(duration(m_settings.keystrokeDelay));
    co_await postKey({.code = keyCode(AutoTypeKey::backspace), .flags = 0}, strokes);
    co_await strokes.sleeper.sleep(duration(m_settings.keystrokeDelay));
}

Coroutine AutoTypeService::postKey(KeyStroke stroke, Strokes& strokes) {
    co_await windowComes(strokes);
    const KeyEvent event{.code = stroke.code, .flags = stroke.flags, .text = {}};
    if (!m_settings.useRealModifierKeyEvents || !PressedModifiers::areIn(stroke.flags)) {
        requirePosted(postStroke(strokes.source, event), strokes.applicationName);
        co_return;
    }
    PressedModifiers modifiers(strokes.source, stroke.flags);
    requirePosted(modifiers.press(), strokes.applicationName);
    co_await strokes.sleeper.sleep(duration(m_settings.modifierSettleDelay));
    requirePosted(postStroke(strokes.source, event), strokes.applicationName);
    co_await strokes.sleeper.sleep(duration(m_settings.modifierSettleDelay));
}

// A window that the run's own keys bring to the front may take its time: until then nothing is typed. The first stroke
// waits for it, however long the sequence pauses before that.
Coroutine AutoTypeService::windowComes(Strokes& strokes) {
    if (!strokes.windowMayChangeUntil)
        co_return;
    const auto deadline = fromNow(m_settings.activationTimeout);
    while (!strokes.source.follow()) {
        if (m_desktop.scheduler.steadyNow() >= deadline)
            throw AutoTypeError::targetNoLongerInFront(strokes.applicationName);
        co_await strokes.sleeper.sleep(pollingInterval);
    }
    if (m_desktop.scheduler.steadyNow() >= *strokes.windowMayChangeUntil)
        strokes.windowMayChangeUntil.reset();
}

bool AutoTypeService::isInFront(const RunningApplication& application) {
    const auto frontmost = m_desktop.applications.frontmost();
    return frontmost && frontmost->processIdentifier() == application.processIdentifier();
}

bool AutoTypeService::userHoldsKeys() {
    return (m_desktop.keyboard.heldModifiers() & KeyFlag::all) != 0 || m_desktop.keyboard.isHotKeyHeld();
}
