// SPDX-License-Identifier: MIT
#pragma once

#include "core/platform/KeyboardEvents.h"

#include <cstdint>

/// Modifier keys that are held down around a stroke, with events of their own: some applications look at these and not
/// at the flags of the stroke. The keys are released on every path: a modifier that stays down would turn all that the
/// user types next into commands.
class PressedModifiers {
public:
    /// Holds nothing yet. The source outlives it.
    PressedModifiers(KeyEventSource& source, std::uint64_t flags) noexcept : m_source(source), m_flags(flags) {}
    PressedModifiers(const PressedModifiers&) = delete;
    PressedModifiers& operator=(const PressedModifiers&) = delete;

    /// Releases all keys in the reverse order, those too that `press` did not reach. One that cannot be released is
    /// skipped.
    ~PressedModifiers();

    /// Presses the keys in the order Shift, Control, Option, Command, until one of them cannot be posted. The result
    /// says why; the keys before it stay pressed.
    [[nodiscard]] KeyEventSource::Posted press();

    /// Whether the flags ask for any key at all.
    [[nodiscard]] static bool areIn(std::uint64_t flags) noexcept { return (flags & KeyFlag::all) != 0; }

private:
    KeyEventSource& m_source;
    std::uint64_t m_flags;     // which keys
    std::uint64_t m_held = 0;  // of these, what is down
};
