// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QCoreApplication>
#include <QLabel>
#include <QLineEdit>
#include <QTest>
#include <QWidget>

/// What a user finds in a window: by the names that he reads or hears, and only what shows.
namespace WindowProbe {

/// The shown widget of a kind with that accessible name or text; none where there is none.
template <class Widget>
Widget* find(const QWidget& window, const QString& name) {
    QCoreApplication::processEvents();  // a new widget shows with its parent's next layout
    for (auto* const widget : window.findChildren<Widget*>()) {
        if (!widget->isVisibleTo(&window))
            continue;
        if (widget->accessibleName() == name || widget->toolTip() == name)
            return widget;
        if constexpr (requires { widget->text(); })
            if (widget->text() == name)
                return widget;
    }
    return nullptr;
}

/// What a screen reader calls a widget.
inline QString nameOf(const QWidget& widget) {
    const auto* const button = qobject_cast<const QAbstractButton*>(&widget);
    return widget.accessibleName().isEmpty() && button ? button->text() : widget.accessibleName();
}

inline QAbstractButton* button(const QWidget& window, const QString& name) {
    return find<QAbstractButton>(window, name);
}
inline QLineEdit* field(const QWidget& window, const QString& name) {
    return find<QLineEdit>(window, name);
}
inline bool shows(const QWidget& window, const QString& text) {
    return find<QLabel>(window, text) != nullptr;
}

inline void click(const QWidget& window, const QString& name) {
    auto* const found = button(window, name);
    ASSERT_NE(found, nullptr) << qPrintable(name);
    QTest::mouseClick(found, Qt::LeftButton);
}

inline void type(const QWidget& window, const QString& fieldName, const QString& text) {
    auto* const found = field(window, fieldName);
    ASSERT_NE(found, nullptr) << qPrintable(fieldName);
    found->setFocus();
    found->clear();
    found->insert(text);  // as keys do, and input methods for what has none
}

}  // namespace WindowProbe
