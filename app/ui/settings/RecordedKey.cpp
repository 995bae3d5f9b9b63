// SPDX-License-Identifier: MIT
#include "app/ui/settings/RecordedKey.h"

#include "core/platform/HotKeys.h"
#include "core/platform/VirtualKey.h"

#include <QKeyEvent>

#include <algorithm>
#include <array>
#include <utility>

namespace RecordedKey {
namespace {

// X and, after it, Qt on Wayland count from here.
constexpr quint32 firstScanCode = 8;

struct Named {
    int key;
    VirtualKey::Code code;
};

constexpr std::array named{Named{Qt::Key_Return, VirtualKey::enter},  Named{Qt::Key_Enter, VirtualKey::keypadEnter},
                           Named{Qt::Key_Tab, VirtualKey::tab},       Named{Qt::Key_Backtab, VirtualKey::tab},
                           Named{Qt::Key_Space, VirtualKey::space},   Named{Qt::Key_Backspace, VirtualKey::backspace},
                           Named{Qt::Key_Escape, VirtualKey::escape}, Named{Qt::Key_Menu, VirtualKey::menu},
                           Named{Qt::Key_Insert, VirtualKey::insert}, Named{Qt::Key_Delete, VirtualKey::forwardDelete},
                           Named{Qt::Key_Home, VirtualKey::home},     Named{Qt::Key_End, VirtualKey::end},
                           Named{Qt::Key_PageUp, VirtualKey::pageUp}, Named{Qt::Key_PageDown, VirtualKey::pageDown},
                           Named{Qt::Key_Left, VirtualKey::left},     Named{Qt::Key_Right, VirtualKey::right},
                           Named{Qt::Key_Down, VirtualKey::down},     Named{Qt::Key_Up, VirtualKey::up}};

/// By what a US keyboard has there: Qt numbers letters, digits and signs as ASCII does, and function keys in their
/// order.
std::optional<std::uint32_t> codeByName(int key) {
    if (key > 0 && key < 0x7F)
        if (const auto code = VirtualKey::ofUSLabel(static_cast<char>(key)))
            return *code;
    if (key >= Qt::Key_F1 && key <= Qt::Key_F20)
        return VirtualKey::functionKeys[static_cast<std::size_t>(key - Qt::Key_F1)];
    const auto* const found = std::ranges::find(named, key, &Named::key);
    return found == named.end() ? std::nullopt : std::optional<std::uint32_t>(found->code);
}

constexpr std::array modifierKeys{Qt::Key_Shift,      Qt::Key_Control,  Qt::Key_Alt,     Qt::Key_AltGr,
                                  Qt::Key_Meta,       Qt::Key_Super_L,  Qt::Key_Super_R, Qt::Key_Hyper_L,
                                  Qt::Key_Hyper_R,    Qt::Key_CapsLock, Qt::Key_NumLock, Qt::Key_ScrollLock,
                                  Qt::Key_Mode_switch};

constexpr std::array storedModifiers{
    std::pair{Qt::ControlModifier, hotKeyCommand}, std::pair{Qt::AltModifier, hotKeyOption},
    std::pair{Qt::MetaModifier, hotKeyControl}, std::pair{Qt::ShiftModifier, hotKeyShift}};

}  // namespace

std::optional<std::uint32_t> keyCode(const QKeyEvent& event) {
    if (event.nativeScanCode() <= firstScanCode)
        return codeByName(event.key());
    return VirtualKey::ofEvdevCode(event.nativeScanCode() - firstScanCode);
}

std::uint32_t modifiers(const QKeyEvent& event) {
    std::uint32_t stored = 0;
    for (const auto& [held, bit] : storedModifiers)
        if (event.modifiers().testFlag(held))
            stored |= bit;
    return stored;
}

bool isModifier(const QKeyEvent& event) {
    return std::ranges::find(modifierKeys, event.key()) != modifierKeys.end();
}

}  // namespace RecordedKey
