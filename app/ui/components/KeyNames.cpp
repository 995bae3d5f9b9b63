// SPDX-License-Identifier: MIT
#include "app/ui/components/KeyNames.h"

#include "app/state/HotKeyFormatter.h"
#include "core/autotype/KeyLabels.h"
#include "core/text/Text.h"

#include <algorithm>
#include <array>
#include <optional>

namespace KeyNames {

namespace {

struct Modifier {
    HotKeyModifier stored;
    std::string_view name;
};

// In the order in which the desktop's menus write them.
constexpr std::array modifiers{Modifier{hotKeyControl, "Super"}, Modifier{hotKeyCommand, "Ctrl"},
                               Modifier{hotKeyOption, "Alt"}, Modifier{hotKeyShift, "Shift"}};

struct KeyName {
    VirtualKey::Code code;
    std::string_view name;
};

// What no layout changes.
constexpr std::array keyNames{KeyName{VirtualKey::enter, "Enter"},
                              KeyName{VirtualKey::tab, "Tab"},
                              KeyName{VirtualKey::space, "Boşluk"},
                              KeyName{VirtualKey::backspace, "Backspace"},
                              KeyName{VirtualKey::escape, "Esc"},
                              KeyName{VirtualKey::keypadDecimal, "Sayısal ."},
                              KeyName{VirtualKey::keypadMultiply, "Sayısal *"},
                              KeyName{VirtualKey::keypadPlus, "Sayısal +"},
                              KeyName{VirtualKey::keypadClear, "Num Lock"},
                              KeyName{VirtualKey::keypadDivide, "Sayısal /"},
                              KeyName{VirtualKey::keypadEnter, "Sayısal Enter"},
                              KeyName{VirtualKey::keypadMinus, "Sayısal -"},
                              KeyName{VirtualKey::keypadEqual, "Sayısal ="},
                              KeyName{VirtualKey::keypad0, "Sayısal 0"},
                              KeyName{VirtualKey::keypad1, "Sayısal 1"},
                              KeyName{VirtualKey::keypad2, "Sayısal 2"},
                              KeyName{VirtualKey::keypad3, "Sayısal 3"},
                              KeyName{VirtualKey::keypad4, "Sayısal 4"},
                              KeyName{VirtualKey::keypad5, "Sayısal 5"},
                              KeyName{VirtualKey::keypad6, "Sayısal 6"},
                              KeyName{VirtualKey::keypad7, "Sayısal 7"},
                              KeyName{VirtualKey::keypad8, "Sayısal 8"},
                              KeyName{VirtualKey::keypad9, "Sayısal 9"},
                              KeyName{VirtualKey::menu, "Menü"},
                              KeyName{VirtualKey::insert, "Insert"},
                              KeyName{VirtualKey::home, "Home"},
                              KeyName{VirtualKey::pageUp, "Page Up"},
                              KeyName{VirtualKey::forwardDelete, "Delete"},
                              KeyName{VirtualKey::end, "End"},
                              KeyName{VirtualKey::pageDown, "Page Down"},
                              KeyName{VirtualKey::left, "Sol"},
                              KeyName{VirtualKey::right, "Sağ"},
                              KeyName{VirtualKey::down, "Aşağı"},
                              KeyName{VirtualKey::up, "Yukarı"}};

bool areCases(std::string_view small, std::string_view capital) {
    return Text::lowercased(capital) == small || (small == "i" && capital == "İ") || (small == "ı" && capital == "I");
}

// What is printed on the key: its capital letter, which under a Turkish layout is another one for "i".
std::string labelOf(std::uint32_t code, KeyboardLayout& layout) {
    auto plain = KeyLabels::under(layout, code);
    auto shifted = KeyLabels::under(layout, code, KeyboardLayout::Modifiers::shift);
    if (!shifted.empty() && areCases(plain, shifted))
        return shifted;
    auto capital = Text::uppercased(plain);
    return Text::characterCount(capital) == 1 ? capital : plain;
}

std::string nameOf(std::uint32_t code, KeyboardLayout& layout) {
    if (const auto number = VirtualKey::functionNumber(code))
        return "F" + std::to_string(*number);
    if (const auto* const named = std::ranges::find(keyNames, code, &KeyName::code); named != keyNames.end())
        return std::string(named->name);
    auto label = labelOf(code, layout);
    return label.empty() ? HotKeyFormatter::describe({.keyCode = code, .modifiers = 0}) : label;
}

std::string combination(std::uint32_t held, std::string_view key) {
    std::string text;
    for (const auto& modifier : modifiers)
        if ((held & modifier.stored) != 0)
            text.append(modifier.name) += '+';
    return text.append(key);
}

/// Where a text has signs and a key after them.
struct Signs {
    std::size_t begin;
    std::size_t end;
    std::uint32_t modifiers;
    std::string_view key;
};

std::optional<Signs> find(std::string_view text) {
    Signs found{.begin = text.size(), .end = 0, .modifiers = 0, .key = {}};
    for (const auto& modifier : modifiers)
        found.begin = std::min(found.begin, text.find(KeyLabels::signOf(modifier.stored)));
    if (found.begin == text.size())
        return std::nullopt;
    auto rest = text.substr(found.begin);
    const auto isSign = [&](const Modifier& modifier) { return rest.starts_with(KeyLabels::signOf(modifier.stored)); };
    for (const auto* sign = std::ranges::find_if(modifiers, isSign); sign != modifiers.end();
         sign = std::ranges::find_if(modifiers, isSign)) {
        found.modifiers |= sign->stored;
        rest.remove_prefix(KeyLabels::signOf(sign->stored).size());
    }
    found.key = rest.substr(0, rest.find_first_of(") "));
    found.end = text.size() - rest.size() + found.key.size();
    return found;
}

}  // namespace

std::string describe(const HotKey& hotKey, KeyboardLayout& layout) {
    return combination(hotKey.modifiers, nameOf(hotKey.keyCode, layout));
}

std::string ofSigns(std::string_view text) {
    const auto signs = find(text);
    return signs ? combination(signs->modifiers, signs->key) : std::string();
}

std::string withoutSigns(std::string_view text, std::string_view words) {
    const auto signs = find(text);
    if (!signs)
        return std::string(text);
    return std::string(text.substr(0, signs->begin)).append(words).append(text.substr(signs->end));
}

}  // namespace KeyNames
