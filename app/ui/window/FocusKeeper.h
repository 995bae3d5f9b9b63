// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

#include <functional>

class QWidget;

/// Sees to it that the keys always do something on a screen. When the control that has the focus goes or is disabled,
/// Qt gives the focus to whatever comes next in its chain, such as a label or the button that locks the vault, or to
/// nothing at all.
class FocusKeeper : public QObject {
    Q_OBJECT

public:
    /// `takeFocus` gives it to what the user would expect to have it; both belong to `screen`.
    FocusKeeper(QWidget& screen, std::function<void()> takeFocus);

private:
    void follow(QWidget* former);
    void repair();

    QWidget& m_screen;
    std::function<void()> m_takeFocus;
};
