// SPDX-License-Identifier: MIT
#include "tests/platform/x11/KeyboardFixture.h"

#include "platform/x11/KeySymbols.h"
#include "platform/x11/XAnswer.h"
#include "platform/x11/Xkb.h"

#include <QElapsedTimer>
#include <QProcess>

#include <xcb/xtest.h>

#include <string_view>
#include <utility>

namespace {

constexpr int patience = 20'000;  // milliseconds
constexpr std::uint32_t keyEvents = XCB_EVENT_MASK_KEY_PRESS | XCB_EVENT_MASK_KEY_RELEASE;

std::uint8_t firstEventOf(xcb_connection_t* connection, std::string_view name) {
    const auto request = xcb_query_extension(connection, static_cast<std::uint16_t>(name.size()), name.data());
    const XAnswer<xcb_query_extension_reply_t> reply(xcb_query_extension_reply(connection, request, nullptr));
    return reply && reply->present ? reply->first_event : 0;
}

/// The end of a device's name: the library looks for its beginning two bytes too late.
std::string endOfName(xcb_connection_t* connection, std::uint8_t device) {
    const auto request = xcb_xkb_get_device_info(connection, device, 0, 0, 0, 0, 0, 0);
    const XAnswer<xcb_xkb_get_device_info_reply_t> reply(xcb_xkb_get_device_info_reply(connection, request, nullptr));
    if (!reply)
        return {};
    constexpr int lost = 2;
    return {reinterpret_cast<const char*>(xcb_xkb_get_device_info_name(reply.get())),
            static_cast<std::size_t>(xcb_xkb_get_device_info_name_length(reply.get()) - lost)};
}

void useXkb(xcb_connection_t* connection) {
    const XAnswer<xcb_xkb_use_extension_reply_t> reply(xcb_xkb_use_extension_reply(
        connection, xcb_xkb_use_extension(connection, XCB_XKB_MAJOR_VERSION, XCB_XKB_MINOR_VERSION), nullptr));
}

XAnswer<xcb_xkb_get_state_reply_t> keyboardState(xcb_connection_t* connection) {
    return XAnswer<xcb_xkb_get_state_reply_t>(
        xcb_xkb_get_state_reply(connection, xcb_xkb_get_state(connection, XCB_XKB_ID_USE_CORE_KBD), nullptr));
}

}  // namespace

FocusedProgram::FocusedProgram(XConnection& poster) : m_poster(poster), m_window(xcb_generate_id(connection())) {
    xcb_create_window(connection(), XCB_COPY_FROM_PARENT, m_window, m_connection->root(), 0, 0, 100, 100, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &keyEvents);
    xcb_map_window(connection(), m_window);
    xcb_set_input_focus(connection(), XCB_INPUT_FOCUS_PARENT, m_window, XCB_CURRENT_TIME);
    m_connection->roundTrip();
}

void FocusedProgram::focusWithin() {
    auto inner = m_window;
    for (int depth = 0; depth < 2; ++depth) {
        const auto outer = std::exchange(inner, xcb_generate_id(connection()));
        xcb_create_window(connection(), XCB_COPY_FROM_PARENT, inner, outer, 0, 0, 10, 10, 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &keyEvents);
        xcb_map_window(connection(), inner);
    }
    xcb_set_input_focus(connection(), XCB_INPUT_FOCUS_PARENT, inner, XCB_CURRENT_TIME);
    m_connection->roundTrip();
}

std::vector<std::string> FocusedProgram::strokes() {
    m_poster.roundTrip();
    std::vector<std::string> strokes;
    const auto listening =
        QObject::connect(m_connection.get(), &XConnection::received, [&](const xcb_generic_event_t& event) {
            const auto& key = reinterpret_cast<const xcb_key_press_event_t&>(event);
            if (event.response_type == XCB_KEY_PRESS)
                strokes.push_back('+' + std::to_string(key.detail) +
                                  (key.state != 0 ? '/' + std::to_string(key.state) : std::string()));
            else if (event.response_type == XCB_KEY_RELEASE)
                strokes.push_back('-' + std::to_string(key.detail));
        });
    m_connection->roundTrip();
    QObject::disconnect(listening);
    return strokes;
}

