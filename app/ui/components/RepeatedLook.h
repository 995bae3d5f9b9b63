// SPDX-License-Identifier: MIT
#pragma once

#include <QEvent>
#include <QTimer>
#include <QWidget>

#include <chrono>
#include <functional>
#include <utility>

/// Looks at what reports no change of its own: once when its parent is shown, and then again and again until it is
/// hidden.
class RepeatedLook final : public QTimer {
public:
    RepeatedLook(QWidget* parent, std::chrono::milliseconds interval, std::function<void()> look)
        : QTimer(parent), m_look(std::move(look)) {
        setInterval(interval);
        callOnTimeout(this, m_look);
        parent->installEventFilter(this);
    }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Show) {
            m_look();
            start();
        } else if (event->type() == QEvent::Hide) {
            stop();
        }
        return QTimer::eventFilter(watched, event);
    }

private:
    std::function<void()> m_look;
};
