// SPDX-License-Identifier: MIT
#pragma once

#include "core/clipboard/Observers.h"

#include <QWidget>

class Announcement;
class AppState;
class Button;
class ClipboardService;
class IconButton;
class TextLabel;

/// The line along the window's bottom: the clipboard's countdown, the last confirmation and failure, and whether there
/// is something to save.
class StatusBar : public QWidget {
    Q_OBJECT

public:
    StatusBar(AppState& state, ClipboardService& clipboard, QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void arrange();
    void connectState();
    void showAll();
    void showError();

    AppState& m_state;
    ClipboardService& m_clipboard;
    Observers::Subscription m_countdown;
    QWidget* m_countdownSymbol;
    TextLabel* m_countdownText;
    Button* m_clearClipboard;
    TextLabel* m_status;
    QWidget* m_errorSymbol;
    QWidget* m_noticeSymbol;
    TextLabel* m_error;
    IconButton* m_dismissError;
    TextLabel* m_unsaved;
    Announcement* m_spokenStatus;
    Announcement* m_spokenError;
};
