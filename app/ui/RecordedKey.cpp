// SPDX-License-Identifier: MIT
#include "app/ui/RecordedKey.h"

#include "core/autotype/KeyCodes.h"
#include "core/platform/HotKeys.h"

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
    std::uint32_t code;
};

// The US layout.
constexpr std::array named{Named{Qt::Key_A, 0},          Named{Qt::Key_S, 1},          Named{Qt::Key_D, 2},
                           Named{Qt::Key_F, 3},          Named{Qt::Key_H, 4},          Named{Qt::Key_G, 5},
                           Named{Qt::Key_Z, 6},          Named{Qt::Key_X, 7},          Named{Qt::Key_C, 8},
                           Named{Qt::Key_V, 9},          Named{Qt::Key_B, 11},         Named{Qt::Key_Q, 12},
                           Named{Qt::Key_W, 13},         Named{Qt::Key_E, 14},         Named{Qt::Key_R, 15},
                           Named{Qt::Key_Y, 16},         Named{Qt::Key_T, 17},         Named{Qt::Key_1, 18},
                           Named{Qt::Key_2, 19},         Named{Qt::Key_3, 20},         Named{Qt::Key_4, 21},
                           Named{Qt::Key_6, 22},         Named{Qt::Key_5, 23},         Named{Qt::Key_Equal, 24},
                           Named{Qt::Key_9, 25},         Named{Qt::Key_7, 26},         Named{Qt::Key_Minus, 27},
                           Named{Qt::Key_8, 28},         Named{Qt::Key_0, 29},         Named{Qt::Key_BracketRight, 30},
                           Named{Qt::Key_O, 31},         Named{Qt::Key_U, 32},         Named{Qt::Key_BracketLeft, 33},
                           Named{Qt::Key_I, 34},         Named{Qt::Key_P, 35},         Named{Qt::Key_Return, 36},
                           Named{Qt::Key_L, 37},         Named{Qt::Key_J, 38},         Named{Qt::Key_Apostrophe, 39},
                           Named{Qt::Key_K, 40},         Named{Qt::Key_Semicolon, 41}, Named{Qt::Key_Backslash, 42},
                           Named{Qt::Key_Comma, 43},     Named{Qt::Key_Slash, 44},     Named{Qt::Key_N, 45},
                           Named{Qt::Key_M, 46},         Named{Qt::Key_Period, 47},    Named{Qt::Key_Tab, 48},
                           Named{Qt::Key_Backtab, 48},   Named{Qt::Key_Space, 49},     Named{Qt::Key_QuoteLeft, 50},
                           Named{Qt::Key_Backspace, 51}, Named{Qt::Key_Escape, 53},    Named{Qt::Key_Enter, 76},
                           Named{Qt::Key_F17, 64},       Named{Qt::Key_F18, 79},       Named{Qt::Key_F19, 80},
                           Named{Qt::Key_F20, 90},       Named{Qt::Key_F5, 96},        Named{Qt::Key_F6, 97},
                           Named{Qt::Key_F7, 98},        Named{Qt::Key_F3, 99},        Named{Qt::Key_F8, 100},
                           Named{Qt::Key_F9, 101},       Named{Qt::Key_F11, 103},      Named{Qt::Key_F13, 105},
                           Named{Qt::Key_F16, 106},      Named{Qt::Key_F14, 107},      Named{Qt::Key_F10, 109},
                           Named{Qt::Key_Menu, 110},     Named{Qt::Key_F12, 111},      Named{Qt::Key_F15, 113},
                           Named{Qt::Key_Insert, 114},   Named{Qt::Key_Home, 115},     Named{Qt::Key_PageUp, 116},
                           Named{Qt::Key_Delete, 117},   Named{Qt::Key_F4, 118},       Named{Qt::Key_End, 119},
                           Named{Qt::Key_F2, 120},       Named{Qt::Key_PageDown, 121}, Named{Qt::Key_F1, 122},
                           Named{Qt::Key_Left, 123},     Named{Qt::Key_Right, 124},    Named{Qt::Key_Down, 125},
                           Named{Qt::Key_Up, 126}};

constexpr std::array modifierKeys{Qt::Key_Shift,      Qt::Key_Control,  Qt::Key_Alt,     Qt::Key_AltGr,
                                  Qt::Key_Meta,       Qt::Key_Super_L,  Qt::Key_Super_R, Qt::Key_Hyper_L,
                                  Qt::Key_Hyper_R,    Qt::Key_CapsLock, Qt::Key_NumLock, Qt::Key_ScrollLock,
                                  Qt::Key_Mode_switch};

constexpr std::array storedModifiers{
    std::pair{Qt::ControlModifier, hotKeyCommand}, std::pair{Qt::AltModifier, hotKeyOption},
    std::pair{Qt::MetaModifier, hotKeyControl}, std::pair{Qt::ShiftModifier, hotKeyShift}};

}  // namespace

std::optional<std::uint32_t> keyCode(const QKeyEvent& event) {
    if (event.nativeScanCode() > firstScanCode) {
        const auto code = KeyCodes::keyCode(event.nativeScanCode() - firstScanCode);
        return code ? std::optional<std::uint32_t>(*code) : std::nullopt;
    }
    const auto* const found = std::ranges::find(named, event.key(), &Named::key);
    return found == named.end() ? std::nullopt : std::optional(found->code);
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
