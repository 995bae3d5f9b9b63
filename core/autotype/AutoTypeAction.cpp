// SPDX-License-Identifier: MIT
#include "core/autotype/AutoTypeAction.h"

#include "core/text/Text.h"

#include <array>

VirtualKey::Code keyCode(AutoTypeKey key) noexcept {
    using namespace VirtualKey;
    // In the order of the enumeration.
    constexpr std::array codes{tab, enter, escape, space, backspace, forwardDelete, home, end, up, down, left, right};
    return codes[static_cast<std::size_t>(key)];
}

bool operator==(const AutoTypeAction::Text& a, const AutoTypeAction::Text& b) {
    return Text::equal(a.view(), b.view());
}
