// SPDX-License-Identifier: MIT
#include "core/autotype/AutoTypeAction.h"

#include "core/text/Text.h"

namespace {

struct NamedKey {
    std::string_view name;
    std::uint16_t code;
};

// In the order of the enumeration.
constexpr std::array<NamedKey, allAutoTypeKeys.size()> namedKeys{{{"tab", 48},
                                                                  {"enter", 36},
                                                                  {"escape", 53},
                                                                  {"space", 49},
                                                                  {"backspace", 51},
                                                                  {"delete", 117},
                                                                  {"home", 115},
                                                                  {"end", 119},
                                                                  {"up", 126},
                                                                  {"down", 125},
                                                                  {"left", 123},
                                                                  {"right", 124}}};

const NamedKey& named(AutoTypeKey key) noexcept {
    return namedKeys[static_cast<std::size_t>(key)];
}

}  // namespace

std::string_view textValue(AutoTypeKey key) noexcept {
    return named(key).name;
}

std::uint16_t keyCode(AutoTypeKey key) noexcept {
    return named(key).code;
}

bool operator==(const AutoTypeAction::Text& a, const AutoTypeAction::Text& b) {
    return Text::equal(a.view(), b.view());
}
