// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

/// The desktop's clipboard, as far as a secret needs it.
class Clipboard {
public:
    /// The type of a plain text.
    static constexpr std::string_view textType = "text/plain";

    virtual ~Clipboard() = default;

    /// Rises with every change, by any program. Comparable with an earlier reading, and with nothing else.
    [[nodiscard]] virtual std::int64_t changeCount() = 0;

    /// Replaces the content by a text. An empty text is a content like any other. It is what replaces a secret, so it
    /// carries the same hints to clipboard managers, except for the marker types.
    virtual void setText(std::string_view text) = 0;

    /// Replaces the content by a secret, with empty data under each of the marker types, which come before the text's
    /// own type. Further hints that keep a secret out of histories on this desktop are added.
    virtual void setSecret(std::string_view text, std::span<const std::string_view> markerTypes) = 0;

    /// The text that is there now; empty where there is none.
    [[nodiscard]] virtual std::string text() = 0;
};
