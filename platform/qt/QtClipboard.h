// SPDX-License-Identifier: MIT
#pragma once

#include "core/platform/Clipboard.h"

#include <functional>

class QClipboard;

/// The clipboard of the desktop that Qt runs on.
class QtClipboard final : public Clipboard {
public:
    /// What counts the clipboard's changes. It must be exact at the moment of the call, which Qt's own signals are not
    /// where another program writes.
    using ChangeCounter = std::function<std::int64_t()>;

    /// `clipboard` outlives this.
    QtClipboard(QClipboard& clipboard, ChangeCounter changeCounter);

    [[nodiscard]] std::int64_t changeCount() override { return m_changeCounter(); }
    void setText(std::string_view text) override;
    void setSecret(std::string_view text, std::span<const std::string_view> markerTypes) override;
    [[nodiscard]] std::string text() override;

private:
    QClipboard& m_clipboard;
    ChangeCounter m_changeCounter;
};
