// SPDX-License-Identifier: MIT
#include "core/autotype/PressedModifiers.h"

#include "core/autotype/AutoTypeError.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace {

bool postChange(KeyEventSource& source, std::uint16_t code, bool down, std::uint64_t held) {
    const std::array events{
        KeyEvent{.kind = KeyEvent::Kind::flagsChanged, .code = code, .down = down, .flags = held, .text = {}}};
    return source.post(events);
}

}  // namespace

// In the order in which they are pressed.
const PressedModifiers::Modifier PressedModifiers::all[4]{
    {KeyFlag::shift, 56}, {KeyFlag::control, 59}, {KeyFlag::option, 58}, {KeyFlag::command, 55}};

PressedModifiers::PressedModifiers(KeyEventSource& source, std::uint64_t flags) : m_source(source) {
    std::ranges::copy_if(all, std::back_inserter(m_modifiers),
                         [flags](const Modifier& modifier) { return (flags & modifier.flag) != 0; });
}

PressedModifiers::~PressedModifiers() {
    for (auto modifier = m_modifiers.rbegin(); modifier != m_modifiers.rend(); ++modifier) {
        m_held &= ~modifier->flag;
        static_cast<void>(
            postChange(m_source, modifier->code, false, m_held));  // the next one must come up all the same
    }
}

void PressedModifiers::press() {
    for (const auto& modifier : m_modifiers) {
        if (!postChange(m_source, modifier.code, true, m_held | modifier.flag))
            throw AutoTypeError::eventCreationFailed();
        m_held |= modifier.flag;
    }
}

bool PressedModifiers::areIn(std::uint64_t flags) noexcept {
    return (flags & KeyFlag::all) != 0;
}
