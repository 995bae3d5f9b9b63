// SPDX-License-Identifier: MIT
#pragma once

#include "core/platform/Clipboard.h"

#include <string>
#include <vector>

/// A clipboard in memory, which another program can write to as well.
class FakeClipboard final : public Clipboard {
public:
    [[nodiscard]] std::int64_t changeCount() override { return m_changeCount; }

    void setText(std::string_view text) override { replace(text, {}); }

    void setSecret(std::string_view text, std::span<const std::string_view> markerTypes) override {
        replace(text, markerTypes);
    }

    [[nodiscard]] std::string text() override { return m_text; }

    /// The types of what is there, in order; none before the first text.
    [[nodiscard]] const std::vector<std::string>& types() const { return m_types; }

    void writeAsAnotherProgram(std::string_view text) { replace(text, {}); }

private:
    void replace(std::string_view text, std::span<const std::string_view> markerTypes) {
        ++m_changeCount;
        m_text = text;
        m_types.assign(markerTypes.begin(), markerTypes.end());
        m_types.emplace_back(textType);
    }

    std::int64_t m_changeCount = 0;
    std::string m_text;
    std::vector<std::string> m_types;
};
