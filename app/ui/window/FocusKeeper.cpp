// SPDX-License-Identifier: MIT
#include "app/ui/window/FocusKeeper.h"

#include <QApplication>

FocusKeeper::FocusKeeper(QWidget& screen, std::function<void()> takeFocus)
    : QObject(&screen), m_screen(screen), m_takeFocus(std::move(takeFocus)) {
    connect(qApp, &QApplication::focusChanged, this, &FocusKeeper::follow);
}

/// A control that still shows and can be used was left because the user went elsewhere, or a command did.
void FocusKeeper::follow(QWidget* former) {
    if (former == nullptr || !m_screen.isAncestorOf(former) || (former->isVisible() && former->isEnabled()))
        return;
    // Once all that goes with it has gone, and what comes has come.
    QMetaObject::invokeMethod(this, &FocusKeeper::repair, Qt::QueuedConnection);
}

/// A sheet that has come up meanwhile disables the screen, and has the focus.
void FocusKeeper::repair() {
    if (m_screen.isVisible() && m_screen.isEnabled())
        m_takeFocus();
}
