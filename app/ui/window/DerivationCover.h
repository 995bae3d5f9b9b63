// SPDX-License-Identifier: MIT
#pragma once

#include "app/ui/window/DisabledOthers.h"

#include <QObject>
#include <QWidget>

class AppState;
class QTimer;
class SheetHost;

/// Covers the window while a key is derived: what lies below would take input for a session that
/// is in the middle of a step. Input is dropped, not kept for later. What takes longer than half a second is shown: on
/// the lock card by itself, above an open vault on a sheet of its own. Escape gives the derivation up.
class DerivationCover : public QObject {
    Q_OBJECT

public:
    /// Over `window`, of which the menu bar stays open for the commands that may be given meanwhile.
    DerivationCover(AppState& state, QWidget& window);

    /// Whether the window stays for now although the user closes it: a save is to end first. The window is closed after
    /// it, unless something is left unsaved. Who closes it twice does not wait.
    [[nodiscard]] bool putsOffClose();

signals:
    /// It is time to show the derivation, or the end of what was shown.
    void shownChanged(bool isShown);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void follow();
    void begin();
    void end();
    void show();
    void showSheet();
    [[nodiscard]] bool isUnderCover(const QObject* object) const;

    AppState& m_state;
    QWidget& m_window;
    SheetHost* m_host;
    QTimer* m_delay;
    DisabledOthers m_others;
    bool m_isShown = false;
    bool m_isCloseWanted = false;
    bool m_isPressDropped = false;
};
