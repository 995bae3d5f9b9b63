// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

/// The desktop's clipboard, as far as a secret needs it.
class Clipboard {
public:
    /// The type under which a text stands.
    static constexpr std::string_view textType = "text/plain";

    virtual ~Clipboard() = default;

    /// Rises with every change, whoever makes it. Comparable with an earlier reading, and with nothing else.
    [[nodiscard]] virtual std::int64_t changeCount() = 0;

    /// Replaces what is there by a text. The empty text is a content like any other: the clipboard then holds it. As it
    /// is what takes a secret's place, it comes with what keeps that out of histories, marker types apart.
    virtual void setText(std::string_view text) = 0;

    /// The same, with empty data under each of the marker types, which come before the text's own. What else this
    /// desktop knows to keep a secret out of histories is added.
    virtual void setSecret(std::string_view text, std::span<const std::string_view> markerTypes) = 0;

    /// The text that is there now; empty where there is none.
    [[nodiscard]] virtual std::string text() = 0;
};
