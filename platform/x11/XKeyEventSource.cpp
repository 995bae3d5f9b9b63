// SPDX-License-Identifier: MIT
#include "platform/x11/XKeyEventSource.h"

#include "core/text/Text.h"
#include "core/text/TextUTF8.h"
#include "platform/x11/XKeycode.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>

namespace {

// Programs ignore these characters, and want the key.
bool isLineEnd(std::string_view text) {
    return text == "\n" || text == "\r\n" || text == "\r";
}

/// Calls `work` for each code point.
template <class Work>
void forEachCodePoint(std::string_view text, Work&& work) {
    for (std::size_t offset = 0; offset < text.size();) {
        const auto scalar = TextUTF8::next(text, offset);
        work(scalar.value);
        offset += scalar.length;
    }
}

std::uint64_t flagOfCode(std::uint16_t code) {
    const auto* const modifier = std::ranges::find(modifierKeys, code, &ModifierKey::code);
    return modifier == modifierKeys.end() ? 0 : modifier->flag;
}

}  // namespace

XKeyEventSource::XKeyEventSource(Desktop desktop, const DesktopWindow& window)
    : m_desktop(desktop),
      m_window(desktop.connection, window),
      m_locksOff(desktop.connection),
      m_modifiers(desktop.layout, desktop.posted) {}

XKeyEventSource::~XKeyEventSource() {
    m_desktop.posted.releaseAll();
    m_desktop.spareKeys.expectNothing();
}

void XKeyEventSource::expect(std::string_view characters) {
    SpareKeys::Characters codePoints;
    for (const auto character : Text::characters(characters))
        if (!isLineEnd(character))
            forEachCodePoint(character, [&](char32_t codePoint) { codePoints.push_back(codePoint); });
    m_desktop.spareKeys.expect(codePoints);
}

KeyEventSource::Posted XKeyEventSource::post(std::span<const KeyEvent> events) {
    if (!m_desktop.connection.isOpen() ||
        !std::ranges::all_of(events, [this](const KeyEvent& event) { return canPost(event); }))
        return Posted::impossible;
    if (std::ranges::all_of(events, [](const KeyEvent& event) { return event.text.empty(); }))
        return postKeys(events);
    for (const auto& event : events) {
        if (event.text.empty()) {
            if (const auto posted = postKeys({&event, 1}); posted != Posted::yes)
                return posted;
        } else if (event.down && !strike(event.text)) {  // the code points of a character are struck one by one
            return Posted::elsewhere;
        }
    }
    return Posted::yes;
}

KeyEventSource::Posted XKeyEventSource::postKeys(std::span<const KeyEvent> events) {
    const auto post = [&] {
        for (const auto& event : events)
            postEvent(event);
    };
    if (std::ranges::any_of(events, &KeyEvent::down))
        return m_window.perform(post) ? Posted::yes : Posted::elsewhere;
    post();
    return Posted::yes;
}

void XKeyEventSource::postEvent(const KeyEvent& event) {
    if (event.kind == KeyEvent::Kind::flagsChanged)
        postModifier(event);
    else
        postKey(event);
}

bool XKeyEventSource::canPost(const KeyEvent& event) {
    if (!event.text.empty())
        return canStrike(event.text);
    if (event.kind == KeyEvent::Kind::flagsChanged) {
        const auto flag = flagOfCode(event.code);
        return flag != 0 && (!event.down || m_modifiers.canHold(flag));
    }
    const auto keycode = XKeycode::of(event.code);
    return keycode && m_desktop.connection.hasKey(*keycode) && m_modifiers.canHold(event.flags);
}

bool XKeyEventSource::canStrike(std::string_view text) {
    if (isLineEnd(text))
        return true;
    bool canStand = true;
    forEachCodePoint(text, [&](char32_t character) { canStand = canStand && SpareKeys::canStandFor(character); });
    return canStand && m_desktop.spareKeys.areThere();
}

void XKeyEventSource::postModifier(const KeyEvent& event) {
    const auto flag = flagOfCode(event.code);
    if (event.down)
        m_modifiers.press(flag);
    else
        m_modifiers.release(flag);
}

void XKeyEventSource::postKey(const KeyEvent& event) {
    const auto keycode = *XKeycode::of(event.code);
    if (event.down) {
        m_heldForStroke |= m_modifiers.press(event.flags);
        m_desktop.posted.press(keycode);
        return;
    }
    m_desktop.posted.release(keycode);
    m_modifiers.release(std::exchange(m_heldForStroke, 0));
}

// Lending a key takes time. Only the stroke itself keeps the server's other clients waiting.
bool XKeyEventSource::strike(std::string_view text) {
    if (isLineEnd(text))
        return strike(*XKeycode::of(VirtualKey::enter));
    bool isStruck = true;
    forEachCodePoint(text, [&](char32_t character) {
        if (!isStruck)
            return;
        if (const auto keycode = m_desktop.spareKeys.lendTo(character))
            isStruck = strike(*keycode);
    });
    return isStruck;
}

bool XKeyEventSource::strike(xcb_keycode_t keycode) {
    return m_window.perform([&] {
        m_desktop.posted.press(keycode);
        m_desktop.posted.release(keycode);
    });
}
