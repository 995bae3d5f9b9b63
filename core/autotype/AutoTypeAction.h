// SPDX-License-Identifier: MIT
#pragma once

#include "core/platform/VirtualKey.h"
#include "core/primitives/Bytes.h"

#include <cstdint>
#include <string_view>
#include <utility>
#include <variant>

/// The keys that a sequence can name. `forwardDelete` is the one that sequences call DELETE.
enum class AutoTypeKey : std::uint8_t {
    tab,
    enter,
    escape,
    space,
    backspace,
    forwardDelete,
    home,
    end,
    up,
    down,
    left,
    right
};

[[nodiscard]] VirtualKey::Code keyCode(AutoTypeKey key) noexcept;

/// One thing to do in the application that is typed into.
struct AutoTypeAction {
    /// Characters to type. They may be a password, so they lie in a buffer that is wiped.
    class Text {
    public:
        explicit Text(std::string_view text) : m_bytes(copyOf(bytesOf(text))) {}
        explicit Text(Bytes bytes) : m_bytes(std::move(bytes)) {}

        [[nodiscard]] std::string_view view() const noexcept { return textOf(m_bytes); }

        /// Canonical equivalence.
        friend bool operator==(const Text& a, const Text& b);

    private:
        Bytes m_bytes;
    };
    /// One named key, without modifiers.
    struct Key {
        AutoTypeKey key;
        bool operator==(const Key&) const = default;
    };
    struct Delay {
        std::int64_t milliseconds;  // 0 or more
        bool operator==(const Delay&) const = default;
    };
    /// Empties the text field that has the focus.
    struct ClearField {
        bool operator==(const ClearField&) const = default;
    };
    using Case = std::variant<Text, Key, Delay, ClearField>;

    Case action;

    static AutoTypeAction text(std::string_view text) { return {Text(text)}; }
    static AutoTypeAction key(AutoTypeKey key) { return {Key{key}}; }
    static AutoTypeAction delay(std::int64_t milliseconds) { return {Delay{milliseconds}}; }
    static AutoTypeAction clearField() { return {ClearField{}}; }

    friend bool operator==(const AutoTypeAction&, const AutoTypeAction&) = default;
};
