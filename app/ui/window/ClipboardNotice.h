// SPDX-License-Identifier: MIT
#pragma once

#include "core/clipboard/Observers.h"

#include <QWidget>

class AppState;
class Announcement;
class ClipboardService;
class TextLabel;

/// What the status bar says of the clipboard, for the lock card, which has no status bar: that a secret was copied
/// there, and when it will be gone. A panel at the foot of its parent for as long as the countdown runs.
class ClipboardNotice : public QWidget {
    Q_OBJECT

public:
    ClipboardNotice(AppState& state, ClipboardService& clipboard, QWidget* parent);

protected:
    void paintEvent(QPaintEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void showCountdown();
    void place();

    AppState& m_state;
    ClipboardService& m_clipboard;
    TextLabel* m_text;
    Announcement* m_spoken;
    Observers::Subscription m_countdown;
};
