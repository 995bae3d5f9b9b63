// SPDX-License-Identifier: MIT
#include "core/autotype/PressedModifiers.h"

#include <array>

namespace {

KeyEventSource::Posted postChange(KeyEventSource& source, std::uint16_t code, bool down, std::uint64_t held) {
    const std::array events{
        KeyEvent{.kind = KeyEvent::Kind::flagsChanged, .code = code, .down = down, .flags = held, .text = {}}};
    return source.post(events);
}

}  // namespace

PressedModifiers::~PressedModifiers() {
    for (auto modifier = modifierKeys.rbegin(); modifier != modifierKeys.rend(); ++modifier) {
        if ((m_flags & modifier->flag) == 0)
            continue;
        m_held &= ~modifier->flag;
        static_cast<void>(postChange(m_source, modifier->code, false, m_held));  // the next must come up all the same
    }
}

KeyEventSource::Posted PressedModifiers::press() {
    using Posted = KeyEventSource::Posted;
    for (const auto& [flag, code] : modifierKeys) {
        if ((m_flags & flag) == 0)
            continue;
        if (const auto posted = postChange(m_source, code, true, m_held | flag); posted != Posted::yes)
            return posted;
        m_held |= flag;
    }
    return Posted::yes;
}