Hands::Hands() : m_firstEvent(firstEventOf(m_connection->get(), "XInputExtension")) {
    useXkb(m_connection->get());
    for (std::uint8_t device = 2; device < 16 && m_device == 0; ++device)
        if (endOfName(m_connection->get(), device) == "fb keyboard")
            m_device = device;
    EXPECT_NE(m_device, 0);
}

Hands::~Hands() {
    m_connection->roundTrip();
}

void Hands::press(xcb_keycode_t keycode) {
    post(1, keycode);
}

void Hands::release(xcb_keycode_t keycode) {
    post(2, keycode);
}

void Hands::post(int event, xcb_keycode_t keycode) {
    xcb_test_fake_input(m_connection->get(), static_cast<std::uint8_t>(m_firstEvent + event), keycode, XCB_CURRENT_TIME,
                        XCB_NONE, 0, 0, m_device);
    m_connection->roundTrip();
}

KeyboardTest::KeyboardTest(const QStringList& options) : display(options) {
    qputenv("DISPLAY", display.name().toUtf8());
}

void KeyboardTest::SetUp() {
    ASSERT_TRUE(display.isRunning());
    other = XConnection::connected();
    connection = XConnection::connected();
    ASSERT_TRUE(other && connection);
    useXkb(other->get());
    layout.emplace(*connection);
    keyboard.emplace(XKeyboardEvents::Desktop{.connection = *connection, .layout = *layout, .hotKey = hotKey});
}

void KeyboardTest::select(const QStringList& layout) {
    runOnDisplay("setxkbmap", QStringList{"-option", ""} + layout);
    connection->roundTrip();
}

void KeyboardTest::runOnDisplay(const QString& program, const QStringList& arguments) const {
    QProcess process;
    process.setProcessEnvironment(display.environment());
    process.start(program, arguments);
    EXPECT_TRUE(process.waitForFinished(patience) && process.exitCode() == 0)
        << program.toStdString() << process.readAllStandardError().toStdString();
}

void KeyboardTest::selectGroup(std::uint8_t group) {
    xcb_xkb_latch_lock_state(other->get(), XCB_XKB_ID_USE_CORE_KBD, 0, 0, 1, group, 0, 0, 0);
    other->roundTrip();
}

void KeyboardTest::lock(std::uint8_t modifiers) {
    xcb_xkb_latch_lock_state(other->get(), XCB_XKB_ID_USE_CORE_KBD, 0xFF, modifiers, 0, 0, 0, 0, 0);
    other->roundTrip();
}

std::uint8_t KeyboardTest::lockedModifiers() const {
    return keyboardState(other->get())->lockedMods;
}

std::uint8_t KeyboardTest::latchedModifiers() const {
    return keyboardState(other->get())->latchedMods;
}

std::vector<xcb_keysym_t> KeyboardTest::symbols(xcb_keycode_t keycode) const {
    const KeySymbols all(other->get());
    const auto ofKey = all.of(keycode);
    std::vector<xcb_keysym_t> symbols(ofKey.begin(), ofKey.end());
    while (!symbols.empty() && symbols.back() == XCB_NO_SYMBOL)
        symbols.pop_back();
    return symbols;
}

bool KeyboardTest::isDown(xcb_keycode_t keycode) const {
    const XAnswer<xcb_query_keymap_reply_t> keys(
        xcb_query_keymap_reply(other->get(), xcb_query_keymap(other->get()), nullptr));
    return (keys->keys[keycode / 8] & (1U << (keycode % 8))) != 0;
}

bool KeyboardTest::waitUntil(const std::function<bool()>& condition) {
    QElapsedTimer timer;
    timer.start();
    while (!condition()) {
        if (timer.elapsed() > patience)
            return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    }
    return true;
}

void KeyboardTest::passTime(int milliseconds) {
    QElapsedTimer timer;
    timer.start();
    waitUntil([&] { return timer.elapsed() >= milliseconds; });
}
