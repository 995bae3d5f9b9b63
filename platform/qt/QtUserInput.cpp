// SPDX-License-Identifier: MIT
#include "platform/qt/QtUserInput.h"

#include "platform/x11/XIdleTime.h"

#include <QCoreApplication>
#include <QEvent>

#include <algorithm>

namespace {

bool isInput(QEvent::Type type) {
    switch (type) {
        case QEvent::KeyPress:
        case QEvent::KeyRelease:
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonRelease:
        case QEvent::MouseMove:
        case QEvent::Wheel:
        case QEvent::TouchBegin:
        case QEvent::TouchUpdate:
        case QEvent::TabletMove:
        case QEvent::TabletPress:
        case QEvent::InputMethod:
            return true;
        default:
            return false;
    }
}

}  // namespace

QtUserInput::QtUserInput(const XIdleTime* session, QObject* parent)
    : QObject(parent), m_session(session), m_last(std::chrono::steady_clock::now()) {
    QCoreApplication::instance()->installEventFilter(this);
}

std::chrono::nanoseconds QtUserInput::idleTime() const {
    const std::chrono::nanoseconds own = std::chrono::steady_clock::now() - m_last;
    const auto session = m_session != nullptr ? m_session->get() : std::nullopt;
    return session ? std::min<std::chrono::nanoseconds>(own, *session) : own;
}

bool QtUserInput::eventFilter(QObject*, QEvent* event) {
    if (isInput(event->type()))
        m_last = std::chrono::steady_clock::now();
    return false;
}
