// SPDX-License-Identifier: MIT
#pragma once

#include <QPointer>
#include <QWidget>

/// The ring of light around the control that has the keyboard: one for the whole application, wherever the focus is.
/// Fields always show it; buttons and the like only once the keyboard is used, as the pointer shows where it is by
/// itself.
class FocusRing : public QWidget {
    Q_OBJECT

public:
    /// Follows the application's focus from now on. `owner` is any object that lives as long.
    static void install(QObject* owner);

    /// Draws the ring around a part of a widget, as around the switch at the end of a line, with its corners.
    static void setArea(QWidget* widget, const QRect& area, int radius);

protected:
    void paintEvent(QPaintEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    FocusRing();
    void follow(QWidget* widget);
    void place();

    QPointer<QWidget> m_target;
    bool m_isKeyboardUsed = false;
};
