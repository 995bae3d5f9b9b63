// SPDX-License-Identifier: MIT
#include "core/autotype/KeyNames.h"

#include "core/autotype/HotKeyFormatter.h"
#include "core/text/Text.h"

#include <algorithm>
#include <array>
#include <limits>
#include <optional>

namespace KeyNames {

namespace {

struct Modifier {
    HotKeyModifier stored;
    std::string_view sign;
    std::string_view name;
};

// In the order in which the desktop's menus write them.
constexpr std::array modifiers{Modifier{hotKeyControl, "⌃", "Super"}, Modifier{hotKeyCommand, "⌘", "Ctrl"},
                               Modifier{hotKeyOption, "⌥", "Alt"}, Modifier{hotKeyShift, "⇧", "Shift"}};

struct KeyName {
    std::uint32_t code;
    std::string_view name;
};

// What no layout changes.
constexpr std::array keyNames{
    KeyName{36, "Enter"},      KeyName{48, "Tab"},       KeyName{49, "Boşluk"},    KeyName{51, "Backspace"},
    KeyName{53, "Esc"},        KeyName{64, "F17"},       KeyName{65, "Sayısal ."}, KeyName{67, "Sayısal *"},
    KeyName{69, "Sayısal +"},  KeyName{71, "Num Lock"},  KeyName{75, "Sayısal /"}, KeyName{76, "Sayısal Enter"},
    KeyName{78, "Sayısal -"},  KeyName{79, "F18"},       KeyName{80, "F19"},       KeyName{81, "Sayısal ="},
    KeyName{82, "Sayısal 0"},  KeyName{83, "Sayısal 1"}, KeyName{84, "Sayısal 2"}, KeyName{85, "Sayısal 3"},
    KeyName{86, "Sayısal 4"},  KeyName{87, "Sayısal 5"}, KeyName{88, "Sayısal 6"}, KeyName{89, "Sayısal 7"},
    KeyName{90, "F20"},        KeyName{91, "Sayısal 8"}, KeyName{92, "Sayısal 9"}, KeyName{96, "F5"},
    KeyName{97, "F6"},         KeyName{98, "F7"},        KeyName{99, "F3"},        KeyName{100, "F8"},
    KeyName{101, "F9"},        KeyName{103, "F11"},      KeyName{105, "F13"},      KeyName{106, "F16"},
    KeyName{107, "F14"},       KeyName{109, "F10"},      KeyName{110, "Menü"},     KeyName{111, "F12"},
    KeyName{113, "F15"},       KeyName{114, "Insert"},   KeyName{115, "Home"},     KeyName{116, "Page Up"},
    KeyName{117, "Delete"},    KeyName{118, "F4"},       KeyName{119, "End"},      KeyName{120, "F2"},
    KeyName{121, "Page Down"}, KeyName{122, "F1"},       KeyName{123, "Sol"},      KeyName{124, "Sağ"},
    KeyName{125, "Aşağı"},     KeyName{126, "Yukarı"}};

bool isPrintable(std::string_view text) {
    return !text.empty() && std::ranges::none_of(text, [](char byte) {
        const auto value = static_cast<unsigned char>(byte);
        return value < 0x20 || value == 0x7F;
    });
}

bool areCases(std::string_view small, std::string_view capital) {
    return Text::lowercased(capital) == small || (small == "i" && capital == "İ") || (small == "ı" && capital == "I");
}

// What is printed on the key: its capital letter, which under a Turkish layout is another one for "i".
std::string labelOf(std::uint16_t code, KeyboardLayout& layout) {
    const auto plain = layout.translate(code, KeyboardLayout::Modifiers::none);
    if (!isPrintable(plain))
        return {};
    const auto shifted = layout.translate(code, KeyboardLayout::Modifiers::shift);
    if (isPrintable(shifted) && areCases(plain, shifted))
        return shifted;
    const auto capital = Text::uppercased(plain);
    return Text::characterCount(capital) == 1 ? capital : plain;
}

std::string nameOf(std::uint32_t code, KeyboardLayout& layout) {
    if (const auto* const named = std::ranges::find(keyNames, code, &KeyName::code); named != keyNames.end())
        return std::string(named->name);
    if (code <= std::numeric_limits<std::uint16_t>::max() && layout.isAvailable())
        if (auto label = labelOf(static_cast<std::uint16_t>(code), layout); !label.empty())
            return label;
    return HotKeyFormatter::describe({.keyCode = code, .modifiers = 0});
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
        found.begin = std::min(found.begin, text.find(modifier.sign));
    if (found.begin == text.size())
        return std::nullopt;
    auto rest = text.substr(found.begin);
    const auto isSign = [&](const Modifier& modifier) { return rest.starts_with(modifier.sign); };
    for (const auto* sign = std::ranges::find_if(modifiers, isSign); sign != modifiers.end();
         sign = std::ranges::find_if(modifiers, isSign)) {
        found.modifiers |= sign->stored;
        rest.remove_prefix(sign->sign.size());
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
